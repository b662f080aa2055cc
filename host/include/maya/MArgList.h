#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>
#include <vector>

class MAngle;
class MDistance;
class MIntArray;
class MDoubleArray;
class MPoint;
class MStringArray;
class MTime;
class MVector;

/// Arguments of a command, or the tokens of a data element in an ASCII scene.
class MArgList {
public:
    MArgList();
    MArgList(const MArgList& other);
    ~MArgList();
    MArgList& operator=(const MArgList& other);

    static const unsigned int kInvalidArgIndex;

    unsigned int length() const;
    unsigned int flagIndex(const char* shortFlag, const char* longFlag = nullptr) const;

    MStatus addArg(const MArgList& value);
    MStatus addArg(const bool& value);
    MStatus addArg(const int& value);
    MStatus addArg(const double& value);
    MStatus addArg(const MString& value);
    MStatus addArg(const MTime& value);

    /// Fail with kFailure and return a neutral value when there is no such argument or it does not
    /// convert.
    bool asBool(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    int asInt(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    double asDouble(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MString asString(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MTime asTime(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MAngle asAngle(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MDistance asDistance(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    MStatus get(unsigned int index, bool& value) const;
    MStatus get(unsigned int index, int& value) const;
    MStatus get(unsigned int index, double& value) const;
    MStatus get(unsigned int index, MString& value) const;
    MStatus get(unsigned int index, MTime& value) const;

private:
    std::vector<MString> arguments_;
};
