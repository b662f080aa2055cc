// MPxData and the function sets of data.
#include "scene/api/ApiStatus.h"
#include "scene/core/Data.h"
#include "scene/core/TypeRegistry.h"

#include <maya/MArgList.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnPluginData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MPxData.h>

using host::Access;
using host::setStatus;

MPxData::MPxData() = default;
MPxData::~MPxData() = default;
MStatus MPxData::readASCII(const MArgList&, unsigned&) {
    return MS::kFailure;
}
MStatus MPxData::readBinary(std::istream&, unsigned) {
    return MS::kFailure;
}
MStatus MPxData::writeASCII(std::ostream&) {
    return MS::kFailure;
}
MStatus MPxData::writeBinary(std::ostream&) {
    return MS::kFailure;
}

MFn::Type MFnData::type() const {
    return MFn::kData;
}

namespace {

template <class Data> Data* dataOf(const MObject& object) {
    return dynamic_cast<Data*>(Access::object(object).get());
}

template <class Data> auto valueOf(const MObject& object, MStatus* status) {
    const Data* data = dataOf<Data>(object);
    setStatus(status, data != nullptr);
    return data ? data->value : decltype(data->value)();
}

} // namespace

#define HOST_DATA_SET(Class, Data, Value, kType)                                                   \
    Class::Class() = default;                                                                      \
    Class::Class(MObject& object, MStatus* status) {                                               \
        setStatus(status,                                                                          \
                  object.hasFn(kType) ? attach(object).statusCode() : MS::kInvalidParameter);      \
    }                                                                                              \
    Class::Class(const MObject& object, MStatus* status)                                           \
        : Class(const_cast<MObject&>(object), status) {                                            \
    }                                                                                              \
    MFn::Type Class::type() const {                                                                \
        return kType;                                                                              \
    }                                                                                              \
    MObject Class::create(MStatus* status) {                                                       \
        return create(Value(), status);                                                            \
    }                                                                                              \
    MObject Class::create(const Value& value, MStatus* status) {                                   \
        object_ = Access::make(std::make_shared<host::Data>(value));                               \
        setStatus(status, MS::kSuccess);                                                           \
        return object_;                                                                            \
    }                                                                                              \
    MStatus Class::set(const Value& value) {                                                       \
        host::Data* data = dataOf<host::Data>(object_);                                            \
        if (!data)                                                                                 \
            return MS::kFailure;                                                                   \
        data->value = value;                                                                       \
        return MS::kSuccess;                                                                       \
    }

HOST_DATA_SET(MFnMatrixData, MatrixData, MMatrix, MFn::kMatrixData)
HOST_DATA_SET(MFnStringData, StringData, MString, MFn::kStringData)
HOST_DATA_SET(MFnStringArrayData, StringArrayData, MStringArray, MFn::kStringArrayData)
HOST_DATA_SET(MFnDoubleArrayData, DoubleArrayData, MDoubleArray, MFn::kDoubleArrayData)
HOST_DATA_SET(MFnIntArrayData, IntArrayData, MIntArray, MFn::kIntArrayData)
#undef HOST_DATA_SET

const MMatrix& MFnMatrixData::matrix(MStatus* status) const {
    const auto* data = dataOf<host::MatrixData>(object_);
    setStatus(status, data != nullptr);
    return data ? data->value : MMatrix::identity;
}
MString MFnStringData::string(MStatus* status) const {
    return valueOf<host::StringData>(object_, status);
}

#define HOST_ARRAY_DATA(Class, Data, Array, Element)                                               \
    unsigned int Class::length(MStatus* status) const {                                            \
        return valueOf<host::Data>(object_, status).length();                                      \
    }                                                                                              \
    Element Class::operator[](unsigned int index) const {                                          \
        const Array values = valueOf<host::Data>(object_, nullptr);                                \
        return index < values.length() ? values[index] : Element();                                \
    }                                                                                              \
    Array Class::array(MStatus* status) {                                                          \
        return valueOf<host::Data>(object_, status);                                               \
    }

HOST_ARRAY_DATA(MFnStringArrayData, StringArrayData, MStringArray, MString)
HOST_ARRAY_DATA(MFnDoubleArrayData, DoubleArrayData, MDoubleArray, double)
HOST_ARRAY_DATA(MFnIntArrayData, IntArrayData, MIntArray, int)
#undef HOST_ARRAY_DATA

MFnPluginData::MFnPluginData() = default;
MFnPluginData::MFnPluginData(MObject& object, MStatus* status) {
    setStatus(status,
              object.hasFn(MFn::kPluginData) ? attach(object).statusCode() : MS::kInvalidParameter);
}
MFnPluginData::MFnPluginData(const MObject& object, MStatus* status)
    : MFnPluginData(const_cast<MObject&>(object), status) {
}
MFn::Type MFnPluginData::type() const {
    return MFn::kPluginData;
}
MObject MFnPluginData::create(const MTypeId& typeId, MStatus* status) {
    const host::DataType* type = host::typeRegistry().data(typeId.id());
    if (!setStatus(status, type && type->creator))
        return MObject::kNullObj;
    object_ =
        Access::make(std::make_shared<host::PluginData>(static_cast<MPxData*>(type->creator())));
    return object_;
}
MTypeId MFnPluginData::typeId(MStatus* status) const {
    const auto* data = dataOf<host::PluginData>(object_);
    return setStatus(status, data && data->data) ? data->data->typeId() : MTypeId();
}
MPxData* MFnPluginData::data(MStatus* status) {
    const auto* data = dataOf<host::PluginData>(object_);
    return setStatus(status, data != nullptr) ? data->data.get() : nullptr;
}
const MPxData* MFnPluginData::constData(MStatus* status) const {
    const auto* data = dataOf<host::PluginData>(object_);
    return setStatus(status, data != nullptr) ? data->data.get() : nullptr;
}
