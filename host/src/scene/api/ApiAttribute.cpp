// MFnAttribute and the function sets of the kinds of attributes.
#include "scene/api/ApiStatus.h"
#include "scene/core/Attribute.h"
#include "scene/core/TypeRegistry.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MTime.h>

#include <algorithm>

using host::Access;
using host::Attribute;
using host::AttributePtr;
using host::setStatus;

namespace {

AttributePtr of(const MObject& object) {
    return Access::as<Attribute>(object);
}

AttributePtr made(const MString& name, const MString& shortName, Attribute::Kind kind) {
    if (name.length() == 0 || shortName.length() == 0)
        return nullptr;
    auto attribute = std::make_shared<Attribute>();
    attribute->name = name.asChar();
    attribute->shortName = shortName.asChar();
    attribute->kind = kind;
    return attribute;
}

template <class T> T read(const MObject& object, MStatus* status, T Attribute::*member) {
    const AttributePtr attribute = of(object);
    setStatus(status, attribute != nullptr);
    return attribute ? attribute.get()->*member : T();
}

template <class T, class V> MStatus write(const MObject& object, T Attribute::*member, V value) {
    const AttributePtr attribute = of(object);
    if (!attribute)
        return MS::kFailure;
    attribute.get()->*member = value;
    return MS::kSuccess;
}

bool hasLimit(const MObject& object, MStatus* status, std::optional<double> Attribute::*limit) {
    const AttributePtr attribute = of(object);
    setStatus(status, attribute != nullptr);
    return attribute && (attribute.get()->*limit).has_value();
}

MStatus getLimit(const MObject& object, std::optional<double> Attribute::*limit, double& value) {
    const AttributePtr attribute = of(object);
    if (!attribute || !(attribute.get()->*limit))
        return MS::kFailure;
    value = *(attribute.get()->*limit);
    return MS::kSuccess;
}

} // namespace

MFnAttribute::MFnAttribute() = default;
MFnAttribute::MFnAttribute(MObject& object, MStatus* status) {
    setStatus(status,
              object.hasFn(MFn::kAttribute) ? attach(object).statusCode() : MS::kInvalidParameter);
}
MFnAttribute::MFnAttribute(const MObject& object, MStatus* status)
    : MFnAttribute(const_cast<MObject&>(object), status) {
}
MFn::Type MFnAttribute::type() const {
    return MFn::kAttribute;
}

bool MFnAttribute::isReadable(MStatus* s) const {
    return read(object_, s, &Attribute::readable);
}
bool MFnAttribute::isWritable(MStatus* s) const {
    return read(object_, s, &Attribute::writable);
}
bool MFnAttribute::isConnectable(MStatus* s) const {
    return read(object_, s, &Attribute::connectable);
}
bool MFnAttribute::isStorable(MStatus* s) const {
    return read(object_, s, &Attribute::storable);
}
bool MFnAttribute::isCached(MStatus* s) const {
    return read(object_, s, &Attribute::cached);
}
bool MFnAttribute::isArray(MStatus* s) const {
    return read(object_, s, &Attribute::array);
}
bool MFnAttribute::isKeyable(MStatus* s) const {
    return read(object_, s, &Attribute::keyable);
}
bool MFnAttribute::isChannelBoxFlagSet(MStatus* s) const {
    return read(object_, s, &Attribute::channelBox);
}
bool MFnAttribute::isHidden(MStatus* s) const {
    return read(object_, s, &Attribute::hidden);
}
bool MFnAttribute::isDynamic(MStatus* s) const {
    return read(object_, s, &Attribute::dynamic);
}
MStatus MFnAttribute::setReadable(bool v) {
    return write(object_, &Attribute::readable, v);
}
MStatus MFnAttribute::setWritable(bool v) {
    return write(object_, &Attribute::writable, v);
}
MStatus MFnAttribute::setConnectable(bool v) {
    return write(object_, &Attribute::connectable, v);
}
MStatus MFnAttribute::setStorable(bool v) {
    return write(object_, &Attribute::storable, v);
}
MStatus MFnAttribute::setCached(bool v) {
    return write(object_, &Attribute::cached, v);
}
MStatus MFnAttribute::setArray(bool v) {
    return write(object_, &Attribute::array, v);
}
MStatus MFnAttribute::setKeyable(bool v) {
    return write(object_, &Attribute::keyable, v);
}
MStatus MFnAttribute::setChannelBox(bool v) {
    return write(object_, &Attribute::channelBox, v);
}
MStatus MFnAttribute::setHidden(bool v) {
    return write(object_, &Attribute::hidden, v);
}
MString MFnAttribute::name(MStatus* s) const {
    return read(object_, s, &Attribute::name).c_str();
}
MString MFnAttribute::shortName(MStatus* s) const {
    return read(object_, s, &Attribute::shortName).c_str();
}
MObject MFnAttribute::parent(MStatus* status) const {
    const AttributePtr attribute = of(object_);
    const AttributePtr above = attribute ? attribute->parent.lock() : nullptr;
    setStatus(status, above ? MS::kSuccess : MS::kNotFound);
    return Access::make(above);
}

#define HOST_ATTRIBUTE_FUNCTIONS(Class, kType)                                                     \
    Class::Class() = default;                                                                      \
    Class::Class(MObject& object, MStatus* status) {                                               \
        setStatus(status,                                                                          \
                  object.hasFn(kType) ? attach(object).statusCode() : MS::kInvalidParameter);      \
    }                                                                                              \
    Class::Class(const MObject& object, MStatus* status) {                                         \
        setStatus(status,                                                                          \
                  object.hasFn(kType) ? attach(object).statusCode() : MS::kInvalidParameter);      \
    }                                                                                              \
    MFn::Type Class::type() const {                                                                \
        return kType;                                                                              \
    }

HOST_ATTRIBUTE_FUNCTIONS(MFnNumericAttribute, MFn::kNumericAttribute)
HOST_ATTRIBUTE_FUNCTIONS(MFnUnitAttribute, MFn::kUnitAttribute)
HOST_ATTRIBUTE_FUNCTIONS(MFnEnumAttribute, MFn::kEnumAttribute)
HOST_ATTRIBUTE_FUNCTIONS(MFnTypedAttribute, MFn::kTypedAttribute)

MObject MFnNumericAttribute::create(const MString& fullName, const MString& briefName,
                                    MFnNumericData::Type type, double defaultValue,
                                    MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Numeric);
    if (!setStatus(status,
                   attribute && type > MFnNumericData::kInvalid && type < MFnNumericData::kLast))
        return MObject::kNullObj;
    int size = 1;
    MFnNumericData::Type part = type;
    switch (type) {
    case MFnNumericData::k2Float:
    case MFnNumericData::k3Float:
        size = type == MFnNumericData::k2Float ? 2 : 3;
        part = MFnNumericData::kFloat;
        break;
    case MFnNumericData::k2Double:
    case MFnNumericData::k3Double:
        size = type == MFnNumericData::k2Double ? 2 : 3;
        part = MFnNumericData::kDouble;
        break;
    case MFnNumericData::k2Int:
    case MFnNumericData::k3Int:
        size = type == MFnNumericData::k2Int ? 2 : 3;
        part = MFnNumericData::kInt;
        break;
    default:
        break;
    }
    attribute->numeric = type;
    attribute->defaultNumber = defaultValue;
    if (size > 1) {
        attribute->kind = Attribute::Kind::Compound;
        for (int i = 0; i < size; ++i) {
            const char digit[2] = {static_cast<char>('0' + i), '\0'};
            const AttributePtr child =
                made(fullName + digit, briefName + digit, Attribute::Kind::Numeric);
            child->numeric = part;
            child->defaultNumber = defaultValue;
            child->parent = attribute;
            attribute->children.push_back(child);
        }
    }
    object_ = Access::make(attribute);
    return object_;
}

MObject MFnNumericAttribute::create(const MString& fullName, const MString& briefName,
                                    const MObject& child1, const MObject& child2,
                                    const MObject& child3, MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Compound);
    if (!setStatus(status, attribute && of(child1)))
        return MObject::kNullObj;
    for (const MObject* object : {&child1, &child2, &child3}) {
        if (const AttributePtr child = of(*object)) {
            child->parent = attribute;
            attribute->children.push_back(child);
        }
    }
    const bool single = attribute->children[0]->numeric == MFnNumericData::kFloat;
    const bool pair = attribute->children.size() == 2;
    attribute->numeric = single ? (pair ? MFnNumericData::k2Float : MFnNumericData::k3Float)
                                : (pair ? MFnNumericData::k2Double : MFnNumericData::k3Double);
    object_ = Access::make(attribute);
    return object_;
}

MObject MFnNumericAttribute::createColor(const MString& fullName, const MString& briefName,
                                         MStatus* status) {
    const char* parts[] = {"R", "G", "B"};
    MObject children[3];
    for (int i = 0; i < 3; ++i)
        children[i] = create(fullName + parts[i], briefName + parts[i], MFnNumericData::kFloat);
    return create(fullName, briefName, children[0], children[1], children[2], status);
}

MObject MFnNumericAttribute::createPoint(const MString& fullName, const MString& briefName,
                                         MStatus* status) {
    const char* parts[] = {"X", "Y", "Z"};
    MObject children[3];
    for (int i = 0; i < 3; ++i)
        children[i] = create(fullName + parts[i], briefName + parts[i], MFnNumericData::kFloat);
    return create(fullName, briefName, children[0], children[1], children[2], status);
}

MObject MFnNumericAttribute::child(unsigned int index, MStatus* status) const {
    const AttributePtr attribute = of(object_);
    if (!setStatus(status, attribute && index < attribute->children.size()))
        return MObject::kNullObj;
    return Access::make(attribute->children[index]);
}

MFnNumericData::Type MFnNumericAttribute::unitType(MStatus* s) const {
    return read(object_, s, &Attribute::numeric);
}
bool MFnNumericAttribute::hasMin(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::min);
}
bool MFnNumericAttribute::hasMax(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::max);
}
bool MFnNumericAttribute::hasSoftMin(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::softMin);
}
bool MFnNumericAttribute::hasSoftMax(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::softMax);
}
MStatus MFnNumericAttribute::getMin(double& v) const {
    return getLimit(object_, &Attribute::min, v);
}
MStatus MFnNumericAttribute::getMax(double& v) const {
    return getLimit(object_, &Attribute::max, v);
}
MStatus MFnNumericAttribute::getSoftMin(double& v) const {
    return getLimit(object_, &Attribute::softMin, v);
}
MStatus MFnNumericAttribute::getSoftMax(double& v) const {
    return getLimit(object_, &Attribute::softMax, v);
}
MStatus MFnNumericAttribute::setMin(double v) {
    return write(object_, &Attribute::min, v);
}
MStatus MFnNumericAttribute::setMax(double v) {
    return write(object_, &Attribute::max, v);
}
MStatus MFnNumericAttribute::setSoftMin(double v) {
    return write(object_, &Attribute::softMin, v);
}
MStatus MFnNumericAttribute::setSoftMax(double v) {
    return write(object_, &Attribute::softMax, v);
}

MStatus MFnNumericAttribute::getDefault(double& value) const {
    MStatus status;
    const double found = read(object_, &status, &Attribute::defaultNumber);
    if (status)
        value = found;
    return status;
}
MStatus MFnNumericAttribute::getDefault(float& value) const {
    double wide = value;
    const MStatus status = getDefault(wide);
    value = static_cast<float>(wide);
    return status;
}
MStatus MFnNumericAttribute::getDefault(int& value) const {
    double wide = value;
    const MStatus status = getDefault(wide);
    value = static_cast<int>(wide);
    return status;
}
MStatus MFnNumericAttribute::getDefault(bool& value) const {
    double wide = value ? 1.0 : 0.0;
    const MStatus status = getDefault(wide);
    value = wide != 0.0;
    return status;
}
MStatus MFnNumericAttribute::setDefault(double v) {
    return write(object_, &Attribute::defaultNumber, v);
}
MStatus MFnNumericAttribute::setDefault(float v) {
    return setDefault(static_cast<double>(v));
}
MStatus MFnNumericAttribute::setDefault(int v) {
    return setDefault(static_cast<double>(v));
}
MStatus MFnNumericAttribute::setDefault(bool v) {
    return setDefault(v ? 1.0 : 0.0);
}

MObject MFnUnitAttribute::create(const MString& fullName, const MString& briefName, Type unitType,
                                 double defaultValue, MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Unit);
    if (!setStatus(status, attribute && unitType > kInvalid && unitType < kLast))
        return MObject::kNullObj;
    attribute->unit = unitType;
    attribute->defaultNumber =
        unitType == kTime ? MTime(defaultValue, MTime::kSeconds).as(MTime::kFilm) : defaultValue;
    object_ = Access::make(attribute);
    return object_;
}
MObject MFnUnitAttribute::create(const MString& fullName, const MString& briefName,
                                 const MTime& defaultValue, MStatus* status) {
    return create(fullName, briefName, kTime, defaultValue.as(MTime::kSeconds), status);
}
MObject MFnUnitAttribute::create(const MString& fullName, const MString& briefName,
                                 const MAngle& defaultValue, MStatus* status) {
    return create(fullName, briefName, kAngle, defaultValue.asRadians(), status);
}
MObject MFnUnitAttribute::create(const MString& fullName, const MString& briefName,
                                 const MDistance& defaultValue, MStatus* status) {
    return create(fullName, briefName, kDistance, defaultValue.asCentimeters(), status);
}
MFnUnitAttribute::Type MFnUnitAttribute::unitType(MStatus* s) const {
    return read(object_, s, &Attribute::unit);
}
bool MFnUnitAttribute::hasMin(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::min);
}
bool MFnUnitAttribute::hasMax(MStatus* s) const {
    return hasLimit(object_, s, &Attribute::max);
}
MStatus MFnUnitAttribute::getMin(double& v) const {
    return getLimit(object_, &Attribute::min, v);
}
MStatus MFnUnitAttribute::getMax(double& v) const {
    return getLimit(object_, &Attribute::max, v);
}
MStatus MFnUnitAttribute::setMin(double v) {
    return write(object_, &Attribute::min, v);
}
MStatus MFnUnitAttribute::setMax(double v) {
    return write(object_, &Attribute::max, v);
}

MObject MFnEnumAttribute::create(const MString& fullName, const MString& briefName,
                                 short defaultValue, MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Enum);
    if (!setStatus(status, attribute != nullptr))
        return MObject::kNullObj;
    attribute->defaultNumber = defaultValue;
    object_ = Access::make(attribute);
    return object_;
}
MStatus MFnEnumAttribute::addField(const MString& fieldString, short index) {
    const AttributePtr attribute = of(object_);
    if (!attribute)
        return MS::kFailure;
    attribute->fields.emplace_back(fieldString.asChar(), index);
    const double number = index;
    attribute->min = attribute->min ? std::min(*attribute->min, number) : number;
    attribute->max = attribute->max ? std::max(*attribute->max, number) : number;
    return MS::kSuccess;
}
MString MFnEnumAttribute::fieldName(short index, MStatus* status) const {
    if (const AttributePtr attribute = of(object_)) {
        for (const auto& [name, number] : attribute->fields) {
            if (number == index) {
                setStatus(status, MS::kSuccess);
                return name.c_str();
            }
        }
    }
    setStatus(status, MS::kFailure);
    return {};
}
short MFnEnumAttribute::fieldIndex(const MString& fieldString, MStatus* status) const {
    if (const AttributePtr attribute = of(object_)) {
        for (const auto& [name, number] : attribute->fields) {
            if (fieldString == name.c_str()) {
                setStatus(status, MS::kSuccess);
                return number;
            }
        }
    }
    setStatus(status, MS::kFailure);
    return 0;
}
MStatus MFnEnumAttribute::getMin(short& value) const {
    double wide = 0.0;
    const MStatus status = getLimit(object_, &Attribute::min, wide);
    value = static_cast<short>(wide);
    return status;
}
MStatus MFnEnumAttribute::getMax(short& value) const {
    double wide = 0.0;
    const MStatus status = getLimit(object_, &Attribute::max, wide);
    value = static_cast<short>(wide);
    return status;
}
MStatus MFnEnumAttribute::getDefault(short& value) const {
    MStatus status;
    value = static_cast<short>(read(object_, &status, &Attribute::defaultNumber));
    return status;
}
MStatus MFnEnumAttribute::setDefault(short v) {
    return write(object_, &Attribute::defaultNumber, static_cast<double>(v));
}

MObject MFnTypedAttribute::create(const MString& fullName, const MString& briefName,
                                  const MTypeId& typeId, const MObject& defaultData,
                                  MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Typed);
    if (!setStatus(status, attribute && host::typeRegistry().data(typeId.id())))
        return MObject::kNullObj;
    attribute->data = MFnData::kPlugin;
    attribute->dataTypeId = typeId.id();
    attribute->defaultData = Access::object(defaultData);
    object_ = Access::make(attribute);
    return object_;
}
MObject MFnTypedAttribute::create(const MString& fullName, const MString& briefName,
                                  MFnData::Type type, const MObject& defaultData, MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Typed);
    if (!setStatus(status, attribute && type > MFnData::kInvalid && type < MFnData::kLast))
        return MObject::kNullObj;
    attribute->data = type;
    attribute->defaultData = Access::object(defaultData);
    object_ = Access::make(attribute);
    return object_;
}
MFnData::Type MFnTypedAttribute::attrType(MStatus* s) const {
    return read(object_, s, &Attribute::data);
}
MStatus MFnTypedAttribute::getDefault(MObject& defaultObject) const {
    MStatus status;
    defaultObject = Access::make(read(object_, &status, &Attribute::defaultData));
    return status;
}
MStatus MFnTypedAttribute::setDefault(MObject& defaultObject) {
    return write(object_, &Attribute::defaultData, Access::object(defaultObject));
}

MFnMessageAttribute::MFnMessageAttribute() = default;
MFnMessageAttribute::MFnMessageAttribute(MObject& object, MStatus* status) {
    setStatus(status, attach(object).statusCode());
}
MFn::Type MFnMessageAttribute::type() const {
    return MFn::kMessageAttribute;
}
MObject MFnMessageAttribute::create(const MString& fullName, const MString& briefName,
                                    MStatus* status) {
    const AttributePtr attribute = made(fullName, briefName, Attribute::Kind::Message);
    if (!setStatus(status, attribute != nullptr))
        return MObject::kNullObj;
    object_ = Access::make(attribute);
    return object_;
}
