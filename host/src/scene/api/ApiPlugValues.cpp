// Values of MPlug.
#include "foundation/Faults.h"
#include "scene/api/ApiStatus.h"
#include "scene/core/Data.h"
#include "scene/core/Scene.h"
#include "scene/core/TimeState.h"

#include <maya/MAngle.h>
#include <maya/MDGContext.h>
#include <maya/MDistance.h>
#include <maya/MPlug.h>
#include <maya/MPxData.h>
#include <maya/MTime.h>

#include <cmath>
#include <limits>

using host::Access;
using host::Attribute;
using host::ObjectPtr;
using host::PlugValue;
using host::setStatus;
using host::Slot;

namespace {

MTime now() {
    return host::timeline::current();
}

MTime momentOf(const MDGContext& context) {
    MTime when = now();
    if (!context.isNormal())
        context.getTime(when);
    return when;
}

bool isText(const Attribute& attribute) {
    return attribute.kind == Attribute::Kind::Typed && attribute.data == MFnData::kString;
}

// Whether a value may be written here at all: not locked, not driven, writable.
bool accepts(const MPlug& plug, const Slot* slot) {
    if (!slot || slot->isArray() || !slot->attribute->writable || plug.isLocked())
        return false;
    for (const Slot* at = slot; at; at = at->parent) {
        if (!at->source.expired())
            return false;
    }
    return true;
}

double rounded(const Attribute& attribute, double value) {
    if (attribute.kind == Attribute::Kind::Numeric && attribute.numeric == MFnNumericData::kBoolean)
        return value != 0.0 ? 1.0 : 0.0;
    if (attribute.kind == Attribute::Kind::Numeric && attribute.numeric == MFnNumericData::kFloat)
        return static_cast<double>(static_cast<float>(value));
    return attribute.isInteger() ? std::trunc(value) : value;
}

template <class Whole> Whole clipped(double value) {
    if (!(value == value))
        return 0;
    if (value >= static_cast<double>(std::numeric_limits<Whole>::max()))
        return std::numeric_limits<Whole>::max();
    if (value <= static_cast<double>(std::numeric_limits<Whole>::min()))
        return std::numeric_limits<Whole>::min();
    return static_cast<Whole>(value);
}

MStatus setNumber(MPlug& plug, Slot* slot, double value) {
    if (!accepts(plug, slot) || !slot->attribute->isNumber())
        return MS::kFailure;
    const double stored = rounded(*slot->attribute, value);
    if (!slot->attribute->admits(stored))
        return MS::kFailure;
    slot->value = stored;
    host::scene().touch();
    return MS::kSuccess;
}

} // namespace

bool MPlug::isDefaultValue(bool, MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr))
        return true;
    if (!slot_->source.expired())
        return false;
    if (isArray()) {
        for (const auto& [index, element] : slot_->elements) {
            if (!host::PlugAccess::make(element).isDefaultValue())
                return false;
        }
        return true;
    }
    if (isCompound()) {
        for (unsigned int i = 0; i < numChildren(); ++i) {
            if (!child(i).isDefaultValue())
                return false;
        }
        return true;
    }
    if (std::holds_alternative<std::monostate>(slot_->value))
        return true;
    const Attribute& attribute = *slot_->attribute;
    if (const double* number = std::get_if<double>(&slot_->value))
        return *number == attribute.defaultNumber;
    if (const std::string* text = std::get_if<std::string>(&slot_->value))
        return *text == attribute.defaultText;
    return std::get<ObjectPtr>(slot_->value) == attribute.defaultData;
}

double MPlug::asDouble(const MDGContext& context, MStatus* status) const {
    if (!setStatus(status, slot_ && slot_->attribute->isNumber() && !slot_->isArray()))
        return 0.0;
    return node_->number(*slot_, momentOf(context));
}
double MPlug::asDouble(MStatus* status) const {
    return asDouble(MDGContext::fsNormal, status);
}
float MPlug::asFloat(MStatus* status) const {
    return static_cast<float>(asDouble(status));
}
float MPlug::asFloat(const MDGContext& context, MStatus* status) const {
    return static_cast<float>(asDouble(context, status));
}
int MPlug::asInt(MStatus* status) const {
    return clipped<int>(asDouble(status));
}
short MPlug::asShort(MStatus* status) const {
    return clipped<short>(asDouble(status));
}
char MPlug::asChar(MStatus* status) const {
    return clipped<char>(asDouble(status));
}
bool MPlug::asBool(MStatus* status) const {
    return asDouble(status) != 0.0;
}
bool MPlug::asBool(const MDGContext& context, MStatus* status) const {
    return asDouble(context, status) != 0.0;
}
MString MPlug::asString(MStatus* status) const {
    if (!setStatus(status, slot_ && isText(*slot_->attribute) && !slot_->isArray()))
        return {};
    return node_->text(*slot_, now()).c_str();
}
MTime MPlug::asMTime(MStatus* status) const {
    return {asDouble(status), MTime::kFilm};
}
MAngle MPlug::asMAngle(MStatus* status) const {
    return {asDouble(status), MAngle::kRadians};
}
MDistance MPlug::asMDistance(MStatus* status) const {
    return {asDouble(status), MDistance::kCentimeters};
}
MObject MPlug::asMObject(const MDGContext& context, MStatus* status) const {
    ObjectPtr data;
    if (slot_ && !slot_->isArray())
        data = node_->data(*slot_, momentOf(context));
    setStatus(status, data != nullptr);
    return Access::make(data);
}
MObject MPlug::asMObject(MStatus* status) const {
    return asMObject(MDGContext::fsNormal, status);
}

#define HOST_GET_VALUE(Type, call)                                                                 \
    MStatus MPlug::getValue(Type& value) const {                                                   \
        MStatus status;                                                                            \
        const Type found = call(&status);                                                          \
        if (status)                                                                                \
            value = found;                                                                         \
        return status;                                                                             \
    }
HOST_GET_VALUE(MObject, asMObject)
HOST_GET_VALUE(double, asDouble)
HOST_GET_VALUE(float, asFloat)
HOST_GET_VALUE(int, asInt)
HOST_GET_VALUE(short, asShort)
HOST_GET_VALUE(char, asChar)
HOST_GET_VALUE(bool, asBool)
HOST_GET_VALUE(MString, asString)
HOST_GET_VALUE(MTime, asMTime)
HOST_GET_VALUE(MAngle, asMAngle)
HOST_GET_VALUE(MDistance, asMDistance)
#undef HOST_GET_VALUE

MStatus MPlug::setDouble(double value) {
    return setNumber(*this, slot_.get(), value);
}
MStatus MPlug::setFloat(float value) {
    return setDouble(value);
}
MStatus MPlug::setInt(int value) {
    return setDouble(value);
}
MStatus MPlug::setShort(short value) {
    return setDouble(value);
}
MStatus MPlug::setChar(char value) {
    return setDouble(value);
}
MStatus MPlug::setBool(bool value) {
    return setDouble(value ? 1.0 : 0.0);
}
MStatus MPlug::setMTime(const MTime& value) {
    return setDouble(value.as(MTime::kFilm));
}
MStatus MPlug::setMAngle(const MAngle& value) {
    return setDouble(value.asRadians());
}
MStatus MPlug::setMDistance(const MDistance& value) {
    return setDouble(value.asCentimeters());
}
MStatus MPlug::setString(const MString& value) {
    if (!accepts(*this, slot_.get()) || !isText(*slot_->attribute))
        return MS::kFailure;
    slot_->value = std::string(value.asChar());
    host::scene().touch();
    return MS::kSuccess;
}

MStatus MPlug::setMObject(const MObject& value) {
    if (!accepts(*this, slot_.get()))
        return MS::kFailure;
    const Attribute& attribute = *slot_->attribute;
    const ObjectPtr data = Access::object(value);
    if (attribute.isNumber() || (data && !data->hasFn(MFn::kData)))
        return MS::kInvalidParameter;
    if (const auto* string = dynamic_cast<const host::StringData*>(data.get())) {
        if (isText(attribute))
            return setString(string->value);
    }
    if (const auto* plugin = dynamic_cast<const host::PluginData*>(data.get())) {
        if (!plugin->data || plugin->data->typeId().id() != attribute.dataTypeId)
            return MS::kInvalidParameter;
    }
    slot_->value = data;
    host::scene().touch();
    return MS::kSuccess;
}

MStatus MPlug::setMPxData(MPxData* value) {
    auto data = std::make_shared<host::PluginData>(value);
    if (!value || host::faults::due("setMPxData"))
        return MS::kFailure;
    return setMObject(Access::make(data));
}

MStatus MPlug::setValue(const MObject& value) {
    return setMObject(value);
}
MStatus MPlug::setValue(double value) {
    return setDouble(value);
}
MStatus MPlug::setValue(float value) {
    return setFloat(value);
}
MStatus MPlug::setValue(int value) {
    return setInt(value);
}
MStatus MPlug::setValue(short value) {
    return setShort(value);
}
MStatus MPlug::setValue(char value) {
    return setChar(value);
}
MStatus MPlug::setValue(bool value) {
    return setBool(value);
}
MStatus MPlug::setValue(const MString& value) {
    return setString(value);
}
MStatus MPlug::setValue(const char* value) {
    return setString(value);
}
MStatus MPlug::setValue(const MTime& value) {
    return setMTime(value);
}
MStatus MPlug::setValue(const MAngle& value) {
    return setMAngle(value);
}
MStatus MPlug::setValue(const MDistance& value) {
    return setMDistance(value);
}
