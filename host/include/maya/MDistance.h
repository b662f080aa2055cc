#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MDistance {
public:
    enum Unit {
        kInvalid,
        kInches,
        kFeet,
        kYards,
        kMiles,
        kMillimeters,
        kCentimeters,
        kKilometers,
        kMeters,
        kLast
    };

    MDistance();
    MDistance(const MDistance& other) = default;
    MDistance(double value, Unit unit = kCentimeters);
    ~MDistance() = default;
    MDistance& operator=(const MDistance& other) = default;

    Unit unit() const;
    double value() const;
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit unit) const;
    double asUnits(Unit unit) const;
    double asCentimeters() const;
    double asMeters() const;

    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);
    static Unit internalUnit();
    static double uiToInternal(double value);
    static double internalToUI(double value);

private:
    double value_;
    Unit unit_;
};

std::ostream& operator<<(std::ostream& out, const MDistance& value);
