#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MTime.h>

class MAngle;
class MDGModifier;
class MPlug;

/// Keys by time; values in the unit of the driven attribute: centimetres, radians, or plain.
class MFnAnimCurve : public MFnDependencyNode {
public:
    enum AnimCurveType {
        kAnimCurveTA,
        kAnimCurveTL,
        kAnimCurveTT,
        kAnimCurveTU,
        kAnimCurveUA,
        kAnimCurveUL,
        kAnimCurveUT,
        kAnimCurveUU,
        kAnimCurveUnknown
    };
    enum TangentType {
        kTangentGlobal = 0,
        kTangentFixed,
        kTangentLinear,
        kTangentFlat,
        kTangentSmooth,
        kTangentStep,
        kTangentSlow,
        kTangentFast,
        kTangentClamped,
        kTangentPlateau,
        kTangentStepNext,
        kTangentAuto
    };
    enum InfinityType { kConstant = 0, kLinear, kCycle = 3, kCycleRelative, kOscillate };

    MFnAnimCurve();
    MFnAnimCurve(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnAnimCurve(const MObject& object, MStatus* ReturnStatus = nullptr);
    MFnAnimCurve(const MPlug& plug, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MObject create(AnimCurveType type, MDGModifier* modifier = nullptr,
                   MStatus* ReturnStatus = nullptr);
    /// Made of the fitting type and connected to the plug.
    MObject create(const MPlug& plug, MDGModifier* modifier = nullptr,
                   MStatus* ReturnStatus = nullptr);
    AnimCurveType animCurveType(MStatus* ReturnStatus = nullptr) const;

    double evaluate(const MTime& atTime, MStatus* ReturnStatus = nullptr) const;
    MStatus evaluate(const MTime& atTime, double& value) const;
    bool isStatic(MStatus* ReturnStatus = nullptr) const;
    unsigned int numKeys(MStatus* ReturnStatus = nullptr) const;
    unsigned int numKeyframes(MStatus* ReturnStatus = nullptr) const;
    MStatus remove(unsigned int index);
    bool find(const MTime& time, unsigned int& index, MStatus* ReturnStatus = nullptr) const;
    unsigned int findClosest(const MTime& time, MStatus* ReturnStatus = nullptr) const;

    /// Index of the key; one at that time is overwritten.
    unsigned int addKey(const MTime& time, double value, TangentType tangentInType = kTangentGlobal,
                        TangentType tangentOutType = kTangentGlobal,
                        class MAnimCurveChange* change = nullptr, MStatus* ReturnStatus = nullptr);
    MTime time(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    double value(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MStatus setValue(unsigned int index, double value);
    MStatus setTime(unsigned int index, const MTime& time);
    TangentType inTangentType(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    TangentType outTangentType(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MStatus setInTangentType(unsigned int index, TangentType tangentType);
    MStatus setOutTangentType(unsigned int index, TangentType tangentType);
    InfinityType preInfinityType(MStatus* ReturnStatus = nullptr) const;
    InfinityType postInfinityType(MStatus* ReturnStatus = nullptr) const;
    MStatus setPreInfinityType(InfinityType infinityType);
    MStatus setPostInfinityType(InfinityType infinityType);
    bool isWeighted(MStatus* ReturnStatus = nullptr) const;
};
