#pragma once

#include <maya/MFnAttribute.h>

class MAngle;
class MDistance;
class MTime;

class MFnUnitAttribute : public MFnAttribute {
public:
    enum Type { kInvalid, kAngle, kDistance, kTime, kLast };

    MFnUnitAttribute();
    MFnUnitAttribute(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnUnitAttribute(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// The default is in centimetres or radians; for times in seconds.
    MObject create(const MString& fullName, const MString& briefName, Type unitType,
                   double defaultValue = 0.0, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, const MTime& defaultValue,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, const MAngle& defaultValue,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MString& fullName, const MString& briefName, const MDistance& defaultValue,
                   MStatus* ReturnStatus = nullptr);
    Type unitType(MStatus* ReturnStatus = nullptr) const;

    bool hasMin(MStatus* ReturnStatus = nullptr) const;
    bool hasMax(MStatus* ReturnStatus = nullptr) const;
    MStatus getMin(double& minValue) const;
    MStatus getMax(double& maxValue) const;
    MStatus setMin(double minValue);
    MStatus setMax(double maxValue);
};
