#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

/// A moment or a length of time: a value and the unit it was given in. Comparisons and arithmetic
/// convert between units; changing the interface unit keeps moments.
class MTime {
public:
    enum Unit {
        kInvalid = 0,
        kHours,
        kMinutes,
        kSeconds,
        kMilliseconds,
        kGames,     ///< 15 frames a second
        kFilm,      ///< 24
        kPALFrame,  ///< 25
        kNTSCFrame, ///< 30
        kShowScan,  ///< 48
        kPALField,  ///< 50
        kNTSCField, ///< 60
        k2FPS,
        k3FPS,
        k4FPS,
        k5FPS,
        k6FPS,
        k8FPS,
        k10FPS,
        k12FPS,
        k16FPS,
        k20FPS,
        k40FPS,
        k75FPS,
        k80FPS,
        k100FPS,
        k120FPS,
        k125FPS,
        k150FPS,
        k200FPS,
        k240FPS,
        k250FPS,
        k300FPS,
        k375FPS,
        k400FPS,
        k500FPS,
        k600FPS,
        k750FPS,
        k1200FPS,
        k1500FPS,
        k2000FPS,
        k3000FPS,
        k6000FPS,
        k23_976FPS,
        k29_97FPS,
        k29_97DF,
        k47_952FPS,
        k59_94FPS,
        k44100FPS,
        k48000FPS,
        k90FPS,
        kUserDef,
        kLast
    };

    MTime();
    MTime(const MTime& other);
    MTime(double value, Unit unit = kFilm);
    ~MTime();

    Unit unit() const;
    double value() const;
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit unit) const;
    double asUnits(Unit unit) const;

    MTime& operator=(const MTime& other);
    bool operator==(const MTime& other) const;
    bool operator!=(const MTime& other) const;
    bool operator<=(const MTime& other) const;
    bool operator>=(const MTime& other) const;
    bool operator<(const MTime& other) const;
    bool operator>(const MTime& other) const;
    MTime operator+(const MTime& other) const;
    MTime operator-(const MTime& other) const;
    MTime operator*(double factor) const;
    MTime operator/(double divisor) const;
    double operator/(const MTime& other) const;
    MTime& operator+=(const MTime& other);
    MTime& operator-=(const MTime& other);
    MTime& operator*=(double factor);
    MTime& operator/=(double divisor);
    MTime operator+(double offset) const;
    MTime operator-(double offset) const;
    MTime& operator+=(double offset);
    MTime& operator-=(double offset);
    MTime& operator++();
    MTime operator++(int);
    MTime& operator--();
    MTime operator--(int);

    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);

    friend std::ostream& operator<<(std::ostream& out, const MTime& time);

private:
    double value_;
    Unit unit_;
};
