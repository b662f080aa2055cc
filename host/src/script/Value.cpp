#include "script/Value.h"

#include "foundation/Report.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace host::script {

namespace {

constexpr Type kElementTypes[] = {Type::Int, Type::Float, Type::String, Type::Vector};

[[noreturn]] void cannotConvert(Type from, Type to) {
    throw ScriptError(std::string("Cannot convert data of type ") + typeName(from) + " to type " +
                      typeName(to) + ".");
}

int truncated(double v) {
    if (std::isnan(v))
        return 0;
    if (v >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (v <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return static_cast<int>(v);
}

double numberAtStart(const std::string& text, const char* typeWanted) {
    double value = 0;
    if (parseNumber(text, &value))
        return value;
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || !std::isfinite(value))
        value = 0;
    report::warning("Converting string \"" + text + "\" to " + typeWanted + " value of " +
                    formatFloat(value) + ".");
    return value;
}

double magnitude(const Vec3& v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

std::string vectorText(const Vec3& v) {
    return "<<" + formatFloat(v.x) + ", " + formatFloat(v.y) + ", " + formatFloat(v.z) + ">>";
}

std::string matrixText(const MatrixValue& m) {
    std::string text = "<<";
    for (int r = 0; r < m.rows; ++r) {
        for (int c = 0; c < m.columns; ++c) {
            if (c)
                text += ", ";
            text += formatFloat(m.cells[static_cast<std::size_t>(r * m.columns + c)]);
        }
        text += r + 1 < m.rows ? "; " : "";
    }
    return text + ">>";
}

template <class Out, class Convert> Out listOf(const Value& v, Convert convert) {
    Out out;
    if (v.isNone())
        return out;
    if (!v.isArray()) {
        out.push_back(convert(v));
        return out;
    }
    out.reserve(v.size());
    for (std::size_t i = 0; i < v.size(); ++i)
        out.push_back(convert(v.element(i)));
    return out;
}

} // namespace

const char* typeName(Type type) {
    switch (type) {
    case Type::None:
        return "void";
    case Type::Int:
        return "int";
    case Type::Float:
        return "float";
    case Type::String:
        return "string";
    case Type::Vector:
        return "vector";
    case Type::Matrix:
        return "matrix";
    case Type::IntArray:
        return "int[]";
    case Type::FloatArray:
        return "float[]";
    case Type::StringArray:
        return "string[]";
    case Type::VectorArray:
        return "vector[]";
    }
    return "";
}

bool isArray(Type type) {
    return type >= Type::IntArray;
}

Type elementType(Type type) {
    return isArray(type) ? kElementTypes[static_cast<int>(type) - static_cast<int>(Type::IntArray)]
                         : type;
}

Type arrayType(Type type) {
    switch (type) {
    case Type::Int:
        return Type::IntArray;
    case Type::Float:
        return Type::FloatArray;
    case Type::String:
        return Type::StringArray;
    case Type::Vector:
        return Type::VectorArray;
    default:
        return Type::None;
    }
}

std::string ScriptError::text() const {
    std::string where;
    if (!file.empty())
        where = "file: " + file + " ";
    if (line > 0)
        where += "line " + std::to_string(line) + ": ";
    return where + what();
}

Value Value::ofType(Type type) {
    switch (type) {
    case Type::None:
        return {};
    case Type::Int:
        return 0;
    case Type::Float:
        return 0.0;
    case Type::String:
        return std::string();
    case Type::Vector:
        return Vec3{};
    case Type::Matrix:
        return MatrixValue{};
    case Type::IntArray:
        return Ints{};
    case Type::FloatArray:
        return Floats{};
    case Type::StringArray:
        return Strings{};
    case Type::VectorArray:
        return Vectors{};
    }
    return {};
}

std::size_t Value::size() const {
    switch (type()) {
    case Type::None:
        return 0;
    case Type::IntArray:
        return get<Ints>().size();
    case Type::FloatArray:
        return get<Floats>().size();
    case Type::StringArray:
        return get<Strings>().size();
    case Type::VectorArray:
        return get<Vectors>().size();
    default:
        return 1;
    }
}

int Value::toInt() const {
    switch (type()) {
    case Type::Int:
        return get<int>();
    case Type::Float:
        return truncated(get<double>());
    case Type::String:
        return truncated(numberAtStart(get<std::string>(), "an int"));
    case Type::Vector:
        return truncated(magnitude(get<Vec3>()));
    default:
        cannotConvert(type(), Type::Int);
    }
}

double Value::toFloat() const {
    switch (type()) {
    case Type::Int:
        return get<int>();
    case Type::Float:
        return get<double>();
    case Type::String:
        return numberAtStart(get<std::string>(), "a float");
    case Type::Vector:
        return magnitude(get<Vec3>());
    default:
        cannotConvert(type(), Type::Float);
    }
}

std::string Value::toString() const {
    switch (type()) {
    case Type::Int:
        return std::to_string(get<int>());
    case Type::Float:
        return formatFloat(get<double>());
    case Type::String:
        return get<std::string>();
    case Type::Vector: {
        const Vec3& v = get<Vec3>();
        return formatFloat(v.x) + " " + formatFloat(v.y) + " " + formatFloat(v.z);
    }
    default:
        cannotConvert(type(), Type::String);
    }
}

Vec3 Value::toVector() const {
    switch (type()) {
    case Type::Vector:
        return get<Vec3>();
    case Type::Int:
    case Type::Float: {
        const double v = toFloat();
        return {v, v, v};
    }
    case Type::FloatArray:
    case Type::IntArray: {
        const Floats v = toFloats();
        if (v.size() == 3)
            return {v[0], v[1], v[2]};
        break;
    }
    default:
        break;
    }
    cannotConvert(type(), Type::Vector);
}

bool Value::toBool() const {
    if (const auto* text = getIf<std::string>()) {
        if (*text == "true" || *text == "on" || *text == "yes")
            return true;
        if (*text == "false" || *text == "off" || *text == "no" || text->empty())
            return false;
    }
    return toFloat() != 0;
}

Value Value::convertedTo(Type wanted) const {
    if (type() == wanted)
        return *this;
    switch (wanted) {
    case Type::None:
        return {};
    case Type::Int:
        return toInt();
    case Type::Float:
        return toFloat();
    case Type::String:
        return toString();
    case Type::Vector:
        return toVector();
    case Type::Matrix:
        break;
    case Type::IntArray:
        if (type() == Type::FloatArray || isNone())
            return toInts();
        break;
    case Type::FloatArray:
        if (type() == Type::IntArray || isNone())
            return toFloats();
        if (const auto* v = getIf<Vec3>())
            return Floats{v->x, v->y, v->z};
        break;
    case Type::StringArray:
    case Type::VectorArray:
        if (isNone())
            return ofType(wanted);
        // An empty literal {} has no element type of its own.
        if (isArray() && size() == 0)
            return ofType(wanted);
        break;
    }
    if (isArray() && script::isArray(wanted) && size() == 0)
        return ofType(wanted);
    cannotConvert(type(), wanted);
}

Ints Value::toInts() const {
    return listOf<Ints>(*this, [](const Value& v) { return v.toInt(); });
}

Floats Value::toFloats() const {
    return listOf<Floats>(*this, [](const Value& v) { return v.toFloat(); });
}

Strings Value::toStrings() const {
    return listOf<Strings>(*this, [](const Value& v) { return v.toString(); });
}

std::string Value::display() const {
    if (isNone())
        return {};
    if (const auto* v = getIf<Vec3>())
        return vectorText(*v);
    if (const auto* m = getIf<MatrixValue>())
        return matrixText(*m);
    if (!isArray())
        return toString();
    std::string text;
    for (std::size_t i = 0; i < size(); ++i) {
        if (i)
            text += ' ';
        text += element(i).display();
    }
    return text;
}

Value Value::element(std::size_t index) const {
    const auto at = [index](const auto& list, Type type) -> Value {
        return index < list.size() ? Value(list[index]) : ofType(type);
    };
    switch (type()) {
    case Type::IntArray:
        return at(get<Ints>(), Type::Int);
    case Type::FloatArray:
        return at(get<Floats>(), Type::Float);
    case Type::StringArray:
        return at(get<Strings>(), Type::String);
    case Type::VectorArray:
        return at(get<Vectors>(), Type::Vector);
    default:
        throw ScriptError("The variable is not an array.");
    }
}

std::string formatFloat(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value == 0 ? 0.0 : value);
    return text;
}

bool parseNumber(const std::string& text, double* value) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    std::size_t first = 0, last = text.size();
    while (first < last && isBlank(text[first]))
        ++first;
    while (last > first && isBlank(text[last - 1]))
        --last;
    if (first == last)
        return false;
    const std::string trimmed = text.substr(first, last - first);
    // strtod also takes "inf" and "nan", which are words here.
    std::size_t i = trimmed[0] == '-' || trimmed[0] == '+' ? 1 : 0;
    if (i >= trimmed.size() || !((trimmed[i] >= '0' && trimmed[i] <= '9') || trimmed[i] == '.'))
        return false;
    char* end = nullptr;
    const double v = std::strtod(trimmed.c_str(), &end);
    if (end != trimmed.c_str() + trimmed.size() || !std::isfinite(v))
        return false;
    *value = v;
    return true;
}

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
    return out + '"';
}

} // namespace host::script
