#include "ScriptFixture.h"
#include "script/Value.h"

#include <random>

namespace {

using host::script::execute;
using host::script::ScriptError;

class Robustness : public ScriptTest {};

TEST_F(Robustness, RecursionEndsWithAnError) {
    const std::string endless = output("proc int f(int $n) { return f($n + 1); } f(1);");
    EXPECT_NE(endless.find("too deeply"), std::string::npos) << endless;
    const std::string viaEval = output("global proc e() { eval \"e\"; } e;");
    EXPECT_NE(viaEval.find("too deeply"), std::string::npos) << viaEval;
    EXPECT_EQ(output("print (1 + 1);"), "2");

    // A tree that is parsed still has to fit when it is evaluated and deleted.
    const auto repeated = [](const std::string& text, int n) {
        std::string out;
        for (int i = 0; i < n; ++i)
            out += text;
        return out;
    };
    for (const std::string& script :
         {repeated("(", 5000) + "1" + repeated(")", 5000), "1" + repeated(" + 1", 100000),
          repeated("{", 5000), repeated("if (1) ", 5000) + ";", repeated("a (`", 3000),
          repeated("-", 5000) + "1", repeated("{1,", 5000), repeated("$x[", 5000),
          repeated("1 ? ", 5000), "$x = " + repeated("$x = ", 5000) + "1", repeated("a(", 5000),
          repeated("<<", 5000), "print (" + repeated("\"a\" + ", 50000) + "\"\")"})
        EXPECT_THROW(execute(script), ScriptError) << script.substr(0, 20);
    // Deep but reasonable ones work.
    EXPECT_EQ(resultOf("1" + repeated(" + 1", 1000)), "int: 1001");
    EXPECT_EQ(resultOf("proc int d(int $n) { return $n ? d($n - 1) + 1 : 0; } d(400)"), "int: 400");
}

TEST_F(Robustness, LimitsHold) {
    EXPECT_EQ(output("string $s = \"xxxxxxxxxxxxxxxx\"; while (1) $s += $s;"),
              "line 1: The string is too long.");
    host::script::setStepLimit(10000);
    EXPECT_EQ(output("while (1) catch(`size 1`);"), "line 1: The script takes too many steps.");
    EXPECT_EQ(output("print fine;"), "fine");
    host::script::setStepLimit(0);
    host::script::registerCommand("stopMe", [](const host::script::CommandCall&) {
        host::script::interrupt();
        return host::script::Value();
    });
    EXPECT_EQ(output("while (1) catchQuiet(`stopMe`);"), "line 1: Interrupted.");
    EXPECT_EQ(output("print fine;"), "fine");
    host::script::unregisterCommand("stopMe");
}

TEST_F(Robustness, CommandsThatThrowAnythingAreErrors) {
    host::script::registerCommand("broken",
                                  [](const host::script::CommandCall&) -> host::script::Value {
                                      throw std::out_of_range("past the end");
                                  });
    EXPECT_EQ(output("\nbroken;"), "line 2: broken: past the end");
    host::script::unregisterCommand("broken");
}

TEST_F(Robustness, HostileStringsSurviveQuoting) {
    std::mt19937 random(20240711);
    const std::string alphabet = "\"\\\n\t\r;`$(){}[]<>/*-x é漢";
    for (int round = 0; round < 500; ++round) {
        std::string text;
        for (int i = 0; i < 24; ++i)
            text += alphabet[random() % alphabet.size()];
        const std::string literal = host::script::quoted(text);
        EXPECT_EQ(execute(literal).toString(), text);
        EXPECT_EQ(execute("substring " + literal + " 1 9999").toString(), text);
        // Quoted once more it is data inside a script inside a script.
        EXPECT_EQ(
            execute("eval(" + host::script::quoted("$gHostile = " + literal) + ")").toString(),
            text);
    }
}

// Words of the language thrown together: nothing may crash, hang, or break the interpreter.
TEST_F(Robustness, GarbageIsRefusedPolitely) {
    static const char* const words[] = {
        "int",       "string", "vector", "matrix",   "float",
        "$a",        "$b",     "$v",     "$s",       "[",
        "]",         "(",      ")",      "{",        "}",
        "<<",        ">>",     "`",      "\"x\"",    "\"",
        ";",         ";",      ";",      ",",        "=",
        "+=",        "++",     "--",     "-",        "*",
        "/",         "%",      "^",      "?",        ":",
        "==",        "<",      "&&",     "||",       "!",
        "if",        "else",   "for",    "in",       "while",
        "do",        "switch", "case",   "default",  "break",
        "continue",  "return", "proc",   "global",   "1",
        "0",         "-1",     "2.5",    "1e9",      "size",
        "print",     "catch",  "eval",   "tokenize", "clear",
        "f",         "f(",     "-flag",  "a|b.c",    ".x",
        "//",        "/*",     "\n",     "0x",       "stringArrayRemove",
        "substring", "match",  "sort",   "rand",     "{}",
        "true",
    };
    const unsigned seed = 7;
    std::mt19937 random(seed);
    host::script::setStepLimit(3000);
    host::script::unregisterCommand("print");
    for (int round = 0; round < 6000; ++round) {
        std::string script;
        const int length = 1 + static_cast<int>(random() % 40);
        for (int i = 0; i < length; ++i) {
            script += words[random() % std::size(words)];
            if (random() % 4)
                script += ' ';
        }
        try {
            execute(script);
        } catch (const ScriptError&) {
        }
        if (round % 50 == 0)
            host::script::resetInterpreter(), host::script::setStepLimit(3000);
        ASSERT_EQ(host::script::executionDepth(), 0) << "seed " << seed << ": " << script;
    }
    // Bytes rather than words.
    for (int round = 0; round < 3000; ++round) {
        std::string script =
            "int $a[] = {1, 2}; if (size($a) > 1) { string $s = `substring \"abc\" 1 2`; }";
        for (int i = 0; i < 3; ++i)
            script[random() % script.size()] = static_cast<char>(random() % 256);
        try {
            execute(script);
        } catch (const ScriptError&) {
        }
    }
    host::script::resetInterpreter();
    host::script::registerCoreCommands();
    EXPECT_EQ(output("print still;"), "still");
}

} // namespace
