#include "ScriptFixture.h"
#include "script/Syntax.h"

#include <random>

namespace {

using host::script::ArgKind;
using host::script::FlagSyntax;
using host::script::ObjectFormat;
using host::script::ScriptError;
using host::script::SyntaxData;
using host::script::Value;

class Parsing : public ScriptTest {};

TEST_F(Parsing, ErrorsAreFoundWhereTheyStand) {
    const struct {
        const char* script;
        int line;
        const char* message;
    } rows[] = {
        {"int $a = ;", 1, "Syntax error"},
        {"int $a\n= 1 2;", 2, "Syntax error"},
        {"\n\nif (1 {\n}", 3, "Syntax error"},
        {"/* a\nb\nc */ )", 3, "Syntax error"},
        {"proc f()\n{\n  print 1\n}\n", 4, "Syntax error"},
        {"print \"a\\\nb\";", 1, "Unterminated string."},
        {"$x = \"abc", 1, "Unterminated string."},
        {"\n$x = 1;\n$y += 1;", 3, "\"$y\" is an undeclared variable."},
        {"proc f(int $a)\n{\n  int $a = 1;\n  { print $b; }\n}", 4,
         "\"$b\" is an undeclared variable."},
        {"proc f(int $a, string $a) {}", 1, "Invalid redeclaration of variable \"$a\"."},
        {"proc int f() {\n return;\n}", 2, "Procedure \"f\" must return a value of type int."},
        {"for ($i in {1})\n{\n  case 1: ;\n}", 3, "Syntax error"},
        {"switch (1) { default: ; default: ; }", 1, "Syntax error"},
        {"while (1)\n  global proc f() {}", 2, "Syntax error"},
        {"{\n global proc f() {}\n}", 2, "Syntax error"},
        {"matrix $m[2];", 1, "Syntax error"},
        {"int $a[][];", 1, "Syntax error"},
        {"$a.b = 1;", 1, "\"$a\" is an undeclared variable."},
        {"<<1, 2; 3>>;", 1, "Rows of a matrix must have the same length."},
        {"proc if() {}", 1, "Syntax error"},
        {"12abc;", 1, "Syntax error"},
        {"`print 1;", 1, "Syntax error"},
        {"print `;", 1, "Syntax error"},
        {"print a,b;", 1, "Syntax error"},
        {"int;", 1, "Syntax error"},
        {"@;", 1, "Syntax error"},
    };
    for (const auto& row : rows) {
        try {
            host::script::execute(row.script, "p.mel");
            ADD_FAILURE() << "no error: " << row.script;
        } catch (const ScriptError& error) {
            EXPECT_EQ(error.line, row.line) << row.script;
            EXPECT_STREQ(error.what(), row.message) << row.script;
            EXPECT_EQ(error.file, "p.mel");
        }
    }
}

TEST_F(Parsing, CommandWords) {
    host::script::registerCommand("words", [](const host::script::CommandCall& call) -> Value {
        std::string text;
        for (const Value& argument : call.arguments)
            text += std::string(typeName(argument.type())) + ":" + argument.display() + " ";
        return text;
    });
    const char* const rows[][2] = {
        {"words a b.c |d|e ns:f *g* h? i[0] j.vtx[1:3]",
         "string:a string:b.c string:|d|e string:ns:f string:*g* string:h? string:i[0] "
         "string:j.vtx[1:3] "},
        {"words 1 -1 1.5 -.5 1e3 1e-3 2. +4 1:10 0x10",
         "int:1 int:-1 float:1.5 float:-0.5 float:1000 float:0.001 float:2 int:4 string:1:10 "
         "int:16 "},
        {"words on off true no yes false ON", "int:1 int:0 int:1 int:0 int:1 int:0 string:ON "},
        {"words -f -flag -q1 \"-g h\" -1a", "string:-f string:-flag string:-q1 string:-g h "
                                            "string:-1a "},
        {"words {1, 2} {\"a\"} <<1, 2, 3>> (1 < 2) `size abc`",
         "int[]:1 2 string[]:a vector:<<1, 2, 3>> int:1 int:3 "},
        {"string $s = \"x\"; int $n[] = {4, 5}; words $s $n $n[1] -$n[0] (-$n[0])",
         "string:x int[]:4 5 int:5 int:-4 int:-4 "},
        {"words(\"a\", -1, -2.5)", "string:a int:-1 float:-2.5 "},
        {"words (\"a\") (\"b\")", "string:a string:b "},
        {"words (\"a\" + \"b\") -c", "string:ab string:-c "},
        {"words ()", ""},
        {"words \"q\"\"r\"s", "string:q string:r string:s "},
        {"words //c\n x /* y */ z", "string:x string:z "},
        {"words 12000000000 -12000000000", "float:1.2e+10 float:-1.2e+10 "},
        {"words in case int if", "string:in string:case string:int string:if "},
    };
    for (const auto& row : rows) {
        host::script::resetInterpreter();
        EXPECT_EQ(resultOf(row[0]), std::string("string: ") + row[1]) << row[0];
    }
    host::script::unregisterCommand("words");
}

/// Random calls against a random syntax: what was put together must come out again.
TEST_F(Parsing, RandomCallsAreTakenApartAgain) {
    const unsigned seed = 31337;
    std::mt19937 random(seed);
    const auto pick = [&random](std::size_t n) { return random() % n; };
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE("seed " + std::to_string(seed) + " round " + std::to_string(round));
        SyntaxData syntax;
        const std::size_t flags = 1 + pick(5);
        for (std::size_t i = 0; i < flags; ++i) {
            FlagSyntax flag;
            flag.shortName = std::string("-") + static_cast<char>('f' + i);
            flag.longName = flag.shortName + "LongName";
            for (std::size_t n = pick(4); n > 0; --n)
                flag.arguments.push_back(
                    std::array{ArgKind::Int, ArgKind::String, ArgKind::Float}[pick(3)]);
            flag.multiUse = pick(2);
            syntax.flags.push_back(flag);
        }
        syntax.objectFormat = ObjectFormat::Text;
        syntax.canEdit = true;

        std::vector<Value> call;
        std::vector<std::size_t> used;
        std::vector<std::string> expected, objects;
        const bool edit = pick(3) == 0;
        const std::size_t editAt = pick(3);
        for (std::size_t part = 0; part < 6; ++part) {
            if (edit && part == editAt)
                call.push_back("-edit");
            const std::size_t which = pick(flags);
            const FlagSyntax& flag = syntax.flags[which];
            const bool again = std::find(used.begin(), used.end(), which) != used.end();
            if (pick(3) == 0 || (again && !flag.multiUse)) {
                objects.push_back("obj" + std::to_string(pick(100)));
                call.push_back(objects.back());
                continue;
            }
            used.push_back(which);
            call.push_back(pick(2) ? flag.shortName : flag.longName);
            std::string line = flag.shortName;
            for (const ArgKind kind : flag.arguments) {
                if (kind == ArgKind::Int)
                    call.push_back(static_cast<int>(pick(200)) - 100);
                else if (kind == ArgKind::Float)
                    call.push_back(static_cast<double>(pick(100)) / 8);
                else
                    call.push_back(pick(4) ? "text " + std::to_string(pick(9)) : "-gLongName");
                line += " " + call.back().toString();
            }
            expected.push_back(line);
        }
        if (edit && call.empty())
            call.push_back("-edit");

        const auto parsed = host::script::parseArguments(syntax, call);
        std::vector<std::string> got, gotObjects;
        for (const auto& use : parsed.uses) {
            std::string line = syntax.flags[use.flagIndex].shortName;
            for (std::size_t i = 0; i < use.arguments.size(); ++i) {
                line += " " + use.arguments[i].toString();
                EXPECT_EQ(call[use.positions[i]].toString(), use.arguments[i].toString());
            }
            got.push_back(line);
        }
        for (const Value& object : parsed.objects)
            gotObjects.push_back(object.toString());
        ASSERT_EQ(got, expected);
        ASSERT_EQ(gotObjects, objects);
        ASSERT_EQ(parsed.edit, edit);

        // One word that is no flag of the syntax spoils the call, wherever it stands unquoted.
        call.push_back("-zz");
        ASSERT_THROW(host::script::parseArguments(syntax, call), ScriptError);
    }
}

} // namespace
