#include "script/Operators.h"

#include <cmath>
#include <cstdint>

namespace host::script {

namespace {

const char* operatorText(Operator op) {
    static const char* const texts[] = {"=",  "+",  "-", "*",  "/", "%", "^",
                                        "==", "!=", "<", "<=", ">", ">="};
    return texts[static_cast<int>(op)];
}

[[noreturn]] void illegal(Operator op, Type type) {
    throw ScriptError(std::string("Illegal operation \"") + operatorText(op) +
                      "\" on data of type " + typeName(type) + ".");
}

// Integers wrap around as 32-bit ones.
int wrapped(std::int64_t v) {
    return static_cast<int>(static_cast<std::uint32_t>(v));
}

Value integerOperation(Operator op, std::int64_t a, std::int64_t b) {
    switch (op) {
    case Operator::Add:
        return wrapped(a + b);
    case Operator::Subtract:
        return wrapped(a - b);
    case Operator::Multiply:
        return wrapped(a * b);
    case Operator::Divide:
        if (b == 0)
            throw ScriptError("Division by zero.");
        return wrapped(a / b);
    case Operator::Modulo:
        if (b == 0)
            throw ScriptError("Division by zero.");
        return wrapped(a % b);
    default:
        illegal(op, Type::Int);
    }
}

Value floatOperation(Operator op, double a, double b) {
    switch (op) {
    case Operator::Add:
        return a + b;
    case Operator::Subtract:
        return a - b;
    case Operator::Multiply:
        return a * b;
    case Operator::Divide:
        if (b == 0)
            throw ScriptError("Division by zero.");
        return a / b;
    case Operator::Modulo:
        if (b == 0)
            throw ScriptError("Division by zero.");
        return std::fmod(a, b);
    default:
        illegal(op, Type::Float);
    }
}

Value vectorOperation(Operator op, const Value& left, const Value& right) {
    const bool bothVectors = left.type() == Type::Vector && right.type() == Type::Vector;
    const Vec3 a = left.toVector(), b = right.toVector();
    switch (op) {
    case Operator::Add:
        return Vec3{a.x + b.x, a.y + b.y, a.z + b.z};
    case Operator::Subtract:
        return Vec3{a.x - b.x, a.y - b.y, a.z - b.z};
    case Operator::Multiply:
        if (bothVectors)
            return a.x * b.x + a.y * b.y + a.z * b.z;
        return Vec3{a.x * b.x, a.y * b.y, a.z * b.z};
    case Operator::Divide:
        if (b.x == 0 || b.y == 0 || b.z == 0)
            throw ScriptError("Division by zero.");
        return Vec3{a.x / b.x, a.y / b.y, a.z / b.z};
    case Operator::Cross:
        if (bothVectors)
            return Vec3{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
        break;
    default:
        break;
    }
    illegal(op, Type::Vector);
}

/// `factor` on the left or the right of a matrix: the same.
Value scaled(const MatrixValue& matrix, double factor) {
    MatrixValue product = matrix;
    for (double& cell : product.cells)
        cell *= factor;
    return product;
}

Value matrixProduct(const MatrixValue& a, const MatrixValue& b) {
    if (a.columns != b.rows)
        throw ScriptError("Matrices of " + std::to_string(a.columns) + " columns and " +
                          std::to_string(b.rows) + " rows cannot be multiplied.");
    MatrixValue product{a.rows, b.columns, {}};
    product.cells.resize(static_cast<std::size_t>(a.rows) * static_cast<std::size_t>(b.columns));
    auto cell = product.cells.begin();
    for (int row = 0; row < a.rows; ++row) {
        for (int column = 0; column < b.columns; ++column, ++cell) {
            for (int i = 0; i < a.columns; ++i)
                *cell += a.cells[static_cast<std::size_t>(row * a.columns + i)] *
                         b.cells[static_cast<std::size_t>(i * b.columns + column)];
        }
    }
    return product;
}

Value matrixOperation(Operator op, const Value& left, const Value& right) {
    const auto* a = left.getIf<MatrixValue>();
    const auto* b = right.getIf<MatrixValue>();
    if (op == Operator::Multiply) {
        if (a && b)
            return matrixProduct(*a, *b);
        const Value& factor = a ? right : left;
        if (factor.isNumber())
            return scaled(a ? *a : *b, factor.toFloat());
    }
    if (!a || !b || (op != Operator::Add && op != Operator::Subtract))
        illegal(op, Type::Matrix);
    if (a->rows != b->rows || a->columns != b->columns)
        throw ScriptError("Matrices of different sizes cannot be added or subtracted.");
    MatrixValue sum = *a;
    const double sign = op == Operator::Add ? 1 : -1;
    for (std::size_t i = 0; i < sum.cells.size(); ++i)
        sum.cells[i] += sign * b->cells[i];
    return sum;
}

template <class T> bool compared(Operator op, const T& a, const T& b) {
    switch (op) {
    case Operator::Equal:
        return a == b;
    case Operator::NotEqual:
        return !(a == b);
    case Operator::Less:
        return a < b;
    case Operator::LessEqual:
        return a <= b;
    case Operator::Greater:
        return a > b;
    default:
        return a >= b;
    }
}

bool comparison(Operator op, const Value& left, const Value& right) {
    if (left.isString() && right.isString())
        return compared(op, left.get<std::string>(), right.get<std::string>());
    if (left.isString() || right.isString())
        return compared(op, left.toString(), right.toString());
    const bool vectors = left.type() == Type::Vector && right.type() == Type::Vector;
    if (vectors && (op == Operator::Equal || op == Operator::NotEqual))
        return (left.get<Vec3>() == right.get<Vec3>()) == (op == Operator::Equal);
    if (left.type() == Type::Int && right.type() == Type::Int)
        return compared(op, left.get<int>(), right.get<int>());
    return compared(op, left.toFloat(), right.toFloat()); // a vector compares by its length
}

bool isScalar(const Value& v) {
    return v.isNumber() || v.isString() || v.type() == Type::Vector;
}

void checkIndex(int index) {
    if (index < 0)
        throw ScriptError("Index value " + std::to_string(index) + " is out of range.");
    if (static_cast<std::size_t>(index) >= kMaximumElements)
        throw ScriptError("Index value " + std::to_string(index) + " is too large.");
}

template <class List, class Element> void store(Value& array, int index, Element element) {
    auto& list = array.get<List>();
    if (static_cast<std::size_t>(index) >= list.size())
        list.resize(static_cast<std::size_t>(index) + 1);
    list[static_cast<std::size_t>(index)] = std::move(element);
}

} // namespace

Value applyOperator(Operator op, const Value& left, const Value& right) {
    for (const Value* v : {&left, &right})
        if (!isScalar(*v) && v->type() != Type::Matrix)
            illegal(op, v->type());
    if (left.type() == Type::Matrix || right.type() == Type::Matrix)
        return matrixOperation(op, left, right);
    if (op >= Operator::Equal)
        return comparison(op, left, right);
    if (left.isString() || right.isString()) {
        if (op != Operator::Add)
            illegal(op, Type::String);
        std::string text = left.toString();
        const std::string tail = right.toString();
        if (text.size() + tail.size() > kMaximumStringBytes)
            throw ScriptError("The string is too long.");
        return text += tail;
    }
    if (left.type() == Type::Vector || right.type() == Type::Vector)
        return vectorOperation(op, left, right);
    if (left.type() == Type::Int && right.type() == Type::Int)
        return integerOperation(op, left.get<int>(), right.get<int>());
    return floatOperation(op, left.toFloat(), right.toFloat());
}

Value negated(const Value& value) {
    switch (value.type()) {
    case Type::Int:
        return wrapped(-static_cast<std::int64_t>(value.get<int>()));
    case Type::Float:
        return -value.get<double>();
    case Type::Vector: {
        const Vec3& v = value.get<Vec3>();
        return Vec3{-v.x, -v.y, -v.z};
    }
    default:
        illegal(Operator::Subtract, value.type());
    }
}

bool equal(const Value& left, const Value& right) {
    return applyOperator(Operator::Equal, left, right).toBool();
}

void setElement(Value& array, int index, const Value& value) {
    checkIndex(index);
    switch (array.type()) {
    case Type::IntArray:
        store<Ints>(array, index, value.toInt());
        return;
    case Type::FloatArray:
        store<Floats>(array, index, value.toFloat());
        return;
    case Type::StringArray:
        store<Strings>(array, index, value.toString());
        return;
    case Type::VectorArray:
        store<Vectors>(array, index, value.toVector());
        return;
    default:
        throw ScriptError("The variable is not an array.");
    }
}

Value elementAt(const Value& array, int index) {
    if (const auto* v = array.getIf<Vec3>()) {
        if (index < 0 || index > 2)
            throw ScriptError("Index value " + std::to_string(index) + " is out of range.");
        return index == 0 ? v->x : index == 1 ? v->y : v->z;
    }
    if (index < 0)
        checkIndex(index);
    return array.element(static_cast<std::size_t>(index));
}

void resizeArray(Value& array, int size) {
    if (size <= 0)
        return;
    checkIndex(size - 1);
    const auto n = static_cast<std::size_t>(size);
    switch (array.type()) {
    case Type::IntArray:
        array.get<Ints>().resize(n);
        return;
    case Type::FloatArray:
        array.get<Floats>().resize(n);
        return;
    case Type::StringArray:
        array.get<Strings>().resize(n);
        return;
    case Type::VectorArray:
        array.get<Vectors>().resize(n);
        return;
    default:
        return;
    }
}

} // namespace host::script
