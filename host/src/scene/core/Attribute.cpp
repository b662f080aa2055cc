#include "scene/core/Attribute.h"

namespace host {

MFn::Type Attribute::apiType() const {
    switch (kind) {
    case Kind::Numeric:
        return MFn::kNumericAttribute;
    case Kind::Unit:
        return unit == MFnUnitAttribute::kAngle  ? MFn::kDoubleAngleAttribute
               : unit == MFnUnitAttribute::kTime ? MFn::kTimeAttribute
                                                 : MFn::kDoubleLinearAttribute;
    case Kind::Enum:
        return MFn::kEnumAttribute;
    case Kind::Typed:
        return MFn::kTypedAttribute;
    case Kind::Matrix:
        return MFn::kMatrixAttribute;
    case Kind::Message:
        return MFn::kMessageAttribute;
    case Kind::Compound:
        break;
    }
    switch (numeric) {
    case MFnNumericData::k2Double:
        return MFn::kAttribute2Double;
    case MFnNumericData::k3Double:
        return MFn::kAttribute3Double;
    case MFnNumericData::k2Float:
        return MFn::kAttribute2Float;
    case MFnNumericData::k3Float:
        return MFn::kAttribute3Float;
    case MFnNumericData::k2Int:
        return MFn::kAttribute2Int;
    case MFnNumericData::k3Int:
        return MFn::kAttribute3Int;
    default:
        return MFn::kCompoundAttribute;
    }
}

bool Attribute::hasFn(MFn::Type type) const {
    if (type == MFn::kAttribute || type == MFn::kBase || type == apiType())
        return true;
    if (type == MFn::kUnitAttribute)
        return kind == Kind::Unit;
    if (type == MFn::kNumericAttribute)
        return kind == Kind::Compound && numeric != MFnNumericData::kInvalid;
    if (type == MFn::kCompoundAttribute)
        return kind == Kind::Compound;
    return false;
}

bool Attribute::isInteger() const {
    if (kind == Kind::Enum)
        return true;
    if (kind != Kind::Numeric)
        return false;
    return numeric != MFnNumericData::kFloat && numeric != MFnNumericData::kDouble;
}

bool Attribute::admits(double number) const {
    return number == number && (!min || number >= *min) && (!max || number <= *max);
}

} // namespace host
