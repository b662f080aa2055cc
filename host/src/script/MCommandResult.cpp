#include "script/MayaValues.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

using host::script::MatrixValue;
using host::script::Value;

namespace {

template <class T> MStatus read(const Value& value, T& result) {
    return host::script::toMaya(value, result) ? MS::kSuccess : MS::kFailure;
}

} // namespace

MCommandResult::MCommandResult(MStatus* ReturnStatus) : value_(std::make_unique<Value>()) {
    if (ReturnStatus)
        *ReturnStatus = MS::kSuccess;
}

MCommandResult::~MCommandResult() = default;

MCommandResult::Type MCommandResult::resultType(MStatus* ReturnStatus) const {
    using ValueType = host::script::Type;
    if (ReturnStatus)
        *ReturnStatus = MS::kSuccess;
    switch (value_->type()) {
    case ValueType::Int:
        return kInt;
    case ValueType::Float:
        return kDouble;
    case ValueType::String:
        return kString;
    case ValueType::Vector:
        return kVector;
    case ValueType::Matrix:
        return kMatrix;
    case ValueType::IntArray:
        return kIntArray;
    case ValueType::FloatArray:
        return kDoubleArray;
    case ValueType::StringArray:
        return kStringArray;
    case ValueType::VectorArray:
        return kVectorArray;
    case ValueType::None:
        break;
    }
    return kInvalid;
}

MStatus MCommandResult::getResult(int& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(MIntArray& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(double& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(MDoubleArray& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(MString& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(MStringArray& result) const {
    return read(*value_, result);
}
MStatus MCommandResult::getResult(MVector& result) const {
    return read(*value_, result);
}

MStatus MCommandResult::getResult(MDoubleArray& result, int& numRows, int& numColumns) const {
    const auto* matrix = value_->getIf<MatrixValue>();
    if (!matrix)
        return MS::kFailure;
    read(Value(matrix->cells), result);
    numRows = matrix->rows;
    numColumns = matrix->columns;
    return MS::kSuccess;
}

MString MCommandResult::stringResult(MStatus* ReturnResult) const {
    MString result;
    const MStatus status = getResult(result);
    if (ReturnResult)
        *ReturnResult = status;
    return result;
}

const char* MCommandResult::className() {
    return "MCommandResult";
}
