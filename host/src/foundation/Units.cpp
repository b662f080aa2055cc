// MAngle and MDistance.
#include <maya/MAngle.h>
#include <maya/MDistance.h>

#include <ostream>

namespace {

constexpr double kPi = 3.14159265358979323846;

double radians(MAngle::Unit unit) {
    switch (unit) {
    case MAngle::kDegrees:
        return kPi / 180.0;
    case MAngle::kAngMinutes:
        return kPi / (180.0 * 60.0);
    case MAngle::kAngSeconds:
        return kPi / (180.0 * 3600.0);
    default:
        return 1.0;
    }
}

double centimeters(MDistance::Unit unit) {
    switch (unit) {
    case MDistance::kInches:
        return 2.54;
    case MDistance::kFeet:
        return 30.48;
    case MDistance::kYards:
        return 91.44;
    case MDistance::kMiles:
        return 160934.4;
    case MDistance::kMillimeters:
        return 0.1;
    case MDistance::kKilometers:
        return 100000.0;
    case MDistance::kMeters:
        return 100.0;
    default:
        return 1.0;
    }
}

MAngle::Unit angleUnit = MAngle::kDegrees;
MDistance::Unit distanceUnit = MDistance::kCentimeters;

} // namespace

MAngle::MAngle() : value_(0.0), unit_(kRadians) {
}
MAngle::MAngle(double value, Unit unit) : value_(value), unit_(unit) {
}
MAngle::Unit MAngle::unit() const {
    return unit_;
}
double MAngle::value() const {
    return value_;
}
MStatus MAngle::setUnit(Unit unit) {
    unit_ = unit;
    return MS::kSuccess;
}
MStatus MAngle::setValue(double value) {
    value_ = value;
    return MS::kSuccess;
}
double MAngle::as(Unit unit) const {
    return value_ * radians(unit_) / radians(unit);
}
double MAngle::asUnits(Unit unit) const {
    return as(unit);
}
double MAngle::asRadians() const {
    return as(kRadians);
}
double MAngle::asDegrees() const {
    return as(kDegrees);
}
MAngle::Unit MAngle::uiUnit() {
    return angleUnit;
}
MStatus MAngle::setUIUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast)
        return MS::kInvalidParameter;
    angleUnit = unit;
    return MS::kSuccess;
}
MAngle::Unit MAngle::internalUnit() {
    return kRadians;
}
double MAngle::uiToInternal(double value) {
    return MAngle(value, angleUnit).asRadians();
}
double MAngle::internalToUI(double value) {
    return MAngle(value).as(angleUnit);
}
std::ostream& operator<<(std::ostream& out, const MAngle& value) {
    return out << value.value();
}

MDistance::MDistance() : value_(0.0), unit_(kCentimeters) {
}
MDistance::MDistance(double value, Unit unit) : value_(value), unit_(unit) {
}
MDistance::Unit MDistance::unit() const {
    return unit_;
}
double MDistance::value() const {
    return value_;
}
MStatus MDistance::setUnit(Unit unit) {
    unit_ = unit;
    return MS::kSuccess;
}
MStatus MDistance::setValue(double value) {
    value_ = value;
    return MS::kSuccess;
}
double MDistance::as(Unit unit) const {
    return value_ * centimeters(unit_) / centimeters(unit);
}
double MDistance::asUnits(Unit unit) const {
    return as(unit);
}
double MDistance::asCentimeters() const {
    return as(kCentimeters);
}
double MDistance::asMeters() const {
    return as(kMeters);
}
MDistance::Unit MDistance::uiUnit() {
    return distanceUnit;
}
MStatus MDistance::setUIUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast)
        return MS::kInvalidParameter;
    distanceUnit = unit;
    return MS::kSuccess;
}
MDistance::Unit MDistance::internalUnit() {
    return kCentimeters;
}
double MDistance::uiToInternal(double value) {
    return MDistance(value, distanceUnit).asCentimeters();
}
double MDistance::internalToUI(double value) {
    return MDistance(value).as(distanceUnit);
}
std::ostream& operator<<(std::ostream& out, const MDistance& value) {
    return out << value.value();
}
