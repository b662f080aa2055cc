#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

/// Base of all function sets. A function set is attached to an object it fits.
class MFnBase {
public:
    MFnBase();
    virtual ~MFnBase();

    virtual MFn::Type type() const;
    bool hasObj(MFn::Type type) const;
    bool hasObj(const MObject& object) const;
    MObject object(MStatus* ReturnStatus = nullptr) const;
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);

protected:
    virtual const char* className() const;
    MStatus attach(const MObject& object); ///< kInvalidParameter when it does not fit

    MObject object_;
};
