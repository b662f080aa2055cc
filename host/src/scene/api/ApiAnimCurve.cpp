// MFnAnimCurve.
#include "scene/api/ApiStatus.h"
#include "scene/core/AnimCurve.h"
#include "scene/core/Scene.h"

#include <maya/MDGModifier.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <cmath>

using host::Access;
using host::AnimCurve;
using host::setStatus;

namespace {

std::shared_ptr<AnimCurve> curveOf(const MObject& object) {
    return Access::as<AnimCurve>(object);
}

const char* typeNameFor(MFnAnimCurve::AnimCurveType type) {
    switch (type) {
    case MFnAnimCurve::kAnimCurveTA:
        return "animCurveTA";
    case MFnAnimCurve::kAnimCurveTL:
        return "animCurveTL";
    case MFnAnimCurve::kAnimCurveTT:
        return "animCurveTT";
    case MFnAnimCurve::kAnimCurveTU:
        return "animCurveTU";
    default:
        return "";
    }
}

MFnAnimCurve::AnimCurveType typeFor(const host::Attribute& attribute) {
    switch (attribute.unit) {
    case MFnUnitAttribute::kAngle:
        return MFnAnimCurve::kAnimCurveTA;
    case MFnUnitAttribute::kDistance:
        return MFnAnimCurve::kAnimCurveTL;
    case MFnUnitAttribute::kTime:
        return MFnAnimCurve::kAnimCurveTT;
    default:
        return MFnAnimCurve::kAnimCurveTU;
    }
}

} // namespace

MFnAnimCurve::MFnAnimCurve() = default;
MFnAnimCurve::MFnAnimCurve(MObject& object, MStatus* status) {
    const bool fits = object.hasFn(MFn::kAnimCurve);
    if (fits)
        object_ = object;
    setStatus(status, fits ? MS::kSuccess : MS::kInvalidParameter);
}
MFnAnimCurve::MFnAnimCurve(const MObject& object, MStatus* status)
    : MFnAnimCurve(const_cast<MObject&>(object), status) {
}
MFnAnimCurve::MFnAnimCurve(const MPlug& plug, MStatus* status)
    : MFnAnimCurve(plug.source().node(), status) {
}
MFn::Type MFnAnimCurve::type() const {
    return MFn::kAnimCurve;
}

MObject MFnAnimCurve::create(AnimCurveType type, MDGModifier* modifier, MStatus* status) {
    const MString name = typeNameFor(type);
    MObject object;
    if (name.length() > 0 && modifier)
        object = modifier->createNode(name);
    else if (name.length() > 0)
        object = Access::make(host::scene().create(name.asChar(), ""));
    setStatus(status, !object.isNull());
    if (!object.isNull())
        object_ = object;
    return object;
}

MObject MFnAnimCurve::create(const MPlug& plug, MDGModifier* modifier, MStatus* status) {
    const host::SlotPtr slot = host::PlugAccess::slot(plug);
    if (!slot || !slot->attribute->isNumber() || slot->isArray()) {
        setStatus(status, MS::kInvalidParameter);
        return MObject::kNullObj;
    }
    const MObject object = create(typeFor(*slot->attribute), modifier, status);
    if (object.isNull())
        return object;
    const MPlug output = findPlug("output", true);
    if (modifier) {
        modifier->renameNode(object, (slot->node.name + "_" + slot->attribute->name).c_str());
        modifier->connect(output, plug);
    } else {
        setName((slot->node.name + "_" + slot->attribute->name).c_str());
        host::scene().connect(host::PlugAccess::slot(output), slot);
    }
    return object;
}

MFnAnimCurve::AnimCurveType MFnAnimCurve::animCurveType(MStatus* status) const {
    const auto curve = curveOf(object_);
    return setStatus(status, curve != nullptr) ? curve->curveType() : kAnimCurveUnknown;
}
double MFnAnimCurve::evaluate(const MTime& atTime, MStatus* status) const {
    const auto curve = curveOf(object_);
    return setStatus(status, curve != nullptr) ? curve->valueAt(atTime) : 0.0;
}
MStatus MFnAnimCurve::evaluate(const MTime& atTime, double& value) const {
    MStatus status;
    value = evaluate(atTime, &status);
    return status;
}
bool MFnAnimCurve::isStatic(MStatus* status) const {
    const auto curve = curveOf(object_);
    if (!setStatus(status, curve != nullptr))
        return true;
    return std::all_of(curve->keys.begin(), curve->keys.end(), [&](const AnimCurve::Key& key) {
        return key.value == curve->keys.front().value;
    });
}
unsigned int MFnAnimCurve::numKeys(MStatus* status) const {
    const auto curve = curveOf(object_);
    return setStatus(status, curve != nullptr) ? static_cast<unsigned int>(curve->keys.size()) : 0;
}
unsigned int MFnAnimCurve::numKeyframes(MStatus* status) const {
    return numKeys(status);
}

MStatus MFnAnimCurve::remove(unsigned int index) {
    const auto curve = curveOf(object_);
    if (!curve || index >= curve->keys.size())
        return MS::kFailure;
    curve->keys.erase(curve->keys.begin() + index);
    host::scene().touch();
    return MS::kSuccess;
}
bool MFnAnimCurve::find(const MTime& time, unsigned int& index, MStatus* status) const {
    const auto curve = curveOf(object_);
    if (!setStatus(status, curve != nullptr))
        return false;
    for (std::size_t i = 0; i < curve->keys.size(); ++i) {
        if (curve->keys[i].time == time) {
            index = static_cast<unsigned int>(i);
            return true;
        }
    }
    return false;
}
unsigned int MFnAnimCurve::findClosest(const MTime& time, MStatus* status) const {
    const auto curve = curveOf(object_);
    if (!setStatus(status, curve && !curve->keys.empty()))
        return 0;
    const auto distance = [&](const AnimCurve::Key& key) {
        return std::abs(key.time.as(MTime::kSeconds) - time.as(MTime::kSeconds));
    };
    const auto best =
        std::min_element(curve->keys.begin(), curve->keys.end(),
                         [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
    return static_cast<unsigned int>(best - curve->keys.begin());
}

unsigned int MFnAnimCurve::addKey(const MTime& time, double value, TangentType in, TangentType out,
                                  MAnimCurveChange*, MStatus* status) {
    const auto curve = curveOf(object_);
    if (!setStatus(status, curve && std::isfinite(value)))
        return 0;
    AnimCurve::Key key;
    key.time = time;
    key.value = value;
    key.in = in == kTangentGlobal ? kTangentAuto : in;
    key.out = out == kTangentGlobal ? kTangentAuto : out;
    const auto at = std::lower_bound(
        curve->keys.begin(), curve->keys.end(), time,
        [](const AnimCurve::Key& other, const MTime& t) { return other.time < t; });
    const auto index = static_cast<unsigned int>(at - curve->keys.begin());
    if (at != curve->keys.end() && at->time == time) {
        if (in == kTangentGlobal)
            key.in = at->in;
        if (out == kTangentGlobal)
            key.out = at->out;
        *at = key;
    } else {
        curve->keys.insert(at, key);
    }
    host::scene().touch();
    return index;
}

namespace {

template <class T>
T readKey(const MObject& object, unsigned int index, MStatus* status, T AnimCurve::Key::*member) {
    const auto curve = curveOf(object);
    if (!setStatus(status, curve && index < curve->keys.size()))
        return T();
    return curve->keys[index].*member;
}

template <class T>
MStatus writeKey(const MObject& object, unsigned int index, T AnimCurve::Key::*member, T value) {
    const auto curve = curveOf(object);
    if (!curve || index >= curve->keys.size())
        return MS::kFailure;
    curve->keys[index].*member = value;
    host::scene().touch();
    return MS::kSuccess;
}

} // namespace

MTime MFnAnimCurve::time(unsigned int i, MStatus* s) const {
    return readKey(object_, i, s, &AnimCurve::Key::time);
}
double MFnAnimCurve::value(unsigned int i, MStatus* s) const {
    return readKey(object_, i, s, &AnimCurve::Key::value);
}
MFnAnimCurve::TangentType MFnAnimCurve::inTangentType(unsigned int i, MStatus* s) const {
    return readKey(object_, i, s, &AnimCurve::Key::in);
}
MFnAnimCurve::TangentType MFnAnimCurve::outTangentType(unsigned int i, MStatus* s) const {
    return readKey(object_, i, s, &AnimCurve::Key::out);
}
MStatus MFnAnimCurve::setValue(unsigned int i, double v) {
    return std::isfinite(v) ? writeKey(object_, i, &AnimCurve::Key::value, v)
                            : MStatus(MS::kInvalidParameter);
}
MStatus MFnAnimCurve::setTime(unsigned int i, const MTime& t) {
    const auto curve = curveOf(object_);
    if (!curve || i >= curve->keys.size())
        return MS::kFailure;
    // A key may move between its neighbours only.
    if ((i > 0 && t <= curve->keys[i - 1].time) ||
        (i + 1 < curve->keys.size() && t >= curve->keys[i + 1].time))
        return MS::kFailure;
    return writeKey(object_, i, &AnimCurve::Key::time, t);
}
MStatus MFnAnimCurve::setInTangentType(unsigned int i, TangentType type) {
    return writeKey(object_, i, &AnimCurve::Key::in, type);
}
MStatus MFnAnimCurve::setOutTangentType(unsigned int i, TangentType type) {
    return writeKey(object_, i, &AnimCurve::Key::out, type);
}
MFnAnimCurve::InfinityType MFnAnimCurve::preInfinityType(MStatus* status) const {
    const auto curve = curveOf(object_);
    return setStatus(status, curve != nullptr) ? curve->infinity(true) : kConstant;
}
MFnAnimCurve::InfinityType MFnAnimCurve::postInfinityType(MStatus* status) const {
    const auto curve = curveOf(object_);
    return setStatus(status, curve != nullptr) ? curve->infinity(false) : kConstant;
}
MStatus MFnAnimCurve::setPreInfinityType(InfinityType type) {
    return findPlug("preInfinity", true).setInt(type);
}
MStatus MFnAnimCurve::setPostInfinityType(InfinityType type) {
    return findPlug("postInfinity", true).setInt(type);
}
bool MFnAnimCurve::isWeighted(MStatus* status) const {
    setStatus(status, curveOf(object_) != nullptr);
    return false;
}
