#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MAngle {
public:
    enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };

    MAngle();
    MAngle(const MAngle& other) = default;
    MAngle(double value, Unit unit = kRadians);
    ~MAngle() = default;
    MAngle& operator=(const MAngle& other) = default;

    Unit unit() const;
    double value() const;
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit unit) const;
    double asUnits(Unit unit) const;
    double asRadians() const;
    double asDegrees() const;

    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);
    static Unit internalUnit();
    static double uiToInternal(double value);
    static double internalToUI(double value);

private:
    double value_;
    Unit unit_;
};

std::ostream& operator<<(std::ostream& out, const MAngle& value);
