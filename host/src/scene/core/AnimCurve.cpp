#include "scene/core/AnimCurve.h"

#include "scene/core/TimeState.h"

#include <algorithm>
#include <cmath>

namespace host {

MFnAnimCurve::AnimCurveType AnimCurve::curveType() const {
    if (typeName() == "animCurveTA")
        return MFnAnimCurve::kAnimCurveTA;
    if (typeName() == "animCurveTL")
        return MFnAnimCurve::kAnimCurveTL;
    if (typeName() == "animCurveTT")
        return MFnAnimCurve::kAnimCurveTT;
    return MFnAnimCurve::kAnimCurveTU;
}

// Value per second at a key, on its way in or out. Auto and clamped tangents are flat at extremes
// so that the curve never overshoots its keys; spline-like ones take the secant of the neighbours.
double AnimCurve::slope(std::size_t key, bool incoming) const {
    const MFnAnimCurve::TangentType type = incoming ? keys[key].in : keys[key].out;
    const auto secant = [&](std::size_t a, std::size_t b) {
        const double seconds = keys[b].time.as(MTime::kSeconds) - keys[a].time.as(MTime::kSeconds);
        return seconds > 0.0 ? (keys[b].value - keys[a].value) / seconds : 0.0;
    };
    const bool first = key == 0;
    const bool last = key + 1 == keys.size();
    switch (type) {
    case MFnAnimCurve::kTangentFlat:
        return 0.0;
    case MFnAnimCurve::kTangentLinear:
        if (incoming)
            return first ? 0.0 : secant(key - 1, key);
        return last ? 0.0 : secant(key, key + 1);
    default:
        break;
    }
    if (first || last)
        return type == MFnAnimCurve::kTangentSmooth ? (first && last ? 0.0
                                                       : first       ? secant(0, 1)
                                                                     : secant(key - 1, key))
                                                    : 0.0;
    const double before = secant(key - 1, key);
    const double after = secant(key, key + 1);
    const double through = secant(key - 1, key + 1);
    if (type == MFnAnimCurve::kTangentSmooth || type == MFnAnimCurve::kTangentFixed)
        return through;
    if (before * after <= 0.0)
        return 0.0;
    // Three times the smaller secant is the steepest slope that keeps a cubic segment monotone.
    const double limit = 3.0 * std::min(std::abs(before), std::abs(after));
    return std::copysign(std::min(std::abs(through), limit), through);
}

double AnimCurve::inside(double seconds) const {
    const auto after =
        std::upper_bound(keys.begin(), keys.end(), seconds, [](double value, const Key& key) {
            return value < key.time.as(MTime::kSeconds);
        });
    if (after == keys.begin())
        return keys.front().value;
    const std::size_t i = static_cast<std::size_t>(after - keys.begin()) - 1;
    if (after == keys.end())
        return keys.back().value;
    const Key& a = keys[i];
    const Key& b = keys[i + 1];
    if (a.out == MFnAnimCurve::kTangentStep)
        return a.value;
    if (a.out == MFnAnimCurve::kTangentStepNext)
        return b.value;
    const double start = a.time.as(MTime::kSeconds);
    const double length = b.time.as(MTime::kSeconds) - start;
    const double t = (seconds - start) / length;
    const double m0 = slope(i, false) * length;
    const double m1 = slope(i + 1, true) * length;
    const double t2 = t * t;
    const double t3 = t2 * t;
    return (2 * t3 - 3 * t2 + 1) * a.value + (t3 - 2 * t2 + t) * m0 + (3 * t2 - 2 * t3) * b.value +
           (t3 - t2) * m1;
}

double AnimCurve::valueAt(const MTime& when) const {
    if (keys.empty())
        return 0.0;
    const double first = keys.front().time.as(MTime::kSeconds);
    const double last = keys.back().time.as(MTime::kSeconds);
    const double length = last - first;
    const double seconds = when.as(MTime::kSeconds);
    const bool before = seconds < first;
    if ((seconds >= first && seconds <= last) || length <= 0.0)
        return inside(seconds);
    const double edge = before ? first : last;
    const double turns = std::floor((seconds - first) / length);
    const double within = seconds - turns * length;
    switch (infinity(before)) {
    case MFnAnimCurve::kLinear:
        return inside(edge) + (seconds - edge) * slope(before ? 0 : keys.size() - 1, !before);
    case MFnAnimCurve::kCycle:
        return inside(within);
    case MFnAnimCurve::kCycleRelative:
        return inside(within) + turns * (keys.back().value - keys.front().value);
    case MFnAnimCurve::kOscillate:
        return inside(std::fmod(std::abs(turns), 2.0) == 1.0 ? last - (within - first) : within);
    default:
        return inside(edge);
    }
}

MFnAnimCurve::InfinityType AnimCurve::infinity(bool before) const {
    // Plugs are made on demand, so looking at one is not const; its value is not touched.
    auto& self = const_cast<AnimCurve&>(*this);
    return static_cast<MFnAnimCurve::InfinityType>(
        static_cast<int>(self.number(before ? "preInfinity" : "postInfinity")));
}

bool AnimCurve::compute(Slot& slot, const MTime& when, PlugValue& value) {
    if (slot.attribute->name != "output")
        return false;
    value = valueAt(when.unit() == MTime::kInvalid ? timeline::current() : when);
    return true;
}

} // namespace host
