// Whole scripts of the kind people write, with the commands of an interface played by recorders.
#include "ScriptFixture.h"

namespace {

using host::script::CommandCall;
using host::script::execute;
using host::script::Strings;
using host::script::Value;

class Scripts : public ScriptTest {
protected:
    /// A command that writes down how it was called and returns a path made of its last argument.
    void record(const std::string& name) {
        host::script::registerCommand(name, [this](const CommandCall& call) -> Value {
            std::string line = call.name;
            for (const Value& argument : call.flattened())
                line += " " + argument.toString();
            calls.push_back(line);
            if (call.arguments.empty())
                return {};
            return call.name + "|" + call.arguments.back().toString();
        });
        recorded_.push_back(name);
    }
    void TearDown() override {
        for (const std::string& name : recorded_)
            host::script::unregisterCommand(name);
        ScriptTest::TearDown();
    }
    Strings calls;

private:
    Strings recorded_;
};

TEST_F(Scripts, AMenuIsBuiltUpdatedAndDeleted) {
    for (const char* name : {"menu", "menuItem", "deleteUI", "menuSet", "setMenuMode", "sketch"})
        record(name);
    host::script::setGlobalVariable("gMainWindow", "MainWindow");
    execute(R"(
global string $gSketchMenu;
global string $gSketchItems[];

global proc sketchMenu(int $animation)
{
    global string $gMainWindow;
    global string $gSketchMenu;
    global string $gSketchItems[];
    string $labels[] = {"Pencil", "Brush \"soft\"", "Eraser"};
    $gSketchMenu = `menu -parent $gMainWindow -tearOff on -label "Sketch"`;
    int $i;
    for ($i = 0; $i < size($labels); $i++) {
        string $command = ("sketch -tool " + $i);
        $gSketchItems[$i] = `menuItem -radioButton ($i == 0) -label $labels[$i]
                                      -command $command $labels[$i]`;
    }
    menuItem -divider true;      // the last group
    if ($animation) {
        string $before = `menuSet -q -cms`;
        evalDeferred("setMenuMode \"" + encodeString($before) + "\"");
    }
}

global proc sketchUpdate(int $tool)
{
    global string $gSketchItems[];
    switch ($tool) {
    case 0: case 1:
    case 2:
        menuItem -e -radioButton 1 $gSketchItems[$tool];
        break;
    default:
        print ("no tool " + $tool + "\n");
    }
}

global proc sketchDelete()
{
    global string $gSketchMenu;
    if (size($gSketchMenu)) deleteUI -m $gSketchMenu;
    $gSketchMenu = "";
}
)",
            "/menus/sketch.mel");
    EXPECT_EQ(output("sketchMenu(1); sketchUpdate 1; sketchUpdate(8); sketchDelete(); "
                     "sketchDelete;"),
              "no tool 8\n");
    const Strings expected = {
        "menu -parent MainWindow -tearOff 1 -label Sketch",
        "menuItem -radioButton 1 -label Pencil -command sketch -tool 0 Pencil",
        "menuItem -radioButton 0 -label Brush \"soft\" -command sketch -tool 1 Brush \"soft\"",
        "menuItem -radioButton 0 -label Eraser -command sketch -tool 2 Eraser",
        "menuItem -divider 1",
        "menuSet -q -cms",
        "menuItem -e -radioButton 1 menuItem|Brush \"soft\"",
        "deleteUI -m menu|Sketch"};
    EXPECT_EQ(calls, expected);
    calls.clear();
    host::idle::drainAll();
    EXPECT_EQ(calls, Strings{"setMenuMode menuSet|-cms"});
    EXPECT_EQ(errors, "");
}

TEST_F(Scripts, AlgorithmsComeOutRight) {
    execute(R"(
global proc int[] primes(int $limit) {
    int $composite[]; int $found[];
    for ($n = 2; $n <= $limit; $n++) {
        if ($composite[$n]) continue;
        $found[size($found)] = $n;
        for ($m = $n * $n; $m <= $limit; $m += $n) $composite[$m] = true;
    }
    return $found;
}
global proc float[] bubble(float $in[]) {
    float $a[] = $in;
    int $swapped;
    do {
        $swapped = 0;
        int $i;
        for ($i = 1; $i < size($a); $i++)
            if ($a[$i - 1] > $a[$i]) {
                float $t = $a[$i]; $a[$i] = $a[$i - 1]; $a[$i - 1] = $t;
                $swapped = 1;
            }
    } while ($swapped);
    return $a;
}
global proc string hanoi(int $n, string $a, string $b, string $c) {
    if ($n == 0) return "";
    return hanoi($n - 1, $a, $c, $b) + $a + $c + " " + hanoi($n - 1, $b, $a, $c);
}
global proc string reversed(string $s) {
    string $out;
    int $i = size($s);
    while ($i > 0) { $out += substring($s, $i, $i); $i--; }
    return $out;
}
global proc int words(string $text, string $names[], int $counts[]) {
    string $buffer[];
    int $n = tokenize($text, " ,.\n", $buffer);
    string $word;
    for ($word in $buffer) {
        int $at = stringArrayFind($word, 0, $names);
        if ($at < 0) $at = size($names);
        $names[$at] = $word;
        $counts[$at]++;
    }
    return $n;
}
)");
    EXPECT_EQ(resultOf("primes(40)"), "int[]: 2 3 5 7 11 13 17 19 23 29 31 37");
    EXPECT_EQ(resultOf("float $in[] = {3, 1.5, -2, 8, 1.5}; string $both = "
                       "stringArrayToString({\"\" + size(bubble($in))}, \"\"); bubble($in)"),
              "float[]: -2 1.5 1.5 3 8");
    EXPECT_EQ(resultOf("$in"), "float[]: 3 1.5 -2 8 1.5"); // untouched by the call
    EXPECT_EQ(resultOf("hanoi(3, \"a\", \"b\", \"c\")"), "string: ac ab cb ac ba bc ac ");
    EXPECT_EQ(resultOf("reversed(\"añ漢b\")"), "string: b漢ña");
    EXPECT_EQ(resultOf("string $names[]; int $counts[]; "
                       "words(\"to be, or not\\nto be.\", $names, $counts)"),
              "int: 6");
    EXPECT_EQ(resultOf("$names"), "string[]: to be or not");
    EXPECT_EQ(resultOf("$counts"), "int[]: 2 2 1 1");
}

TEST_F(Scripts, SettingsTravelThroughQuotedText) {
    execute(R"(
global string $gStore[];
global proc remember(string $name, string $value) {
    global string $gStore[];
    $gStore[size($gStore)] = ($name + "=" + encodeString($value));
}
global proc string recall(string $name) {
    global string $gStore[];
    for ($line in $gStore)
        if (startsWith($line, $name + "=")) {
            string $literal = substring($line, size($name) + 2, size($line));
            return eval("$gRecalled = \"" + $literal + "\"");
        }
    return "";
}
)");
    for (const char* hostile :
         {"plain", "with \"quotes\"", "back\\slash", "line\nbreak", "`print evil`", "$gStore[0]",
          "\"; error \"gotcha", "é漢", "\\\"", "tab\there"}) {
        const std::string literal = host::script::quoted(hostile);
        execute("clear $gStore; remember \"key\" " + literal + "; remember other x;");
        EXPECT_EQ(execute("recall key").toString(), hostile);
    }
    EXPECT_EQ(execute("recall nothing").toString(), "");
    EXPECT_EQ(printed + errors, "");
}

TEST_F(Scripts, ErrorsLeaveTheInterpreterUsable) {
    execute("global int $gDepth; global proc dig(int $n) { global int $gDepth; $gDepth = $n; "
            "if ($n == 0) error \"bottom\"; dig($n - 1); }");
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(output("dig 50;"), "line 1: bottom");
        EXPECT_EQ(host::script::executionDepth(), 0);
        EXPECT_EQ(host::script::globalVariable("gDepth").toInt(), 0);
        EXPECT_EQ(output("int $caught = catchQuiet(dig(5)); print $caught; print $gDepth;"), "10");
    }
    // The place is right after something deeper was caught.
    EXPECT_EQ(output("catchQuiet(dig(3));\n\nnoSuch;", "here.mel"),
              "file: here.mel line 3: Cannot find procedure \"noSuch\".");
    // A variable keeps what it had when its new value could not be made.
    EXPECT_EQ(output("int $keep = 4; catchQuiet($keep = 1 / 0); print $keep;"), "4");
    EXPECT_EQ(output("string $list[] = {\"a\"}; catchQuiet($list[0] = noSuch()); print $list;"),
              "a\n");
}

TEST_F(Scripts, CommandsSeeWhereTheyAreCalledFromAndMayRunScripts) {
    std::string place;
    host::script::registerCommand("where", [&](const CommandCall& call) -> Value {
        std::string file;
        int line = 0;
        host::script::currentLocation(&file, &line);
        place += call.file + ":" + std::to_string(call.line) + "=" + file + ":" +
                 std::to_string(line) + ";";
        if (!call.arguments.empty())
            execute(call.arguments[0].toString(), "inner.mel");
        host::script::currentLocation(&file, &line);
        place += std::to_string(line) + "|";
        return {};
    });
    EXPECT_EQ(output("where;\n\nwhere \"\\n\\nwhere;\";", "outer.mel"), "");
    EXPECT_EQ(place, "outer.mel:1=outer.mel:1;1|outer.mel:3=outer.mel:3;inner.mel:3=inner.mel:3;"
                     "3|3|");
    host::script::unregisterCommand("where");
    // A command may take itself away while it runs.
    host::script::registerCommand("once", [](const CommandCall&) -> Value {
        host::script::unregisterCommand("once");
        return "done";
    });
    EXPECT_EQ(resultOf("once"), "string: done");
    EXPECT_EQ(resultOf("once"), "error: line 1: Cannot find procedure \"once\".");
}

} // namespace
