#include <maya/MAngle.h>
#include <maya/MArgList.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

const unsigned int MArgList::kInvalidArgIndex = std::numeric_limits<unsigned int>::max();

namespace {

void setStatus(MStatus* status, MStatus::MStatusCode code) {
    if (status)
        *status = code;
}

// A number at the start of the text; `rest` is what follows it. Independent of the locale.
bool parseNumber(const char* text, double& value, std::string* rest) {
    char* end = nullptr;
    value = std::strtod(text, &end);
    if (end == text || !std::isfinite(value))
        return false;
    if (rest)
        *rest = end;
    return rest || *end == '\0';
}

bool unitByName(const std::string& name, MTime::Unit& unit) {
    static const struct {
        const char* name;
        MTime::Unit unit;
    } units[] = {
        {"", MTime::kInvalid},
        {"hour", MTime::kHours},
        {"min", MTime::kMinutes},
        {"sec", MTime::kSeconds},
        {"millisec", MTime::kMilliseconds},
        {"game", MTime::kGames},
        {"film", MTime::kFilm},
        {"pal", MTime::kPALFrame},
        {"ntsc", MTime::kNTSCFrame},
        {"show", MTime::kShowScan},
        {"palf", MTime::kPALField},
        {"ntscf", MTime::kNTSCField},
    };
    for (const auto& entry : units) {
        if (name == entry.name) {
            unit = entry.unit == MTime::kInvalid ? MTime::uiUnit() : entry.unit;
            return true;
        }
    }
    return false;
}

} // namespace

MArgList::MArgList() = default;
MArgList::MArgList(const MArgList& other) = default;
MArgList::~MArgList() = default;
MArgList& MArgList::operator=(const MArgList& other) = default;

unsigned int MArgList::length() const {
    return static_cast<unsigned int>(arguments_.size());
}

unsigned int MArgList::flagIndex(const char* shortFlag, const char* longFlag) const {
    const auto matches = [](const MString& argument, const char* flag) {
        if (!flag || argument.length() < 2 || argument.asChar()[0] != '-')
            return false;
        return std::strcmp(argument.asChar() + 1, flag[0] == '-' ? flag + 1 : flag) == 0;
    };
    for (unsigned int i = 0; i < length(); ++i) {
        if (matches(arguments_[i], shortFlag) || matches(arguments_[i], longFlag))
            return i;
    }
    return kInvalidArgIndex;
}

MStatus MArgList::addArg(const MArgList& value) {
    const std::vector<MString> added = value.arguments_;
    arguments_.insert(arguments_.end(), added.begin(), added.end());
    return MS::kSuccess;
}
MStatus MArgList::addArg(const bool& value) {
    return addArg(MString(value ? "1" : "0"));
}
MStatus MArgList::addArg(const int& value) {
    return addArg(MString(std::to_string(value).c_str()));
}
MStatus MArgList::addArg(const double& value) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(17);
    text << value;
    return addArg(MString(text.str().c_str()));
}
MStatus MArgList::addArg(const MString& value) {
    arguments_.push_back(value);
    return MS::kSuccess;
}
MStatus MArgList::addArg(const MTime& value) {
    std::ostringstream text;
    text << value;
    return addArg(MString(text.str().c_str()));
}

bool MArgList::asBool(unsigned int index, MStatus* status) const {
    bool value = false;
    setStatus(status, get(index, value).statusCode());
    return value;
}
int MArgList::asInt(unsigned int index, MStatus* status) const {
    int value = 0;
    setStatus(status, get(index, value).statusCode());
    return value;
}
double MArgList::asDouble(unsigned int index, MStatus* status) const {
    double value = 0.0;
    setStatus(status, get(index, value).statusCode());
    return value;
}
MString MArgList::asString(unsigned int index, MStatus* status) const {
    MString value;
    setStatus(status, get(index, value).statusCode());
    return value;
}
MTime MArgList::asTime(unsigned int index, MStatus* status) const {
    MTime value;
    setStatus(status, get(index, value).statusCode());
    return value;
}
MAngle MArgList::asAngle(unsigned int index, MStatus* status) const {
    return MAngle(asDouble(index, status), MAngle::uiUnit());
}
MDistance MArgList::asDistance(unsigned int index, MStatus* status) const {
    return MDistance(asDouble(index, status), MDistance::uiUnit());
}

MStatus MArgList::get(unsigned int index, bool& value) const {
    if (index >= length())
        return MS::kFailure;
    const std::string word = arguments_[index].asChar();
    if (word == "true" || word == "on" || word == "yes") {
        value = true;
        return MS::kSuccess;
    }
    if (word == "false" || word == "off" || word == "no") {
        value = false;
        return MS::kSuccess;
    }
    double number = 0.0;
    if (!parseNumber(word.c_str(), number, nullptr))
        return MS::kFailure;
    value = number != 0.0;
    return MS::kSuccess;
}

MStatus MArgList::get(unsigned int index, int& value) const {
    double number = 0.0;
    if (index >= length() || !parseNumber(arguments_[index].asChar(), number, nullptr))
        return MS::kFailure;
    number = std::trunc(number);
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        return MS::kFailure;
    value = static_cast<int>(number);
    return MS::kSuccess;
}

MStatus MArgList::get(unsigned int index, double& value) const {
    double number = 0.0;
    if (index >= length() || !parseNumber(arguments_[index].asChar(), number, nullptr))
        return MS::kFailure;
    value = number;
    return MS::kSuccess;
}

MStatus MArgList::get(unsigned int index, MString& value) const {
    if (index >= length())
        return MS::kFailure;
    value = arguments_[index];
    return MS::kSuccess;
}

MStatus MArgList::get(unsigned int index, MTime& value) const {
    double number = 0.0;
    std::string rest;
    MTime::Unit unit = MTime::kInvalid;
    if (index >= length() || !parseNumber(arguments_[index].asChar(), number, &rest) ||
        !unitByName(rest, unit))
        return MS::kFailure;
    value = MTime(number, unit);
    return MS::kSuccess;
}
