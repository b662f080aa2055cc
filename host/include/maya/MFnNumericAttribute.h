#pragma once

#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>

class MFnNumericAttribute : public MFnAttribute {
public:
    MFnNumericAttribute();
    MFnNumericAttribute(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnNumericAttribute(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MObject create(const MString& fullName, const MString& briefName, MFnNumericData::Type type,
                   double defaultValue = 0, MStatus* ReturnStatus = nullptr);
    /// A compound of two or three children; the two-child form leaves the third out.
    MObject create(const MString& fullName, const MString& briefName, const MObject& child1,
                   const MObject& child2 = MObject::kNullObj,
                   const MObject& child3 = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject createColor(const MString& fullName, const MString& briefName,
                        MStatus* ReturnStatus = nullptr);
    MObject createPoint(const MString& fullName, const MString& briefName,
                        MStatus* ReturnStatus = nullptr);
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MFnNumericData::Type unitType(MStatus* ReturnStatus = nullptr) const;

    bool hasMin(MStatus* ReturnStatus = nullptr) const;
    bool hasMax(MStatus* ReturnStatus = nullptr) const;
    MStatus getMin(double& minValue) const;
    MStatus getMax(double& maxValue) const;
    MStatus setMin(double minValue);
    MStatus setMax(double maxValue);
    bool hasSoftMin(MStatus* ReturnStatus = nullptr) const;
    bool hasSoftMax(MStatus* ReturnStatus = nullptr) const;
    MStatus getSoftMin(double& minValue) const;
    MStatus getSoftMax(double& maxValue) const;
    MStatus setSoftMin(double minValue);
    MStatus setSoftMax(double maxValue);

    MStatus getDefault(bool& defaultValue) const;
    MStatus getDefault(int& defaultValue) const;
    MStatus getDefault(float& defaultValue) const;
    MStatus getDefault(double& defaultValue) const;
    MStatus setDefault(bool defaultValue);
    MStatus setDefault(int defaultValue);
    MStatus setDefault(float defaultValue);
    MStatus setDefault(double defaultValue);
};
