// MObject, MObjectHandle, MObjectArray, MFnBase and MDGContext.
#include "scene/core/Object.h"

#include <maya/MDGContext.h>
#include <maya/MFnBase.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>

#include <functional>

using host::Access;

MObject MObject::kNullObj;

MObject::MObject() = default;
MObject::MObject(const MObject& other) = default;
MObject::~MObject() = default;
MObject& MObject::operator=(const MObject& other) = default;
bool MObject::isNull() const {
    return !object_;
}
bool MObject::hasFn(MFn::Type type) const {
    return object_ && object_->hasFn(type);
}
MFn::Type MObject::apiType() const {
    return object_ ? object_->apiType() : MFn::kInvalid;
}
bool MObject::operator==(const MObject& other) const {
    return object_ == other.object_;
}
bool MObject::operator!=(const MObject& other) const {
    return object_ != other.object_;
}

const char* MObject::apiTypeStr() const {
    switch (apiType()) {
    case MFn::kTransform:
        return "kTransform";
    case MFn::kCamera:
        return "kCamera";
    case MFn::kMesh:
        return "kMesh";
    case MFn::kLocator:
        return "kLocator";
    case MFn::kPluginLocatorNode:
        return "kPluginLocatorNode";
    case MFn::kPluginDependNode:
        return "kPluginDependNode";
    case MFn::kWorld:
        return "kWorld";
    case MFn::kInvalid:
        return "kInvalid";
    default:
        return "kBase";
    }
}

MObjectHandle::MObjectHandle() = default;
MObjectHandle::MObjectHandle(const MObject& object)
    : object_(Access::object(object)), hash_(objectHashCode(object)) {
}
MObjectHandle::MObjectHandle(const MObjectHandle& other)
    : object_(other.object_), hash_(other.hash_) {
}
MObjectHandle::~MObjectHandle() = default;
MObjectHandle& MObjectHandle::operator=(const MObjectHandle& other) {
    object_ = other.object_;
    hash_ = other.hash_;
    reference_ = MObject();
    return *this;
}
MObjectHandle& MObjectHandle::operator=(const MObject& object) {
    return *this = MObjectHandle(object);
}
MObject MObjectHandle::object() const {
    return Access::make(object_.lock());
}
const MObject& MObjectHandle::objectRef() const {
    reference_ = object();
    return reference_;
}
bool MObjectHandle::isAlive() const {
    return !object_.expired();
}
bool MObjectHandle::isValid() const {
    const host::ObjectPtr object = object_.lock();
    return object && object->inScene();
}
unsigned int MObjectHandle::hashCode() const {
    return hash_;
}
unsigned int MObjectHandle::objectHashCode(const MObject& object) {
    return static_cast<unsigned int>(std::hash<const void*>()(Access::object(object).get()));
}
bool MObjectHandle::operator==(const MObjectHandle& other) const {
    return object_.lock() == other.object_.lock() && isAlive() == other.isAlive();
}
bool MObjectHandle::operator==(const MObject& object) const {
    return this->object() == object;
}
bool MObjectHandle::operator!=(const MObjectHandle& other) const {
    return !(*this == other);
}
bool MObjectHandle::operator!=(const MObject& object) const {
    return !(*this == object);
}

MFnBase::MFnBase() = default;
MFnBase::~MFnBase() = default;
MFn::Type MFnBase::type() const {
    return MFn::kBase;
}
const char* MFnBase::className() const {
    return "MFnBase";
}
bool MFnBase::hasObj(MFn::Type kind) const {
    return kind == type() || kind == MFn::kBase;
}
bool MFnBase::hasObj(const MObject& object) const {
    return object.hasFn(type());
}
MObject MFnBase::object(MStatus* status) const {
    if (status)
        *status = object_.isNull() ? MS::kFailure : MS::kSuccess;
    return object_;
}
MStatus MFnBase::setObject(MObject& object) {
    return attach(object);
}
MStatus MFnBase::setObject(const MObject& object) {
    return attach(object);
}
MStatus MFnBase::attach(const MObject& object) {
    if (object.isNull() || !object.hasFn(type()))
        return MS::kInvalidParameter;
    object_ = object;
    return MS::kSuccess;
}

MDGContext::MDGContext() : normal_(true) {
}
MDGContext::MDGContext(const MTime& when) : normal_(false), time_(when) {
}
MDGContext::MDGContext(const MDGContext& other) = default;
MDGContext::~MDGContext() = default;
MDGContext& MDGContext::operator=(const MDGContext& other) = default;
const MDGContext MDGContext::fsNormal;
bool MDGContext::isNormal(MStatus* status) const {
    if (status)
        *status = MS::kSuccess;
    return normal_;
}
MStatus MDGContext::getTime(MTime& time) const {
    if (normal_)
        return MS::kFailure;
    time = time_;
    return MS::kSuccess;
}
