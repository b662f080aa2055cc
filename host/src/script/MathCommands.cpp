#include "script/CallHelpers.h"
#include "script/LanguageCommands.h"
#include "script/Operators.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace host::script {

namespace {

constexpr double kPi = 3.14159265358979323846;

void registerFunction(const std::string& name, double (*function)(double)) {
    registerCommand(name, [function](const CommandCall& call) -> Value {
        requireArguments(call, 1);
        const double result = function(call.arguments[0].toFloat());
        if (!std::isfinite(result))
            throw ScriptError("Value out of range in call of " + call.name + ".");
        return result;
    });
}

void registerFunction(const std::string& name, double (*function)(double, double)) {
    registerCommand(name, [function](const CommandCall& call) -> Value {
        requireArguments(call, 2);
        const double result = function(call.arguments[0].toFloat(), call.arguments[1].toFloat());
        if (!std::isfinite(result))
            throw ScriptError("Value out of range in call of " + call.name + ".");
        return result;
    });
}

bool allInts(const CommandCall& call) {
    return std::all_of(call.arguments.begin(), call.arguments.end(),
                       [](const Value& v) { return v.type() == Type::Int; });
}

// Integers stay integers.
Value numeric(const CommandCall& call, double result) {
    if (allInts(call))
        return Value(result).toInt();
    return result;
}

Value absolute(const CommandCall& call) {
    requireArguments(call, 1);
    return numeric(call, std::fabs(call.arguments[0].toFloat()));
}

Value minimumOrMaximum(const CommandCall& call) {
    requireArguments(call, 2);
    const double a = call.arguments[0].toFloat(), b = call.arguments[1].toFloat();
    return numeric(call, call.name == "min" ? std::min(a, b) : std::max(a, b));
}

// (low, high, value)
Value clamp(const CommandCall& call) {
    requireArguments(call, 3);
    const double low = call.arguments[0].toFloat(), high = call.arguments[1].toFloat();
    return numeric(call, std::max(low, std::min(high, call.arguments[2].toFloat())));
}

Value sign(const CommandCall& call) {
    requireArguments(call, 1);
    const double v = call.arguments[0].toFloat();
    return v > 0 ? 1 : v < 0 ? -1 : 0;
}

// (start, end, value): how far the value is along the way.
Value step(const CommandCall& call) {
    requireArguments(call, 3);
    const double start = call.arguments[0].toFloat(), end = call.arguments[1].toFloat();
    const double v = call.arguments[2].toFloat();
    if (v <= start)
        return 0.0;
    if (v >= end)
        return 1.0;
    const double t = (v - start) / (end - start);
    return call.name == "linstep" ? t : t * t * (3 - 2 * t);
}

double length(const Vec3& v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

Value magnitude(const CommandCall& call) {
    requireArguments(call, 1);
    return length(call.arguments[0].toVector());
}

Value unit(const CommandCall& call) {
    requireArguments(call, 1);
    const Vec3 v = call.arguments[0].toVector();
    const double l = length(v);
    return l == 0 ? v : Vec3{v.x / l, v.y / l, v.z / l};
}

Value dotOrCross(const CommandCall& call) {
    requireArguments(call, 2);
    return applyOperator(call.name == "dot" ? Operator::Multiply : Operator::Cross,
                         Value(call.arguments[0].toVector()), Value(call.arguments[1].toVector()));
}

Value angle(const CommandCall& call) {
    requireArguments(call, 2);
    const Vec3 a = call.arguments[0].toVector(), b = call.arguments[1].toVector();
    const double lengths = length(a) * length(b);
    if (lengths == 0)
        return 0.0;
    return std::acos(std::clamp((a.x * b.x + a.y * b.y + a.z * b.z) / lengths, -1.0, 1.0));
}

// About an axis, by radians.
Value rotated(const CommandCall& call) {
    requireArguments(call, 3);
    const Vec3 v = call.arguments[0].toVector();
    Vec3 k = call.arguments[1].toVector();
    const double l = length(k), t = call.arguments[2].toFloat();
    if (l == 0)
        return v;
    k = {k.x / l, k.y / l, k.z / l};
    const double c = std::cos(t), s = std::sin(t),
                 d = (k.x * v.x + k.y * v.y + k.z * v.z) * (1 - c);
    return Vec3{v.x * c + (k.y * v.z - k.z * v.y) * s + k.x * d,
                v.y * c + (k.z * v.x - k.x * v.z) * s + k.y * d,
                v.z * c + (k.x * v.y - k.y * v.x) * s + k.z * d};
}

std::mt19937& generator() {
    static std::mt19937 engine;
    return engine;
}

Value seed(const CommandCall& call) {
    requireArguments(call, 1);
    const int value = call.arguments[0].toInt();
    generator().seed(static_cast<std::mt19937::result_type>(value));
    return value;
}

Value rand(const CommandCall& call) {
    requireArguments(call, 1, 2);
    const bool two = call.arguments.size() == 2;
    const auto between = [](double low, double high) {
        if (low == high)
            return low;
        return std::uniform_real_distribution<double>(std::min(low, high),
                                                      std::max(low, high))(generator());
    };
    if (call.arguments[0].type() == Type::Vector) {
        const Vec3 a = call.arguments[0].toVector();
        const Vec3 b = two ? call.arguments[1].toVector() : Vec3{};
        return Vec3{between(a.x, b.x), between(a.y, b.y), between(a.z, b.z)};
    }
    return between(call.arguments[0].toFloat(), two ? call.arguments[1].toFloat() : 0.0);
}

} // namespace

void registerMathCommands() {
    registerFunction("ceil", std::ceil);
    registerFunction("floor", std::floor);
    registerFunction("trunc", std::trunc);
    registerFunction("sqrt", std::sqrt);
    registerFunction("exp", std::exp);
    registerFunction("log", std::log);
    registerFunction("log10", std::log10);
    registerFunction("sin", std::sin);
    registerFunction("cos", std::cos);
    registerFunction("tan", std::tan);
    registerFunction("asin", std::asin);
    registerFunction("acos", std::acos);
    registerFunction("atan", std::atan);
    registerFunction("deg_to_rad", [](double v) { return v * kPi / 180; });
    registerFunction("rad_to_deg", [](double v) { return v * 180 / kPi; });
    registerFunction("pow", std::pow);
    registerFunction("atan2", std::atan2);
    registerFunction("hypot", std::hypot);
    registerFunction("fmod", [](double a, double b) { return std::fmod(a, b); });
    registerCommand("abs", absolute);
    registerCommand("min", minimumOrMaximum);
    registerCommand("max", minimumOrMaximum);
    registerCommand("clamp", clamp);
    registerCommand("sign", sign);
    registerCommand("linstep", step);
    registerCommand("smoothstep", step);
    registerCommand("mag", magnitude);
    registerCommand("unit", unit);
    registerCommand("dot", dotOrCross);
    registerCommand("cross", dotOrCross);
    registerCommand("angle", angle);
    registerCommand("rot", rotated);
    registerCommand("seed", seed);
    registerCommand("rand", rand);
}

} // namespace host::script
