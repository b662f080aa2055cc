#pragma once

#include <maya/MArgParser.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

#include <memory>

class MPxContext;

namespace host {
struct ContextCall;
} // namespace host

/// Base of the commands that create contexts and edit or query their properties. Registered with
/// MFnPlugin::registerContextCommand. Called without -edit and -query it makes a context, which
/// belongs to the host, and returns its name.
class MPxContextCommand {
public:
    MPxContextCommand();
    virtual ~MPxContextCommand();

    virtual MStatus doEditFlags();
    virtual MStatus doQueryFlags();
    virtual MPxContext* makeObj();
    /// Adds flags to syntax(). -e, -edit, -q and -query are reserved.
    virtual MStatus appendSyntax();

    MStatus setResult(bool result);
    MStatus setResult(int result);
    MStatus setResult(double result);
    MStatus setResult(const MString& result);

    static const char* className();

protected:
    MArgParser parser(MStatus* ReturnStatus = NULL) const;
    MSyntax syntax(MStatus* ReturnStatus = NULL) const;

private:
    std::shared_ptr<host::ContextCall> call_;
    friend struct host::ContextCall;
};
