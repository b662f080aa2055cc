#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MDoubleArray;
class MIntArray;
class MStringArray;
class MVector;

namespace host::script {
class Value;
}

/// The result of MGlobal::executeCommand, of whatever type it is. getResult with another type than
/// resultType says fails and leaves its argument alone.
class MCommandResult {
public:
    enum Type {
        kInvalid = 0,
        kInt,
        kInt64,
        kIntArray,
        kInt64Array,
        kDouble,
        kDoubleArray,
        kString,
        kStringArray,
        kVector,
        kVectorArray,
        kMatrix,
        kMatrixArray
    };

    explicit MCommandResult(MStatus* ReturnStatus = nullptr);
    virtual ~MCommandResult();

    Type resultType(MStatus* ReturnStatus = nullptr) const;
    MStatus getResult(int& result) const;
    MStatus getResult(MIntArray& result) const;
    MStatus getResult(double& result) const;
    MStatus getResult(MDoubleArray& result) const;
    MStatus getResult(MString& result) const;
    MStatus getResult(MStringArray& result) const;
    MStatus getResult(MVector& result) const;
    MStatus getResult(MDoubleArray& result, int& numRows, int& numColumns) const;
    MString stringResult(MStatus* ReturnResult = nullptr) const;

    static const char* className();

private:
    MCommandResult(const MCommandResult&) = delete;
    MCommandResult& operator=(const MCommandResult&) = delete;

    friend class MGlobal;
    std::unique_ptr<host::script::Value> value_;
};
