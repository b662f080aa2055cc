#include "ScriptFixture.h"

#include <cstdint>
#include <random>

namespace {

using host::script::execute;
using host::script::Value;

/// A random integer expression as text, with only the parentheses that precedence asks for, and
/// the value a plain recursive evaluation gives it.
struct Expression {
    std::string text;
    std::int32_t value = 0;
    int precedence = 9; ///< of the outermost operator; 9 for what needs no parentheses
    bool valid = true;  ///< false: divides by zero somewhere that is evaluated
};

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    Expression make(int depth) {
        if (depth == 0 || pick(6) == 0)
            return leaf();
        switch (pick(8)) {
        case 0:
            return negation(make(depth - 1));
        case 1:
            return inverted(make(depth - 1));
        case 2:
            return choice(make(depth - 1), make(depth - 1), make(depth - 1));
        default:
            return binary(make(depth - 1), make(depth - 1));
        }
    }

private:
    int pick(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    Expression leaf() {
        static const std::int32_t numbers[] = {0, 1, 2, 3, 7, 100, 65536, 2147483647};
        Expression e;
        e.value = numbers[pick(8)];
        e.text = std::to_string(e.value);
        return e;
    }

    static std::string wrapped(const Expression& e, int minimum) {
        return e.precedence < minimum ? "(" + e.text + ")" : e.text;
    }

    Expression negation(const Expression& inner) {
        Expression e;
        e.precedence = 8;
        e.text = "- " + wrapped(inner, 8);
        e.value = static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(inner.value));
        e.valid = inner.valid;
        return e;
    }

    Expression inverted(const Expression& inner) {
        Expression e;
        e.precedence = 8;
        e.text = "!" + wrapped(inner, 8);
        e.value = !inner.value;
        e.valid = inner.valid;
        return e;
    }

    Expression choice(const Expression& condition, const Expression& a, const Expression& b) {
        Expression e;
        e.precedence = 0;
        e.text = wrapped(condition, 1) + " ? " + a.text + " : " + b.text;
        e.value = condition.value ? a.value : b.value;
        e.valid = condition.valid && (condition.value ? a.valid : b.valid);
        return e;
    }

    Expression binary(const Expression& a, const Expression& b) {
        static const struct {
            const char* text;
            int precedence;
        } operators[] = {{"||", 1}, {"&&", 2}, {"==", 3}, {"!=", 3}, {"<", 4}, {"<=", 4}, {">", 4},
                         {">=", 4}, {"+", 5},  {"-", 5},  {"*", 6},  {"/", 6}, {"%", 6}};
        const int which = pick(static_cast<int>(std::size(operators)));
        Expression e;
        e.precedence = operators[which].precedence;
        const std::string gap = pick(2) ? " " : "\n";
        e.text = wrapped(a, e.precedence) + gap + operators[which].text + " " +
                 wrapped(b, e.precedence + 1);
        const std::int64_t x = a.value, y = b.value;
        std::int64_t result = 0;
        e.valid = a.valid && b.valid;
        switch (which) {
        case 0:
            result = x || y;
            e.valid = a.valid && (x || b.valid);
            break;
        case 1:
            result = x && y;
            e.valid = a.valid && (!x || b.valid);
            break;
        case 2:
            result = x == y;
            break;
        case 3:
            result = x != y;
            break;
        case 4:
            result = x < y;
            break;
        case 5:
            result = x <= y;
            break;
        case 6:
            result = x > y;
            break;
        case 7:
            result = x >= y;
            break;
        case 8:
            result = x + y;
            break;
        case 9:
            result = x - y;
            break;
        case 10:
            result = x * y;
            break;
        default:
            if (y == 0)
                e.valid = false;
            else
                result = which == 11 ? x / y : x % y;
        }
        e.value = static_cast<std::int32_t>(static_cast<std::uint32_t>(result));
        return e;
    }

    std::mt19937 random_;
};

class Expressions : public ScriptTest {};

TEST_F(Expressions, RandomOnesMatchAReference) {
    const unsigned seed = 4711;
    Generator generator(seed);
    int evaluated = 0;
    for (int round = 0; round < 3000; ++round) {
        const Expression e = generator.make(6);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + e.text);
        if (!e.valid) {
            EXPECT_THROW(execute(e.text), host::script::ScriptError);
            continue;
        }
        ++evaluated;
        ASSERT_EQ(execute(e.text).toInt(), e.value);
        // The same as a command's argument, in a procedure, and behind a compound assignment.
        if (round % 10 == 0) {
            ASSERT_EQ(execute("abs (0 + (" + e.text + "))").toInt(),
                      e.value == INT32_MIN ? INT32_MAX : std::abs(e.value));
            ASSERT_EQ(execute("proc int calc() { int $r; $r += " + e.text + "; return $r; } calc")
                          .toInt(),
                      e.value);
        }
    }
    EXPECT_GT(evaluated, 1500);
}

TEST_F(Expressions, OrderOfEvaluationAndShortCuts) {
    execute("global string $gTrace; global proc int t(int $v) { global string $gTrace; "
            "$gTrace += $v; return $v; }");
    const char* const rows[][2] = {
        {"t(0) && t(1)", "0"},           {"t(1) && t(2)", "12"},
        {"t(3) || t(4)", "3"},           {"t(0) || t(4)", "04"},
        {"t(1) ? t(2) : t(3)", "12"},    {"t(0) ? t(2) : t(3)", "03"},
        {"t(1) + t(2) * t(3)", "123"},   {"{t(1), t(2)}", "12"},
        {"<<t(1), t(2), t(3)>>", "123"}, {"max(t(1), t(2))", "12"},
        {"max `t 1` (t(2))", "12"},
    };
    for (const auto& row : rows) {
        host::script::setGlobalVariable("gTrace", "");
        const std::string script = row[0];
        // An array literal cannot begin a statement, that would be a block.
        ASSERT_NO_THROW(execute(script[0] == '{' ? "$ignored = " + script : script)) << script;
        EXPECT_EQ(host::script::globalVariable("gTrace").toString(), row[1]) << script;
    }
}

TEST_F(Expressions, BlanksAndCommentsMayStandAnywhere) {
    EXPECT_EQ(resultOf("1/* one */+// plus\n 2 /**/ * /* a * b */ 3"), "int: 7");
    EXPECT_EQ(resultOf("// only a comment"), "void: ");
    EXPECT_EQ(resultOf("/* open"), "error: line 1: Unterminated comment.");
    EXPECT_EQ(resultOf("$s = \"// no /* comment */\"; size($s)"), "int: 19");
    EXPECT_EQ(resultOf(" \t\r\n\f "), "void: ");
    EXPECT_EQ(resultOf("int\n$many\n=\n5\n;\n$many\n+\n1\n"), "int: 6");
    EXPECT_EQ(output("print// a comment ends the word\n\"x\";print/*y*/\"z\";"), "xz");
    EXPECT_EQ(resultOf("1;2;;;3;"), "int: 3");
    EXPECT_EQ(resultOf("if (1) { 5; }"), "void: ");
}

} // namespace
