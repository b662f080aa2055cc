#pragma once

#include <maya/MFnAttribute.h>

class MFnEnumAttribute : public MFnAttribute {
public:
    MFnEnumAttribute();
    MFnEnumAttribute(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnEnumAttribute(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MObject create(const MString& fullName, const MString& briefName, short defaultValue = 0,
                   MStatus* ReturnStatus = nullptr);
    MStatus addField(const MString& fieldString, short index);
    MString fieldName(short index, MStatus* ReturnStatus = nullptr) const;
    short fieldIndex(const MString& fieldString, MStatus* ReturnStatus = nullptr) const;
    MStatus getMin(short& minValue) const;
    MStatus getMax(short& maxValue) const;
    MStatus getDefault(short& defaultValue) const;
    MStatus setDefault(short defaultValue);
};
