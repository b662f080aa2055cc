#include <maya/MTime.h>

#include <cmath>
#include <locale>
#include <ostream>
#include <sstream>

namespace {

MTime::Unit interfaceUnit = MTime::kFilm;

// Moments are kept in whole ticks by the platform: 141,120,000 a second, which every unit below
// divides. Going through them makes whole frames of one unit whole frames again after any
// conversion, where plain division would leave 11.999999.
constexpr double kTicksPerSecond = 141120000.0;

struct UnitInfo {
    const char* name; ///< as scripts and files write it; null: has digits, cannot follow a number
    double ticks;     ///< ticks in one unit
};

UnitInfo unitInfo(MTime::Unit unit) {
    switch (unit) {
    case MTime::kHours:
        return {"hour", kTicksPerSecond * 3600.0};
    case MTime::kMinutes:
        return {"min", kTicksPerSecond * 60.0};
    case MTime::kSeconds:
        return {"sec", kTicksPerSecond};
    case MTime::kMilliseconds:
        return {"millisec", kTicksPerSecond / 1000.0};
    case MTime::kGames:
        return {"game", kTicksPerSecond / 15.0};
    case MTime::kPALFrame:
        return {"pal", kTicksPerSecond / 25.0};
    case MTime::kNTSCFrame:
        return {"ntsc", kTicksPerSecond / 30.0};
    case MTime::kShowScan:
        return {"show", kTicksPerSecond / 48.0};
    case MTime::kPALField:
        return {"palf", kTicksPerSecond / 50.0};
    case MTime::kNTSCField:
        return {"ntscf", kTicksPerSecond / 60.0};
    case MTime::k23_976FPS:
        return {nullptr, kTicksPerSecond * 1001.0 / 24000.0};
    case MTime::k29_97FPS:
    case MTime::k29_97DF:
        return {nullptr, kTicksPerSecond * 1001.0 / 30000.0};
    case MTime::k47_952FPS:
        return {nullptr, kTicksPerSecond * 1001.0 / 48000.0};
    case MTime::k59_94FPS:
        return {nullptr, kTicksPerSecond * 1001.0 / 60000.0};
    case MTime::k44100FPS:
        return {nullptr, kTicksPerSecond / 44100.0};
    case MTime::k48000FPS:
        return {nullptr, kTicksPerSecond / 48000.0};
    case MTime::k90FPS:
        return {nullptr, kTicksPerSecond / 90.0};
    default:
        break;
    }
    static const double rates[] = {2,   3,   4,   5,   6,    8,    10,   12,   16,  20,  40,
                                   75,  80,  100, 120, 125,  150,  200,  240,  250, 300, 375,
                                   400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000};
    if (unit >= MTime::k2FPS && unit <= MTime::k6000FPS)
        return {nullptr, kTicksPerSecond / rates[unit - MTime::k2FPS]};
    return {"film", kTicksPerSecond / 24.0};
}

double ticks(const MTime& time) {
    return std::round(time.value() * unitInfo(time.unit()).ticks);
}

} // namespace

MTime::MTime() : value_(0.0), unit_(kFilm) {
}
MTime::MTime(const MTime& other) = default;
MTime::MTime(double value, Unit unit) : value_(value), unit_(unit) {
}
MTime::~MTime() = default;
MTime& MTime::operator=(const MTime& other) = default;

MTime::Unit MTime::unit() const {
    return unit_;
}
double MTime::value() const {
    return value_;
}
MStatus MTime::setUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast)
        return MS::kInvalidParameter;
    unit_ = unit;
    return MS::kSuccess;
}
MStatus MTime::setValue(double value) {
    value_ = value;
    return MS::kSuccess;
}
double MTime::as(Unit unit) const {
    return unit == unit_ ? value_ : ticks(*this) / unitInfo(unit).ticks;
}
double MTime::asUnits(Unit unit) const {
    return as(unit);
}

bool MTime::operator==(const MTime& other) const {
    return ticks(*this) == ticks(other);
}
bool MTime::operator!=(const MTime& other) const {
    return !(*this == other);
}
bool MTime::operator<=(const MTime& other) const {
    return ticks(*this) <= ticks(other);
}
bool MTime::operator>=(const MTime& other) const {
    return ticks(*this) >= ticks(other);
}
bool MTime::operator<(const MTime& other) const {
    return ticks(*this) < ticks(other);
}
bool MTime::operator>(const MTime& other) const {
    return ticks(*this) > ticks(other);
}

MTime MTime::operator+(const MTime& other) const {
    return {value_ + other.as(unit_), unit_};
}
MTime MTime::operator-(const MTime& other) const {
    return {value_ - other.as(unit_), unit_};
}
MTime MTime::operator*(double factor) const {
    return {value_ * factor, unit_};
}
MTime MTime::operator/(double divisor) const {
    return {value_ / divisor, unit_};
}
double MTime::operator/(const MTime& other) const {
    return value_ / other.as(unit_);
}
MTime& MTime::operator+=(const MTime& other) {
    return *this = *this + other;
}
MTime& MTime::operator-=(const MTime& other) {
    return *this = *this - other;
}
MTime& MTime::operator*=(double factor) {
    return *this = *this * factor;
}
MTime& MTime::operator/=(double divisor) {
    return *this = *this / divisor;
}
MTime MTime::operator+(double offset) const {
    return {value_ + offset, unit_};
}
MTime MTime::operator-(double offset) const {
    return {value_ - offset, unit_};
}
MTime& MTime::operator+=(double offset) {
    return *this = *this + offset;
}
MTime& MTime::operator-=(double offset) {
    return *this = *this - offset;
}
MTime& MTime::operator++() {
    return *this += 1.0;
}
MTime MTime::operator++(int) {
    const MTime before = *this;
    ++*this;
    return before;
}
MTime& MTime::operator--() {
    return *this -= 1.0;
}
MTime MTime::operator--(int) {
    const MTime before = *this;
    --*this;
    return before;
}

MTime::Unit MTime::uiUnit() {
    return interfaceUnit;
}
MStatus MTime::setUIUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast)
        return MS::kInvalidParameter;
    interfaceUnit = unit;
    return MS::kSuccess;
}

// The value and the name of its unit in one word, e.g. "12film". A unit whose name begins with a
// digit could not be told from the value: those moments are printed in film frames.
std::ostream& operator<<(std::ostream& out, const MTime& time) {
    const char* name = unitInfo(time.unit_).name;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(17);
    text << (name ? time.value_ : time.as(MTime::kFilm)) << (name ? name : "film");
    return out << text.str();
}
