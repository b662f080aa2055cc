// rvVellumUtil: the one entry through which menu, panels and users change tool and ghosting
// settings, activate tools, and open or refresh panels. Never undoable; one object an invocation.
#pragma once

#include <QString>

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

class MArgDatabase;

namespace vellum {

class UtilCommand : public MPxCommand {
public:
    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    bool isUndoable() const override;
};

} // namespace vellum
