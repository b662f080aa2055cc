#include "ScriptFixture.h"

#include <filesystem>
#include <fstream>

namespace {

using host::script::execute;
using host::script::Value;

struct Row {
    const char* script;
    const char* result;
};

class Language : public ScriptTest {
protected:
    template <std::size_t N> void check(const Row (&rows)[N]) {
        for (const Row& row : rows) {
            host::script::resetInterpreter();
            EXPECT_EQ(resultOf(row.script), row.result) << row.script;
        }
    }
};

TEST_F(Language, OperatorsAndConversions) {
    const Row rows[] = {
        {"2 + 3 * 4 - 1", "int: 13"},
        {"(2 + 3) * -4", "int: -20"},
        {"7 / 2", "int: 3"},
        {"7 / 2.0", "float: 3.5"},
        {"-7 % 3", "int: -1"},
        {"5.5 % 2", "float: 1.5"},
        {"1 < 2 && 2 <= 2 && !(3 > 4)", "int: 1"},
        {"0 || 0 && 1", "int: 0"},
        {"1 ? 2 : 0 ? 3 : 4", "int: 2"},
        {"0 ? 2 : 0 ? 3 : 4", "int: 4"},
        {"1 == 1.0", "int: 1"},
        {"\"b\" > \"a\"", "int: 1"},
        {"\"5\" == 5", "int: 1"},
        {"\"a\" + 1 + 2.5 + true", "string: a12.51"},
        {"1 + 2 + \"a\"", "string: 3a"},
        {"2147483647 + 1", "int: -2147483648"},
        {"-2147483647 - 1", "int: -2147483648"},
        {"int $low = -2147483647 - 1; $low / -1", "int: -2147483648"},
        {"int $low = -2147483647 - 1; $low % -1", "int: 0"},
        {"0x1F", "int: 31"},
        {"1e3 + .5", "float: 1000.5"},
        {"(int)3.99", "int: 3"},
        {"(int)-3.99 + int(2.5)", "int: -1"},
        {"(string)4 + (float)\"2.5\"", "string: 42.5"},
        {"int $i = \"12\"; $i", "int: 12"},
        {"int $i = 3.9; $i", "int: 3"},
        {"float $f = 1; $f / 2", "float: 0.5"},
        {"string $s = 0.1; $s", "string: 0.1"},
        {"int $i = 5; $i += 2; $i *= 3; $i -= 1; $i /= 4; $i %= 3; $i", "int: 2"},
        {"int $i = 5; int $j = $i++ + ++$i; $j + \",\" + $i--", "string: 12,7"},
        {"string $s = \"a\"; $s += \"b\"; $s += 1; $s", "string: ab1"},
        {"<<1, 2, 3>> + <<1, 1, 1>> * 2", "vector: <<3, 4, 5>>"},
        {"<<1, 2, 3>> * <<4, 5, 6>>", "float: 32"},
        {"<<1, 0, 0>> ^ <<0, 1, 0>>", "vector: <<0, 0, 1>>"},
        {"vector $v = <<1, 4, 2>>; $v.z * $v.y", "float: 8"},
        {"vector $v; $v.y = 4", "error: line 1: Syntax error"},
        {"vector $v; $v.y += 4", "error: line 1: Syntax error"},
        {"vector $v; $v.y++", "error: line 1: Syntax error"},
        {"vector $v; ++$v.y", "error: line 1: Syntax error"},
        {"$new.y = 4", "error: line 1: Syntax error"},
        {"vector $v; $v[1] = 4", "error: line 1: The variable is not an array."},
        {"matrix $m[2][2] = <<1, 2; 3, 4>>; $m[0][1] = 7; $m[0][1] + $m[1][0]", "float: 10"},
        {"matrix $a[2][3] = <<1, 2, 3; 4, 5, 6>>; matrix $b[3][1] = <<7; 8; 9>>; $c = $a * $b; $c",
         "matrix: <<50; 122>>"},
        {"matrix $a[1][2] = <<1, 2>>; $a + $a * 2 - 0.5 * $a", "matrix: <<2.5, 5>>"},
        {"matrix $a[1][2]; $a * $a",
         "error: line 1: Matrices of 2 columns and 1 rows cannot be multiplied."},
        {"matrix $a[1][2]; matrix $b[2][1]; $a + $b",
         "error: line 1: Matrices of different sizes cannot be added or subtracted."},
        {"matrix $a[1][2]; $a == $a",
         "error: line 1: Illegal operation \"==\" on data of type matrix."},
        {"matrix $a[1][2]; \"m\" + $a",
         "error: line 1: Illegal operation \"+\" on data of type matrix."},
        {"1 / 0", "error: line 1: Division by zero."},
        {"1.0 % 0", "error: line 1: Division by zero."},
        {"\"a\" * 2", "error: line 1: Illegal operation \"*\" on data of type string."},
        {"2 ^ 3", "error: line 1: Illegal operation \"^\" on data of type int."},
    };
    check(rows);
}

TEST_F(Language, ArraysGrowConvertAndAreShared) {
    const Row rows[] = {
        {"int $a[]; $a[3] = 7; $a", "int[]: 0 0 0 7"},
        {"int $a[] = {1, 2}; $a [1] = 5; $a /* */ [ 0 ] + $a\n[1]", "int: 6"},
        {"string $a[2]; size($a)", "int: 2"},
        {"string $a[] = {\"x\", \"y\"}; $a[size($a)] = \"z\"; $a", "string[]: x y z"},
        {"$a[1] = \"b\"; $a[9]", "string: "},
        {"float $f[] = {1, 2.5}; $f", "float[]: 1 2.5"},
        {"int $i[] = {1, 2}; float $f[] = $i; $f[0] = .5; $i", "int[]: 1 2"},
        {"string $s[] = {}; size($s)", "int: 0"},
        {"int $a[] = {1}; int $b[] = $a; $b[0] = 2; $a[0]", "int: 1"},
        {"proc grow(int $a[]) { $a[size($a)] = 9; } int $x[] = {1}; grow($x); grow $x; $x",
         "int[]: 1 9 9"},
        {"proc change(int $n) { $n = 9; } int $x = 1; change($x); $x", "int: 1"},
        {"proc string[] two() { return {\"p\", \"q\"}; } string $r[] = two(); $r[1]", "string: q"},
        {"string $a[] = {\"x\"}; clear $a; size($a)", "int: 0"},
        {"int $a[]; $a[-1]", "error: line 1: Index value -1 is out of range."},
        {"int $a[]; $a[2000000000] = 1", "error: line 1: Index value 2000000000 is too large."},
        {"string $a[] = {\"x\"}; string $s = $a",
         "error: line 1: Cannot convert data of type string[] to type string."},
        {"string $a[] = \"x\"",
         "error: line 1: Cannot convert data of type string to type string[]."},
        {"int $a[] = {\"x\"}",
         "error: line 1: Cannot convert data of type string[] to type int[]."},
        {"matrix $m[2][2]; $m[2][0]", "error: line 1: Matrix index [2][0] is out of range."},
    };
    check(rows);
}

TEST_F(Language, ControlFlow) {
    const Row rows[] = {
        {"int $n; for ($i = 0; $i < 10; $i++) { if ($i == 2) continue; if ($i == 5) break; "
         "$n += $i; } $n",
         "int: 8"},
        {"int $n; int $i, $j; for ($i = 0, $j = 9; $i < $j; $i++, $j--) $n++; $n", "int: 5"},
        {"string $s; for ($x in {\"a\", \"b\"}) $s += $x; $s", "string: ab"},
        {"int $n = 3; while ($n > 0) $n--; $n", "int: 0"},
        {"int $n = 3; do $n--; while ($n > 5); $n", "int: 2"},
        {"if (0) 1; else if (0) 2; else $r = 3; $r", "int: 3"},
        {"string $s; switch (2) { case 1: $s += 1; case 2: $s += 2; case 3: $s += 3; break; "
         "default: $s += \"d\"; } $s",
         "string: 23"},
        {"string $s; switch (\"z\") { default: $s += \"d\"; case \"a\": $s += \"a\"; } $s",
         "string: da"},
        {"int $n; for ($i = 0; $i < 3; $i++) switch ($i) { case 1: continue; default: $n += 10; } "
         "$n",
         "int: 20"},
        {"proc int f(int $n) { while (1) { for (;;) { if ($n > 3) return $n; $n++; } } } f(0)",
         "int: 4"},
        {"proc int fib(int $n) { if ($n < 2) return $n; return fib($n - 1) + fib($n - 2); } fib 15",
         "int: 610"},
    };
    check(rows);
}

TEST_F(Language, BothCallSyntaxes) {
    const Row rows[] = {
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } j(\"x\", 1 + 2)",
         "string: x|3"},
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } j x (1 + 2)",
         "string: x|3"},
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } j (\"x\" + 1) -flag",
         "string: x1|-flag"},
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } `j a:b|c.tx -1.5`",
         "string: a:b|c.tx|-1.5"},
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } "
         "\"<\" + `j \"p q\" `j a b`` + \">\"",
         "error: line 1: Syntax error"},
        {"proc string j(string $a, string $b) { return $a + \"|\" + $b; } "
         "\"<\" + `j \"p q\" (`j a b`)` + \">\"",
         "string: <p q|a|b>"},
        {"size (\"abc\") == 3 ? \"yes\" : \"no\"", "string: yes"},
        {"size(\"abc\") - 1", "int: 2"},
        {"int $n = `size \"four\"`; $n * 2", "int: 8"},
        {"abs -4", "int: 4"},
        {"int $x = 4; abs -$x", "int: 4"},
        {"nothing 1 2", "error: line 1: Cannot find procedure \"nothing\"."},
        {"proc f(int $a) {} f", "error: line 1: Wrong number of arguments on call to f."},
        {"proc f() {} int $x = `f`",
         "error: line 1: Cannot convert data of type void to type int."},
    };
    check(rows);
}

TEST_F(Language, EscapesAndBareWords) {
    EXPECT_EQ(output("print \"q\\\"b\\\\n\\n\\tt\\r\";"), "q\"b\\n\n\tt\r");
    EXPECT_EQ(output("print bare_word; print on; print -3; print .5;"), "bare_word1-30.5");
    EXPECT_EQ(output("print (\"\\u00e9 Ж 漢\");"), "u00e9 Ж 漢");
    EXPECT_EQ(output("print \"a\nb\";"), "line 1: Unterminated string.");
}

TEST_F(Language, ScopesFollowTheRules) {
    const Row rows[] = {
        {"$a = 1; proc int f() { return $a; } f",
         "error: line 1: \"$a\" is an undeclared variable."},
        {"$a = 1; proc int f() { global int $a; $a++; return $a; } f(); f() + $a", "int: 6"},
        {"proc f() { $a = 1; } f; $a", "error: line 1: \"$a\" is an undeclared variable."},
        {"int $a = 1; { int $a = 2; } $a", "int: 1"},
        {"{ int $inner = 2; } $inner", "error: line 1: \"$inner\" is an undeclared variable."},
        {"int $a = 1; string $a = \"x\"",
         "error: line 1: Invalid redeclaration of variable \"$a\" as a different type."},
        {"proc f() { global string $g = \"first\"; } f; global string $g; $g += \"!\"; f; $g",
         "string: first!"},
        {"int $n; for ($i = 0; $i < 2; $i++) { string $l[]; $l[size($l)] = \"x\"; $n = size($l); } "
         "$n",
         "int: 1"},
        {"$x = 5; $x = \"7\"; $x + 1", "int: 8"},
    };
    check(rows);

    // Globals outlive a script; from here they are set and read too.
    execute("global string $gKept = \"kept\"; int $count = 3;");
    EXPECT_EQ(resultOf("$gKept + $count"), "string: kept3");
    host::script::setGlobalVariable("$gPlayBackSlider", "slider");
    EXPECT_EQ(resultOf("proc string s() { global string $gPlayBackSlider; "
                       "return $gPlayBackSlider; } s"),
              "string: slider");
    EXPECT_EQ(host::script::globalVariable("count").toInt(), 3);
    EXPECT_TRUE(host::script::globalVariable("$nobody").isNone());
    host::script::setGlobalVariable("count", "42");
    EXPECT_EQ(resultOf("$count + 1"), "int: 43");
}

TEST_F(Language, ErrorsNameFileAndLineAndStopEverything) {
    EXPECT_EQ(output("print 1;\n\nprint 2;\nnoSuch;\nprint 3;", "/x/a.mel"),
              "file: /x/a.mel line 4: Cannot find procedure \"noSuch\".");
    EXPECT_EQ(printed, "12");
    EXPECT_EQ(errors, "file: /x/a.mel line 4: Cannot find procedure \"noSuch\".\n");

    // A procedure's error is where the procedure is, whoever calls it.
    execute("global proc fails() {\n  error \"why\";\n}", "/x/lib.mel");
    EXPECT_EQ(output("print 1; fails; print 2;", "/x/b.mel"), "file: /x/lib.mel line 2: why");
    EXPECT_EQ(printed, "1");

    // Nothing runs when something cannot be read.
    EXPECT_EQ(output("print 1;\n\n/* x\n */ if (1 print 2;"), "line 4: Syntax error");
    EXPECT_EQ(printed, "");
    EXPECT_EQ(resultOf("global int $fresh = 1; ("), "error: line 1: Syntax error");
    EXPECT_EQ(resultOf("$fresh"), "error: line 1: \"$fresh\" is an undeclared variable.");

    for (const char* script : {"print 1 }",   "{ print 1 }",  "int $;",
                               "$",           "1 +",          "break;",
                               "return 1;",   "case 1:",      "if (1) proc f() {}",
                               "for (;;",     "`print 1",     "<<1, 2",
                               "proc f( { }", "print = 3;",   "1 = 2;",
                               "!$x = 1;",    "foo bar baz)", "int $a[;",
                               "while 1;",    "\"open"})
        EXPECT_THROW(execute(script), host::script::ScriptError) << script;
    EXPECT_EQ(resultOf("proc f() { return 1; }"),
              "error: line 1: Procedure \"f\" returns a value but is declared without a return "
              "type.");
}

TEST_F(Language, CatchKeepsGoing) {
    EXPECT_EQ(output("int $c = catch(`error \"boo\"`); print $c;"), "1");
    EXPECT_EQ(errors, "line 1: boo\n");
    errors.clear();
    EXPECT_EQ(output("print `catchQuiet(noSuch())`; print (catch(`size x`));"), "10");
    EXPECT_EQ(output("int $v; if (catch($v = `abs -3`)) print \"no\"; print $v;"), "3");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(output("int $i = \"12abc\" + 1; int $j = \"oops\"; print ($i + $j);"), "12");
    EXPECT_EQ(warnings, "Converting string \"12abc1\" to an int value of 12.\n"
                        "Converting string \"oops\" to an int value of 0.\n");
}

TEST_F(Language, ProceduresMayBeRedefinedAndCalledAhead) {
    EXPECT_EQ(output("print (f()); proc int f() { return 1; } proc int f() { return 2; } "
                     "print (f());"),
              "12");
    // One that replaces itself goes on to its end.
    EXPECT_EQ(output("proc g() { eval \"proc g() { print new; }\"; print old; } g; g;"), "oldnew");
    host::script::defineProcedure(
        "lookThroughNative", {host::script::Type::String, host::script::Type::Int},
        [](const std::vector<Value>& arguments) -> Value {
            return arguments[0].toString() + "/" + std::to_string(arguments[1].toInt() + 1);
        });
    EXPECT_EQ(resultOf("lookThroughNative persp \"4\""), "string: persp/5");
    EXPECT_EQ(resultOf("lookThroughNative persp"),
              "error: line 1: Wrong number of arguments on call to lookThroughNative.");
    EXPECT_EQ(host::script::callProcedure("lookThroughNative", {"a", 1}).toString(), "a/2");
    EXPECT_THROW(host::script::callProcedure("unheardOf"), host::script::ScriptError);
}

TEST_F(Language, FilesKeepTheirOwnProcedures) {
    const auto dir = std::filesystem::temp_directory_path() / "vellum_script_files";
    std::filesystem::create_directories(dir);
    const auto write = [&dir](const char* name, const std::string& text) {
        std::ofstream(dir / name) << text;
    };
    write("one.mel", "proc string own() { return \"one\"; }\n"
                     "global proc string viaOne() { return own(); }");
    write("two.mel", "proc string own() { return \"two\"; }\n"
                     "global proc string viaTwo() { return own(); }\n");
    write("findMe.mel", "global proc int findMe(int $n) { return $n + 1; }");
    write("bad.mel", "\n\nnoSuchCommand;\n");
    const std::string source = "source \"" + dir.string() + "/";
    EXPECT_EQ(output(source + "one.mel\"; " + source + "two\"; print (viaOne() + viaTwo());"),
              "onetwo");
    EXPECT_EQ(resultOf("own"), "error: line 1: Cannot find procedure \"own\".");
    EXPECT_EQ(output(source + "bad.mel\"; print after;", "main.mel"),
              "file: " + (dir / "bad.mel").string() +
                  " line 3: Cannot find procedure \"noSuchCommand\".");
    host::script::ScriptError error("");
    EXPECT_FALSE(host::script::runFile(dir.string(), nullptr, &error)) << "a folder is no script";
    EXPECT_EQ(error.text(), "Cannot read file \"" + dir.string() + "\".");
    EXPECT_EQ(output("source \"/no/such.mel\";", "main.mel"),
              "file: main.mel line 1: Cannot find file \"/no/such.mel\" for source statement.");

    // A procedure nobody defined is looked for along the script path.
    EXPECT_EQ(resultOf("findMe 1"), "error: line 1: Cannot find procedure \"findMe\".");
    setenv("MAYA_SCRIPT_PATH", ("/nowhere:" + dir.string()).c_str(), 1);
    EXPECT_EQ(resultOf("`exists findMe` + findMe(1)"), "int: 3");
    unsetenv("MAYA_SCRIPT_PATH");
    EXPECT_EQ(resultOf("whatIs findMe"),
              "string: Mel procedure found in: " + (dir / "findMe.mel").string());
    std::filesystem::remove_all(dir);
}

} // namespace
