#pragma once

#include <maya/MFnAttribute.h>

class MFnMessageAttribute : public MFnAttribute {
public:
    MFnMessageAttribute();
    MFnMessageAttribute(MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MObject create(const MString& fullName, const MString& briefName,
                   MStatus* ReturnStatus = nullptr);
};
