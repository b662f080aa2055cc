#include "ScriptFixture.h"
#include "script/Value.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

using host::script::Floats;
using host::script::formatFloat;
using host::script::Ints;
using host::script::MatrixValue;
using host::script::parseNumber;
using host::script::ScriptError;
using host::script::Strings;
using host::script::Type;
using host::script::typeName;
using host::script::Value;
using host::script::Vec3;
using host::script::Vectors;

class Values : public ScriptTest {};

const Type kTypes[] = {Type::None,        Type::Int,        Type::Float,    Type::String,
                       Type::Vector,      Type::Matrix,     Type::IntArray, Type::FloatArray,
                       Type::StringArray, Type::VectorArray};

TEST_F(Values, ConversionTable) {
    const Value samples[] = {Value(),       7,
                             2.9,           "4.5",
                             Vec3{1, 2, 2}, MatrixValue{1, 1, {5}},
                             Ints{1, 2},    Floats{1.5, 2.5, 3.5},
                             Strings{"a"},  Vectors{{1, 2, 3}}};
    // One row a source type, one column a wanted type; "-" where there is no conversion. None goes
    // to arrays as an empty one.
    const char* const expected[][10] = {
        {"", "-", "-", "-", "-", "-", "", "", "", ""},
        {"", "7", "7", "7", "<<7, 7, 7>>", "-", "-", "-", "-", "-"},
        {"", "2", "2.9", "2.9", "<<2.9, 2.9, 2.9>>", "-", "-", "-", "-", "-"},
        {"", "4", "4.5", "4.5", "-", "-", "-", "-", "-", "-"},
        {"", "3", "3", "1 2 2", "<<1, 2, 2>>", "-", "-", "1 2 2", "-", "-"},
        {"", "-", "-", "-", "-", "<<5>>", "-", "-", "-", "-"},
        {"", "-", "-", "-", "-", "-", "1 2", "1 2", "-", "-"},
        {"", "-", "-", "-", "<<1.5, 2.5, 3.5>>", "-", "1 2 3", "1.5 2.5 3.5", "-", "-"},
        {"", "-", "-", "-", "-", "-", "-", "-", "a", "-"},
        {"", "-", "-", "-", "-", "-", "-", "-", "-", "<<1, 2, 3>>"},
    };
    for (std::size_t from = 0; from < std::size(samples); ++from) {
        ASSERT_EQ(samples[from].type(), kTypes[from]);
        for (std::size_t to = 0; to < std::size(kTypes); ++to) {
            SCOPED_TRACE(std::string(typeName(kTypes[from])) + " to " + typeName(kTypes[to]));
            std::string got = "-";
            try {
                const Value converted = samples[from].convertedTo(kTypes[to]);
                got = converted.display();
                EXPECT_EQ(converted.type(), kTypes[to]);
            } catch (const ScriptError&) {
            }
            EXPECT_EQ(got, expected[from][to]);
        }
    }
    EXPECT_EQ(warnings, "");
}

TEST_F(Values, NumbersBeyondTheRangeAreHeld) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    EXPECT_EQ(Value(1e300).toInt(), kMax);
    EXPECT_EQ(Value(-1e300).toInt(), kMin);
    EXPECT_EQ(Value(std::nan("")).toInt(), 0);
    EXPECT_EQ(Value("99999999999").toInt(), kMax);
    EXPECT_EQ(resultOf("2147483647"), "int: 2147483647");
    EXPECT_EQ(resultOf("3000000000"), "float: 3000000000");
    EXPECT_EQ(resultOf("0xFFFFFFFF"), "int: -1");
    EXPECT_EQ(resultOf("abs -2147483648"), "int: 2147483647");
    EXPECT_EQ(resultOf("1e400"), "float: inf");
}

TEST_F(Values, TextIsANumberOnlyAsAWhole) {
    double v = -1;
    for (const char* text : {"", " ", "abc", "1a", "1 2", "inf", "nan", "-", "+", ".", "--1", "1e",
                             "1e999", "infinity", "0x", "é1"})
        EXPECT_FALSE(parseNumber(text, &v)) << text;
    EXPECT_EQ(v, -1);
    const std::pair<const char*, double> good[] = {{"0", 0},     {" 12 ", 12},  {"-.5", -.5},
                                                   {"+3", 3},    {"1e3", 1000}, {"2.", 2},
                                                   {"\t7\n", 7}, {"0x10", 16},  {"-0", 0}};
    for (const auto& [text, number] : good) {
        EXPECT_TRUE(parseNumber(text, &v)) << text;
        EXPECT_EQ(v, number) << text;
    }
    // What is read at the beginning counts, with a warning.
    EXPECT_EQ(Value("3.7 apples").toInt(), 3);
    EXPECT_EQ(Value("apples").toFloat(), 0);
    EXPECT_EQ(warnings, "Converting string \"3.7 apples\" to an int value of 3.7.\n"
                        "Converting string \"apples\" to a float value of 0.\n");
}

TEST_F(Values, TruthOfThings) {
    for (const Value& v : {Value(1), Value(-1), Value(0.25), Value("on"), Value("yes"),
                           Value("true"), Value("2"), Value(Vec3{0, 0, 1})})
        EXPECT_TRUE(v.toBool()) << v.display();
    for (const Value& v : {Value(0), Value(0.0), Value(""), Value("off"), Value("no"),
                           Value("false"), Value("0"), Value(Vec3{})})
        EXPECT_FALSE(v.toBool()) << v.display();
    EXPECT_EQ(warnings, "");
    EXPECT_THROW(Value(Ints{1}).toBool(), ScriptError);
    EXPECT_THROW(Value().toBool(), ScriptError);
}

TEST_F(Values, FloatsPrintShortAndReadBack) {
    const std::pair<double, const char*> rows[] = {{0, "0"},
                                                   {-0.0, "0"},
                                                   {1, "1"},
                                                   {0.1, "0.1"},
                                                   {-2.5, "-2.5"},
                                                   {1e10, "1e+10"},
                                                   {123456789, "123456789"},
                                                   {1e-5, "1e-05"},
                                                   {1.0 / 3, "0.3333333333"}};
    for (const auto& [number, text] : rows)
        EXPECT_EQ(formatFloat(number), text);
    std::mt19937 random(99);
    std::uniform_real_distribution<double> distribution(-1e6, 1e6);
    for (int i = 0; i < 200; ++i) {
        const double number = distribution(random);
        const double back = host::script::execute(formatFloat(number)).toFloat();
        EXPECT_NEAR(back, number, std::fabs(number) * 1e-9);
    }
}

TEST_F(Values, ListsAndElements) {
    EXPECT_EQ(Value(3).toInts(), Ints{3});
    EXPECT_EQ(Value().toStrings(), Strings{});
    EXPECT_EQ(Value(Ints{1, 2}).toStrings(), (Strings{"1", "2"}));
    EXPECT_EQ(Value(Strings{"1", "2.5"}).toFloats(), (Floats{1, 2.5}));
    EXPECT_EQ(Value(Strings{"x"}).element(5).toString(), "");
    EXPECT_EQ(Value(Vectors{}).element(0).type(), Type::Vector);
    EXPECT_THROW(Value(1).element(0), ScriptError);
    for (const Type type : kTypes) {
        SCOPED_TRACE("type " + std::to_string(static_cast<int>(type)));
        EXPECT_EQ(Value::ofType(type).type(), type);
        if (host::script::isArray(type)) {
            EXPECT_EQ(host::script::arrayType(host::script::elementType(type)), type);
            EXPECT_EQ(Value::ofType(type).size(), 0u);
        }
    }
}

} // namespace
