#include "scene/text/PlugText.h"

#include "scene/text/Words.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <cmath>
#include <limits>

namespace host {

namespace {

PlugKind numericKind(MFnNumericData::Type type) {
    switch (type) {
    case MFnNumericData::kBoolean:
        return PlugKind::Boolean;
    case MFnNumericData::kByte:
    case MFnNumericData::kChar:
    case MFnNumericData::kShort:
    case MFnNumericData::kInt:
        return PlugKind::Integer;
    case MFnNumericData::kFloat:
    case MFnNumericData::kDouble:
        return PlugKind::Real;
    default:
        return PlugKind::None;
    }
}

PlugKind typedKind(MFnData::Type type) {
    switch (type) {
    case MFnData::kString:
        return PlugKind::Text;
    case MFnData::kMatrix:
        return PlugKind::Matrix;
    case MFnData::kDoubleArray:
        return PlugKind::Numbers;
    case MFnData::kIntArray:
        return PlugKind::Integers;
    case MFnData::kStringArray:
        return PlugKind::Texts;
    case MFnData::kPlugin:
        return PlugKind::Plugin;
    default:
        return PlugKind::None;
    }
}

bool isNumber(PlugKind kind) {
    return kind == PlugKind::Real || kind == PlugKind::Linear || kind == PlugKind::Angle ||
           kind == PlugKind::Integer || kind == PlugKind::Time;
}

double numberOf(const MPlug& plug, PlugKind kind) {
    switch (kind) {
    case PlugKind::Linear:
        return plug.asMDistance().as(MDistance::uiUnit());
    case PlugKind::Angle:
        return plug.asMAngle().as(MAngle::uiUnit());
    case PlugKind::Time:
        return plug.asMTime().as(MTime::uiUnit());
    case PlugKind::Integer:
        return plug.asInt();
    case PlugKind::Boolean:
        return plug.asBool() ? 1 : 0;
    default:
        return plug.asDouble();
    }
}

Token numberToken(const MPlug& plug, PlugKind kind) {
    if (kind == PlugKind::Boolean)
        return word(plug.asBool() ? "yes" : "no");
    // A float written with the digits of a double would look changed after every round trip.
    MStatus status;
    const MFnNumericAttribute numeric(plug.attribute(), &status);
    if (status && numeric.unitType() == MFnNumericData::kFloat)
        return word(formatNumber(plug.asFloat()));
    return word(formatNumber(numberOf(plug, kind)));
}

MStatus setNumber(MPlug plug, PlugKind kind, double value) {
    switch (kind) {
    case PlugKind::Linear:
        return plug.setMDistance(MDistance(value, MDistance::uiUnit()));
    case PlugKind::Angle:
        return plug.setMAngle(MAngle(value, MAngle::uiUnit()));
    case PlugKind::Time:
        return plug.setMTime(MTime(value, MTime::uiUnit()));
    case PlugKind::Boolean:
        return plug.setBool(value != 0);
    case PlugKind::Integer:
        if (!(std::abs(value) <= double(std::numeric_limits<int>::max())))
            return MS::kInvalidParameter;
        return plug.setInt(int(value));
    default:
        return plug.setDouble(value);
    }
}

MString toMString(const std::string& text) {
    return MString(text.c_str());
}

std::string toStd(const MString& text) {
    return text.asChar();
}

// Words of one statement, taken one after the other.
struct Words {
    const std::vector<Token>& tokens;
    std::size_t at = 0;

    bool more() const { return at < tokens.size(); }
    bool number(double& value) { return more() && parseNumber(tokens[at++].text, value); }
    bool count(std::size_t& value, std::size_t smallest) {
        double number_ = 0;
        if (!number(number_) || !(number_ >= 0))
            return false;
        value = std::size_t(number_);
        return value <= (tokens.size() - at) / smallest;
    }
};

bool readMatrix(MPlug& plug, Words& words) {
    double cells[4][4];
    for (auto& row : cells)
        for (double& cell : row)
            if (!words.number(cell))
                return false;
    MFnMatrixData data;
    const MObject object = data.create(MMatrix(cells));
    return bool(plug.setMObject(object));
}

bool readNumbers(MPlug& plug, Words& words) {
    std::size_t count = 0;
    if (!words.count(count, 1))
        return false;
    MDoubleArray values;
    for (double value = 0; count > 0; --count) {
        if (!words.number(value))
            return false;
        values.append(value);
    }
    MFnDoubleArrayData data;
    const MObject object = data.create(values);
    return bool(plug.setMObject(object));
}

bool readIntegers(MPlug& plug, Words& words) {
    std::size_t count = 0;
    if (!words.count(count, 1))
        return false;
    MIntArray values;
    for (double value = 0; count > 0; --count) {
        if (!words.number(value) || !(std::abs(value) <= double(std::numeric_limits<int>::max())))
            return false;
        values.append(int(value));
    }
    MFnIntArrayData data;
    const MObject object = data.create(values);
    return bool(plug.setMObject(object));
}

bool readTexts(MPlug& plug, Words& words) {
    std::size_t count = 0;
    if (!words.count(count, 1))
        return false;
    MStringArray values;
    for (; count > 0; --count)
        values.append(toMString(words.tokens[words.at++].text));
    MFnStringArrayData data;
    const MObject object = data.create(values);
    return bool(plug.setMObject(object));
}

bool readOne(MPlug plug, Words& words, std::string& error) {
    const PlugKind kind = plugKind(plug);
    if (kind == PlugKind::Compound) {
        for (unsigned i = 0; i < plug.numChildren(); ++i)
            if (!readOne(plug.child(i), words, error))
                return false;
        return true;
    }
    bool ok = false;
    double value = 0;
    switch (kind) {
    case PlugKind::Text:
        ok = words.more() && plug.setString(toMString(words.tokens[words.at++].text));
        break;
    case PlugKind::Matrix:
        ok = readMatrix(plug, words);
        break;
    case PlugKind::Numbers:
        ok = readNumbers(plug, words);
        break;
    case PlugKind::Integers:
        ok = readIntegers(plug, words);
        break;
    case PlugKind::Texts:
        ok = readTexts(plug, words);
        break;
    case PlugKind::None:
    case PlugKind::Plugin:
    case PlugKind::Compound:
        break;
    default:
        ok = words.number(value) && setNumber(plug, kind, value);
    }
    if (!ok)
        error = "Error reading data element for attribute '" + toStd(plug.partialName()) + "'";
    return ok;
}

} // namespace

PlugKind plugKind(const MPlug& plug) {
    if (plug.isCompound())
        return PlugKind::Compound;
    const MObject attribute = plug.attribute();
    if (attribute.hasFn(MFn::kEnumAttribute))
        return PlugKind::Integer;
    if (attribute.hasFn(MFn::kUnitAttribute)) {
        switch (MFnUnitAttribute(attribute).unitType()) {
        case MFnUnitAttribute::kAngle:
            return PlugKind::Angle;
        case MFnUnitAttribute::kDistance:
            return PlugKind::Linear;
        case MFnUnitAttribute::kTime:
            return PlugKind::Time;
        default:
            return PlugKind::None;
        }
    }
    if (attribute.hasFn(MFn::kNumericAttribute))
        return numericKind(MFnNumericAttribute(attribute).unitType());
    if (attribute.hasFn(MFn::kTypedAttribute))
        return typedKind(MFnTypedAttribute(attribute).attrType());
    return attribute.hasFn(MFn::kMatrixAttribute) ? PlugKind::Matrix : PlugKind::None;
}

bool isTuple(const MPlug& plug) {
    if (!plug.isCompound() || plug.isArray())
        return false;
    const unsigned count = plug.numChildren();
    if (count < 2 || count > 4)
        return false;
    for (unsigned i = 0; i < count; ++i) {
        const MPlug child = plug.child(i);
        if (child.isArray() || !isNumber(plugKind(child)))
            return false;
    }
    return true;
}

std::string tupleType(const MPlug& plug) {
    if (!isTuple(plug))
        return {};
    const MPlug first = plug.child(0);
    std::string base = "double";
    if (first.attribute().hasFn(MFn::kNumericAttribute)) {
        const MFnNumericData::Type type = MFnNumericAttribute(first.attribute()).unitType();
        if (type == MFnNumericData::kFloat)
            base = "float";
        else if (type == MFnNumericData::kShort)
            base = "short";
        else if (type == MFnNumericData::kInt)
            base = "long";
    }
    return base + std::to_string(plug.numChildren());
}

bool valueToText(const MPlug& plug, AttrRecord& record) {
    record.values.clear();
    record.type.clear();
    const PlugKind kind = plugKind(plug);
    switch (kind) {
    case PlugKind::None:
    case PlugKind::Plugin:
        return false;
    case PlugKind::Compound:
        record.type = tupleType(plug);
        for (unsigned i = 0; i < plug.numChildren(); ++i) {
            const MPlug child = plug.child(i);
            if (!isNumber(plugKind(child)) && plugKind(child) != PlugKind::Boolean)
                return false;
            record.values.push_back(numberToken(child, plugKind(child)));
        }
        break;
    case PlugKind::Text:
        record.type = "string";
        record.values.push_back(quoted(toStd(plug.asString())));
        break;
    case PlugKind::Matrix: {
        record.type = "matrix";
        const MMatrix matrix = MFnMatrixData(plug.asMObject()).matrix();
        for (unsigned row = 0; row < 4; ++row)
            for (unsigned column = 0; column < 4; ++column)
                record.values.push_back(word(formatNumber(matrix(row, column))));
        break;
    }
    case PlugKind::Numbers: {
        record.type = "doubleArray";
        const MDoubleArray values = MFnDoubleArrayData(plug.asMObject()).array();
        record.values.push_back(word(std::to_string(values.length())));
        for (unsigned i = 0; i < values.length(); ++i)
            record.values.push_back(word(formatNumber(values[i])));
        break;
    }
    case PlugKind::Integers: {
        record.type = "Int32Array";
        const MIntArray values = MFnIntArrayData(plug.asMObject()).array();
        record.values.push_back(word(std::to_string(values.length())));
        for (unsigned i = 0; i < values.length(); ++i)
            record.values.push_back(word(std::to_string(values[i])));
        break;
    }
    case PlugKind::Texts: {
        record.type = "stringArray";
        const MStringArray values = MFnStringArrayData(plug.asMObject()).array();
        record.values.push_back(word(std::to_string(values.length())));
        for (unsigned i = 0; i < values.length(); ++i)
            record.values.push_back(quoted(toStd(values[i])));
        break;
    }
    default:
        record.values.push_back(numberToken(plug, kind));
    }
    record.hasValue = true;
    return true;
}

bool textToValue(const std::vector<MPlug>& plugs, const AttrRecord& record, std::string& error) {
    Words words{record.values};
    for (const MPlug& plug : plugs)
        if (!readOne(plug, words, error))
            return false;
    if (words.more())
        error = "Too many values for attribute '" + toStd(plugs.front().partialName()) + "'";
    return !words.more();
}

void placeData(MPlug plug, const MObject& data) {
    const bool locked = plug.isLocked();
    if (locked)
        plug.setLocked(false);
    plug.setMObject(data);
    if (locked)
        plug.setLocked(true);
}

std::vector<MPlug> findPlugs(const MObject& node, const std::string& path) {
    std::vector<MPlug> plugs;
    std::size_t from = path.compare(0, 1, ".") == 0 ? 1 : 0;
    bool first = true;
    while (from <= path.size()) {
        const std::size_t dot = std::min(path.find('.', from), path.size());
        std::string name = path.substr(from, dot - from);
        from = dot + 1;
        long low = -1;
        long high = -1;
        const std::size_t bracket = name.find('[');
        if (bracket != std::string::npos) {
            char* end = nullptr;
            low = high = std::strtol(name.c_str() + bracket + 1, &end, 10);
            if (*end == ':')
                high = std::strtol(end + 1, &end, 10);
            constexpr long mostElements = 1 << 20;
            if (*end != ']' || low < 0 || high < low || high - low >= mostElements)
                return {};
            name.resize(bracket);
        }
        std::vector<MPlug> found;
        if (first) {
            MStatus status;
            const MPlug plug = MFnDependencyNode(node).findPlug(toMString(name), false, &status);
            if (status && !plug.isNull())
                found.push_back(plug);
        } else if (plugs.size() == 1 && plugs.front().isCompound()) {
            for (unsigned i = 0; i < plugs.front().numChildren(); ++i) {
                const MPlug child = plugs.front().child(i);
                const MFnAttribute attribute(child.attribute());
                if (toStd(attribute.name()) == name || toStd(attribute.shortName()) == name)
                    found.push_back(child);
            }
        }
        if (found.size() != 1)
            return {};
        plugs = std::move(found);
        if (low >= 0) {
            const MPlug array = plugs.front();
            if (!array.isArray())
                return {};
            plugs.clear();
            for (long i = low; i <= high; ++i)
                plugs.push_back(array.elementByLogicalIndex(unsigned(i)));
        }
        first = false;
    }
    return plugs;
}

} // namespace host
