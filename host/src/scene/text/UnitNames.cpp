#include "scene/text/UnitNames.h"

#include <initializer_list>

namespace host {

namespace {

template <class Unit> struct UnitName {
    Unit unit;
    const char* name;
    const char* shortName;
};

constexpr UnitName<MDistance::Unit> kLinearUnits[] = {
    {MDistance::kCentimeters, "centimeter", "cm"},
    {MDistance::kMillimeters, "millimeter", "mm"},
    {MDistance::kMeters, "meter", "m"},
    {MDistance::kKilometers, "kilometer", "km"},
    {MDistance::kInches, "inch", "in"},
    {MDistance::kFeet, "foot", "ft"},
    {MDistance::kYards, "yard", "yd"},
    {MDistance::kMiles, "mile", "mi"},
};

constexpr UnitName<MAngle::Unit> kAngleUnits[] = {
    {MAngle::kDegrees, "degree", "deg"},
    {MAngle::kRadians, "radian", "rad"},
    {MAngle::kAngMinutes, "minute", "min"},
    {MAngle::kAngSeconds, "second", "sec"},
};

constexpr UnitName<MTime::Unit> kTimeUnits[] = {
    {MTime::kFilm, "film", "24fps"},
    {MTime::kPALFrame, "pal", "25fps"},
    {MTime::kNTSCFrame, "ntsc", "30fps"},
    {MTime::kGames, "game", "15fps"},
    {MTime::kShowScan, "show", "48fps"},
    {MTime::kPALField, "palf", "50fps"},
    {MTime::kNTSCField, "ntscf", "60fps"},
    {MTime::kHours, "hour", "h"},
    {MTime::kMinutes, "min", "minute"},
    {MTime::kSeconds, "sec", "s"},
    {MTime::kMilliseconds, "millisec", "ms"},
    {MTime::k2FPS, "2fps", "2fps"},
    {MTime::k3FPS, "3fps", "3fps"},
    {MTime::k4FPS, "4fps", "4fps"},
    {MTime::k5FPS, "5fps", "5fps"},
    {MTime::k6FPS, "6fps", "6fps"},
    {MTime::k8FPS, "8fps", "8fps"},
    {MTime::k10FPS, "10fps", "10fps"},
    {MTime::k12FPS, "12fps", "12fps"},
    {MTime::k16FPS, "16fps", "16fps"},
    {MTime::k20FPS, "20fps", "20fps"},
    {MTime::k40FPS, "40fps", "40fps"},
    {MTime::k75FPS, "75fps", "75fps"},
    {MTime::k80FPS, "80fps", "80fps"},
    {MTime::k100FPS, "100fps", "100fps"},
    {MTime::k120FPS, "120fps", "120fps"},
    {MTime::k125FPS, "125fps", "125fps"},
    {MTime::k150FPS, "150fps", "150fps"},
    {MTime::k200FPS, "200fps", "200fps"},
    {MTime::k240FPS, "240fps", "240fps"},
    {MTime::k250FPS, "250fps", "250fps"},
    {MTime::k300FPS, "300fps", "300fps"},
    {MTime::k375FPS, "375fps", "375fps"},
    {MTime::k400FPS, "400fps", "400fps"},
    {MTime::k500FPS, "500fps", "500fps"},
    {MTime::k600FPS, "600fps", "600fps"},
    {MTime::k750FPS, "750fps", "750fps"},
    {MTime::k1200FPS, "1200fps", "1200fps"},
    {MTime::k1500FPS, "1500fps", "1500fps"},
    {MTime::k2000FPS, "2000fps", "2000fps"},
    {MTime::k3000FPS, "3000fps", "3000fps"},
    {MTime::k6000FPS, "6000fps", "6000fps"},
    {MTime::k23_976FPS, "23.976fps", "23.976fps"},
    {MTime::k29_97FPS, "29.97fps", "29.97fps"},
    {MTime::k29_97DF, "29.97df", "29.97df"},
    {MTime::k47_952FPS, "47.952fps", "47.952fps"},
    {MTime::k59_94FPS, "59.94fps", "59.94fps"},
    {MTime::k44100FPS, "44100fps", "44100fps"},
    {MTime::k48000FPS, "48000fps", "48000fps"},
    {MTime::k90FPS, "90fps", "90fps"},
};

template <class Unit, std::size_t count>
const UnitName<Unit>& entryIn(const UnitName<Unit> (&table)[count], Unit unit) {
    for (const auto& entry : table)
        if (entry.unit == unit)
            return entry;
    return table[0];
}

template <class Unit, std::size_t count>
bool findIn(const UnitName<Unit> (&table)[count], const std::string& name, Unit& unit) {
    for (const auto& entry : table) {
        if (name == entry.name || name == entry.shortName) {
            unit = entry.unit;
            return true;
        }
    }
    return false;
}

} // namespace

std::string linearName(MDistance::Unit unit) {
    return entryIn(kLinearUnits, unit).name;
}
std::string angleName(MAngle::Unit unit) {
    return entryIn(kAngleUnits, unit).name;
}
std::string timeName(MTime::Unit unit) {
    return entryIn(kTimeUnits, unit).name;
}

std::string linearShortName(MDistance::Unit unit) {
    return entryIn(kLinearUnits, unit).shortName;
}
std::string angleShortName(MAngle::Unit unit) {
    return entryIn(kAngleUnits, unit).shortName;
}

bool linearFromName(const std::string& name, MDistance::Unit& unit) {
    return findIn(kLinearUnits, name, unit);
}
bool angleFromName(const std::string& name, MAngle::Unit& unit) {
    return findIn(kAngleUnits, name, unit);
}
bool timeFromName(const std::string& name, MTime::Unit& unit) {
    return findIn(kTimeUnits, name, unit);
}

} // namespace host
