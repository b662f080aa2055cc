#include "scene/text/CurveText.h"

#include "scene/text/StatementText.h"
#include "scene/text/Words.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MTime.h>

#include <array>
#include <cstdlib>

namespace host {

namespace {

// Tangent types as scene files number them.
constexpr std::array<std::pair<MFnAnimCurve::TangentType, int>, 9> kTangentNumbers = {{
    {MFnAnimCurve::kTangentFixed, 1},
    {MFnAnimCurve::kTangentLinear, 2},
    {MFnAnimCurve::kTangentFlat, 3},
    {MFnAnimCurve::kTangentStep, 5},
    {MFnAnimCurve::kTangentSmooth, 9},
    {MFnAnimCurve::kTangentClamped, 10},
    {MFnAnimCurve::kTangentPlateau, 16},
    {MFnAnimCurve::kTangentStepNext, 17},
    {MFnAnimCurve::kTangentAuto, 18},
}};
constexpr int kAutoNumber = 18;

int numberOf(MFnAnimCurve::TangentType type) {
    for (const auto& [tangent, number] : kTangentNumbers)
        if (tangent == type)
            return number;
    return kAutoNumber;
}

MFnAnimCurve::TangentType typeOf(int number) {
    for (const auto& [tangent, each] : kTangentNumbers)
        if (each == number)
            return tangent;
    return MFnAnimCurve::kTangentAuto;
}

// Curve values are held in radians and centimetres and written in the units of the scene.
double toUi(const MFnAnimCurve& curve, double value) {
    switch (curve.animCurveType()) {
    case MFnAnimCurve::kAnimCurveTA:
        return MAngle(value).as(MAngle::uiUnit());
    case MFnAnimCurve::kAnimCurveTL:
        return MDistance(value).as(MDistance::uiUnit());
    default:
        return value;
    }
}

double fromUi(const MFnAnimCurve& curve, double value) {
    switch (curve.animCurveType()) {
    case MFnAnimCurve::kAnimCurveTA:
        return MAngle(value, MAngle::uiUnit()).asRadians();
    case MFnAnimCurve::kAnimCurveTL:
        return MDistance(value, MDistance::uiUnit()).asCentimeters();
    default:
        return value;
    }
}

AttrRecord perKey(const char* plug, unsigned count) {
    AttrRecord record;
    record.plug = "." + std::string(plug) + "[0" +
                  (count > 1 ? ":" + std::to_string(count - 1) : std::string()) + "]";
    record.hasValue = true;
    return record;
}

// ".kit[2:5]" → "kit", 2, 5. A plug without brackets gives -1.
bool splitRange(const std::string& plug, std::string& name, long& low, long& high) {
    const std::size_t start = plug.compare(0, 1, ".") == 0 ? 1 : 0;
    const std::size_t bracket = plug.find('[');
    name = plug.substr(start, bracket == std::string::npos ? bracket : bracket - start);
    low = high = -1;
    if (bracket == std::string::npos)
        return true;
    char* end = nullptr;
    low = high = std::strtol(plug.c_str() + bracket + 1, &end, 10);
    if (*end == ':')
        high = std::strtol(end + 1, &end, 10);
    return *end == ']' && low >= 0 && high >= low;
}

// What a curve does before its first and after its last key; the numbers are those of files.
void addInfinity(std::vector<AttrRecord>& records, const char* plug,
                 MFnAnimCurve::InfinityType type) {
    if (type == MFnAnimCurve::kConstant)
        return;
    AttrRecord record;
    record.plug = plug;
    record.hasValue = true;
    record.values.push_back(word(std::to_string(int(type))));
    records.push_back(std::move(record));
}

bool setInfinity(MFnAnimCurve& curve, bool before, const std::vector<Token>& values) {
    double number = 0;
    if (values.size() != 1 || !parseNumber(values[0].text, number) || !(number >= 0) ||
        number > double(MFnAnimCurve::kOscillate))
        return false;
    const auto type = MFnAnimCurve::InfinityType(int(number));
    return bool(before ? curve.setPreInfinityType(type) : curve.setPostInfinityType(type));
}

bool addKeys(MFnAnimCurve& curve, const std::vector<Token>& values) {
    for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
        double frame = 0;
        double value = 0;
        if (!parseNumber(values[i].text, frame) || !parseNumber(values[i + 1].text, value))
            return false;
        curve.addKey(MTime(frame, MTime::uiUnit()), fromUi(curve, value));
    }
    return values.size() % 2 == 0;
}

} // namespace

bool isTangentDetail(const std::string& plug) {
    std::string name;
    long low = 0;
    long high = 0;
    splitRange(plug, name, low, high);
    return name == "kix" || name == "kiy" || name == "kox" || name == "koy" || name == "ktl" ||
           name == "kwl";
}

bool isCurve(const MObject& node) {
    return node.hasFn(MFn::kAnimCurve);
}

std::vector<AttrRecord> curveToText(const MObject& object) {
    MFnAnimCurve curve(object);
    const unsigned count = curve.numKeys();
    std::vector<AttrRecord> records;
    addInfinity(records, ".pre", curve.preInfinityType());
    addInfinity(records, ".pst", curve.postInfinityType());
    if (count == 0)
        return records;
    AttrRecord keys = perKey("ktv", count);
    AttrRecord in = perKey("kit", count);
    AttrRecord out = perKey("kot", count);
    for (unsigned i = 0; i < count; ++i) {
        keys.values.push_back(word(formatNumber(curve.time(i).as(MTime::uiUnit()))));
        keys.values.push_back(word(formatNumber(toUi(curve, curve.value(i)))));
        in.values.push_back(word(std::to_string(numberOf(curve.inTangentType(i)))));
        out.values.push_back(word(std::to_string(numberOf(curve.outTangentType(i)))));
    }
    records.push_back(std::move(keys));
    records.push_back(std::move(in));
    records.push_back(std::move(out));
    return records;
}

std::string keysText(const MObject& curve) {
    std::string text;
    for (const AttrRecord& record : curveToText(curve))
        text += statementText(attributeTokens(record));
    return text;
}

bool textToCurve(const MObject& object, const AttrRecord& record, std::string& error) {
    std::string name;
    long low = -1;
    long high = -1;
    const bool range = splitRange(record.plug, name, low, high);
    const bool isKeys = name == "ktv" || name == "keyTimeValue";
    const bool isIn = name == "kit" || name == "keyTanInType";
    const bool isOut = name == "kot" || name == "keyTanOutType";
    MFnAnimCurve curve(object);
    if (name == "pre" || name == "preInfinity" || name == "pst" || name == "postInfinity") {
        if (!setInfinity(curve, name.compare(0, 2, "pr") == 0, record.values))
            error = "bad infinity of an animation curve";
        return true;
    }
    if (!isKeys && !isIn && !isOut)
        return false;
    if (!range) {
        error = "bad range " + record.plug;
    } else if (isKeys) {
        if (!addKeys(curve, record.values))
            error = "bad key of an animation curve";
    } else {
        for (std::size_t i = 0; i < record.values.size(); ++i) {
            const auto key = unsigned(low < 0 ? long(i) : low + long(i));
            double number = 0;
            if (key >= curve.numKeys() || !parseNumber(record.values[i].text, number)) {
                error = "tangent without key";
                break;
            }
            if (isIn)
                curve.setInTangentType(key, typeOf(int(number)));
            else
                curve.setOutTangentType(key, typeOf(int(number)));
        }
    }
    return true;
}

} // namespace host
