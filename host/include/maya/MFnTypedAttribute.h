#pragma once

#include <maya/MFnAttribute.h>
#include <maya/MFnData.h>
#include <maya/MTypeId.h>

class MFnTypedAttribute : public MFnAttribute {
public:
    MFnTypedAttribute();
    MFnTypedAttribute(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnTypedAttribute(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// The id must be that of a registered data type.
    MObject create(const MString& fullName, const MString& briefName, const MTypeId& typeId,
                   const MObject& defaultData = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, MFnData::Type type,
                   const MObject& defaultData = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MFnData::Type attrType(MStatus* ReturnStatus = nullptr) const;
    MStatus getDefault(MObject& defaultObject) const;
    MStatus setDefault(MObject& defaultObject);
};
