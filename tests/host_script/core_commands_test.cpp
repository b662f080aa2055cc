#include "ScriptFixture.h"
#include "commands/Conditions.h"
#include "foundation/Events.h"
#include "script/Flags.h"

#include <maya/MGlobal.h>

#include <filesystem>

namespace {

using host::script::Flags;
using Kind = host::script::ArgKind;

class CoreCommands : public ScriptTest {};

TEST_F(CoreCommands, ResultsOfStringsArraysAndNumbers) {
    const char* const rows[][2] = {
        {"size \"añb\"", "int: 3"},
        {"substring \"añbc\" 2 3", "string: ñb"},
        {"substring \"abc\" 3 2", "string: "},
        {"substring \"abc\" -5 99", "string: abc"},
        {"string $t[]; tokenize(\"  a b\\tc \", $t) + $t[2]", "string: 3c"},
        {"string $t[]; tokenize(\"/a//b\", \"/\", $t); $t", "string[]: a b"},
        {"string $t[]; tokenize(\"\", $t)", "int: 0"},
        {"match \"l+\" \"hello\"", "string: ll"},
        {"match \"^[a-z]*$\" \"Hello\"", "string: "},
        {"match \"a?b\" \"xa?b\"", "string: a?b"}, // a question mark is no operator here
        {"match \"b|c\" \"ab|cd\"", "string: b|c"},
        {"match \"\\\\.[^.]*$\" \"a.b.mel\"", "string: .mel"},
        {"match \"[\" \"x\"", "error: line 1: Invalid regular expression \"[\"."},
        {"substitute \"[0-9]+\" \"a12b3\" \"#\"", "string: a#b3"},
        {"substituteAllString \"a.b.c\" \".\" \"..\"", "string: a..b..c"},
        {"substituteAllString \"abc\" \"\" \"x\"", "string: abc"},
        {"gmatch \"pCube12\" \"p*[0-9]?\"", "int: 1"},
        {"gmatch \"aaaaaaaaaaaaaaaaaaaaaaaaaaab\" \"*a*a*a*a*a*a*c\"", "int: 0"},
        {"gmatch \"x\" \"[!x]\"", "int: 0"},
        {"strip \" \\n a b\\t\"", "string: a b"},
        {"toupper \"aé\" + \"\"", "error: line 1: Syntax error"},
        {"toupper(\"aé\") + tolower(\"AÉ\")", "string: AÉaé"},
        {"startsWith(\"abc\", \"ab\") + endsWith(\"abc\", \"ab\")", "int: 1"},
        {"startString(\"añb\", 2) + endString(\"añb\", 2)", "string: aññb"},
        {"encodeString \"a\\\"b\\n\"", "string: a\\\"b\\n"},
        {"format -s \"x\" -stringArg 2 \"^2s-^1s ^9s ^\"", "string: 2-x ^9s ^"},
        {"basename(\"/a/b.ma\", \".ma\") + dirname(\"/a/b.ma\") + basenameEx(\"/a/b.ma\")",
         "string: b/ab"},
        {"sort({\"b\", \"a\"})", "string[]: a b"},
        {"sort({3, 1, 2})", "int[]: 1 2 3"},
        {"string $a[] = {\"x\"}; appendStringArray($a, $a, 1); appendStringArray($a, {\"y\"}, 9); "
         "$a",
         "string[]: x x y"},
        {"stringArrayCatenate({\"a\"}, {\"b\"})", "string[]: a b"},
        {"stringArrayRemove({\"a\"}, {\"a\", \"b\", \"a\"})", "string[]: b"},
        {"stringArrayRemoveExact({\"a\"}, {\"a\", \"b\", \"a\"})", "string[]: b a"},
        {"stringArrayRemoveDuplicates({\"a\", \"b\", \"a\"})", "string[]: a b"},
        {"stringArrayContains(\"b\", {\"a\", \"b\"}) + stringArrayCount(\"a\", {\"a\", \"a\"})",
         "int: 3"},
        {"stringArrayFind(\"a\", 1, {\"a\", \"b\", \"a\"})", "int: 2"},
        {"string $a[] = {\"a\", \"c\"}; stringArrayInsertAtIndex(1, $a, \"b\"); "
         "stringArrayRemoveAtIndex(0, $a); stringArrayRemoveAtIndex(7, $a); $a",
         "string[]: b c"},
        {"stringArrayToString({\"a\", \"b\"}, \", \")", "string: a, b"},
        {"size(stringToStringArray(\"a,,b\", \",\"))", "int: 3"},
        {"appendStringArray({\"a\"}, {\"b\"}, 1)",
         "error: line 1: Argument 1 of appendStringArray must be an array variable."},
        {"abs(-3) + min(1, 2) + max(1, 2) + clamp(0, 5, 9)", "int: 11"},
        {"abs(-2147483647 - 1)", "int: 2147483647"},
        {"floor(2.7) + ceil(2.2) + trunc(-2.7)", "float: 3"},
        {"sqrt(-1)", "error: line 1: Value out of range in call of sqrt."},
        {"mag(<<3, 4, 0>>) + dot(<<1, 2, 3>>, <<1, 1, 1>>)", "float: 11"},
        {"cross <<1, 2, -2>> <<3, 0, 1>>", "vector: <<2, -7, -6>>"},
        {"seed 3; float $r = `rand 1 2`; seed 3; $r == `rand 1 2` && $r >= 1 && $r <= 2", "int: 1"},
        {"linstep(0, 4, 1) + smoothstep(0, 1, 2)", "float: 1.25"},
        {"substring(\"abc\", 1)", "error: line 1: Wrong number of arguments on call to substring."},
        {"exists print + 0", "error: line 1: Syntax error"},
        {"exists(\"print\") + `exists nobody`", "int: 1"},
        {"proc mine() {} whatIs mine", "string: Mel procedure entered interactively."},
        {"whatIs(\"size\") + whatIs(\"nobody\")", "string: CommandUnknown"},
        {"eval \"int $e = 3;\" \"$e * 2\"", "int: 6"},
        {"int $local = 1; eval(\"$local\" + \"+ 1\")", "int: 2"},
        {"proc string p() { int $inner = 1; return eval(\"$inner\"); } p",
         "error: line 1: \"$inner\" is an undeclared variable."},
        {"optionVar -iv \"o\" 3 -sva l \"x\" -sva l \"y\"; optionVar -q o", "int: 3"},
        {"optionVar -arraySize l", "int: 2"},
        {"optionVar -rm l; optionVar -exists l", "int: 0"},
        {"putenv VELLUM_TEST_VAR \"a b\"; getenv VELLUM_TEST_VAR", "string: a b"},
        {"about -version", "string: 2024"},
        {"about -api", "int: 20240000"},
        {"about", "error: line 1: about needs one flag."},
        {"quit -ec 3", "error: line 1: quit: this program cannot be ended by a script."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(resultOf(row[0]), row[1]) << row[0];
}

TEST_F(CoreCommands, PrintAndMessages) {
    EXPECT_EQ(output("print {1, 2}; print <<1, 2, 3>>; print 0.5; print \"\";"), "1\n2\n1 2 30.5");
    EXPECT_EQ(output("\nwarning \"careful\"; warning -sl on \"here\";", "w.mel"), "");
    EXPECT_EQ(warnings, "careful\nfile: w.mel line 2: here\n");
    EXPECT_EQ(output("evalEcho \"1 + 1\";"), "1 + 1\n");
    EXPECT_EQ(shown, "2\n");
    // The place of an error in evaluated text is where a file evaluates it.
    EXPECT_EQ(output("\n\neval \"noSuch\";", "e.mel"),
              "file: e.mel line 3: Cannot find procedure \"noSuch\".");
}

TEST_F(CoreCommands, DeferredWorkRunsInOrderAtIdle) {
    EXPECT_EQ(output("evalDeferred -lowestPriority \"print last;\"; evalDeferred \"print a;\"; "
                     "evalDeferred(\"print b; evalDeferred \\\"print d;\\\"\"); print now;"),
              "now");
    MGlobal::executeCommandOnIdle("print c;");
    EXPECT_EQ(printed, "now");
    host::idle::drainAll();
    EXPECT_EQ(printed, "nowabclastd");
    // An error there is shown and keeps the rest going.
    output("evalDeferred noSuch; evalDeferred \"print on;\";");
    host::idle::drainAll();
    EXPECT_EQ(printed, "1");
    EXPECT_NE(errors.find("noSuch"), std::string::npos);

    // Without an event loop it runs as soon as the outermost script is done.
    host::script::setBatchMode(true);
    output("proc p() { evalDeferred \"print later;\"; print first; } p; print second;");
    EXPECT_EQ(printed, "firstsecondlater");
    EXPECT_EQ(MGlobal::mayaState(), MGlobal::kBatch);
    EXPECT_EQ(resultOf("about -batch"), "int: 1");
}

TEST_F(CoreCommands, ScriptJobsRunOnceAtIdle) {
    EXPECT_EQ(output("int $e = `scriptJob -event SelectionChanged \"print S;\"`; "
                     "int $t = `scriptJob -ct playingBack \"print T;\"`; "
                     "int $c = `scriptJob -conditionChange playingBack \"print C;\"`; "
                     "int $o = `scriptJob -runOnce on -e \"timeChanged\" \"print O;\"`; "
                     "print ($t == $e + 1 && `scriptJob -exists $e`);"),
              "1");
    printed.clear();
    host::events::emit("SelectionChanged");
    host::events::emit("SelectionChanged");
    host::events::emit("timeChanged");
    EXPECT_EQ(printed, "");
    host::idle::drainAll();
    EXPECT_EQ(printed, "SO");
    host::events::emit("timeChanged"); // the job was for one time only
    host::conditions::set("playingBack", true);
    host::events::emit("SelectionChanged"); // not during playback
    host::idle::drainAll();
    EXPECT_EQ(printed, "SOTC");
    host::conditions::set("playingBack", false);
    host::idle::drainAll();
    EXPECT_EQ(printed, "SOTCC");

    EXPECT_EQ(output("size(`scriptJob -listJobs`)"), "");
    EXPECT_EQ(resultOf("size(`scriptJob -listJobs`)"), "int: 3");
    EXPECT_EQ(output("scriptJob -f -k $c; scriptJob -kill $e; scriptJob -kill 9999;"), "");
    host::events::emit("SelectionChanged");
    host::conditions::set("playingBack", true);
    host::conditions::set("playingBack", false);
    host::idle::drainAll();
    EXPECT_EQ(printed, "T");

    output("$p = `scriptJob -protected -e Undo \"print P;\"`;");
    EXPECT_NE(output("scriptJob -kill $p;"), "");
    EXPECT_EQ(output("scriptJob -force -kill $p;"), "");
    EXPECT_NE(output("scriptJob -e NoSuchEvent \"\";"), "");
    EXPECT_NE(output("scriptJob -cc noSuchCondition \"\";"), "");
    EXPECT_NE(output("scriptJob -e Undo;"), "");
    EXPECT_EQ(resultOf("isTrue playingBack"), "int: 0");

    // One that ends itself, and one whose window goes.
    output("$self = `scriptJob -e Redo \"print self; scriptJob -k $self;\"`; "
           "scriptJob -p win -e Redo \"print win;\"; scriptJob -uid win \"print gone;\";");
    host::events::emit("Redo");
    host::idle::drainAll();
    EXPECT_EQ(printed, "selfwin");
    host::script::uiDeleted("win");
    host::events::emit("Redo");
    host::idle::drainAll();
    EXPECT_EQ(printed, "selfwingone");

    host::script::setBatchMode(true);
    const int before = host::script::execute("size(`scriptJob -lj`)").toInt();
    EXPECT_EQ(resultOf("scriptJob -e Undo \"print x;\""), "int: 0");
    EXPECT_EQ(resultOf("size(`scriptJob -lj`)"), "int: " + std::to_string(before));
}

TEST_F(CoreCommands, PreferenceDirectories) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / "vellum prefs test";
    fs::remove_all(dir);
    setenv("MAYA_APP_DIR", dir.c_str(), 1);
    EXPECT_EQ(resultOf("internalVar -userPrefDir"), "string: " + dir.string() + "/2024/prefs/");
    EXPECT_TRUE(fs::is_directory(dir / "2024" / "prefs"));
    EXPECT_EQ(resultOf("internalVar -uad"), "string: " + dir.string() + "/");
    setenv("MAYA_APP_DIR", "/proc/nowhere", 1);
    EXPECT_EQ(resultOf("internalVar -upd").substr(0, 30), "error: line 1: Cannot create d");
    unsetenv("MAYA_APP_DIR");
    fs::remove_all(dir);
}

TEST_F(CoreCommands, FlagsOfBuiltInCommands) {
    static const Flags flags =
        Flags()
            .flag("-n", "-name", {Kind::String})
            .flag("-rgb", "-rgbValue", {Kind::Float, Kind::Float, Kind::Float})
            .flag("v", "visible", {Kind::Boolean})
            .flag("-i", "-item", {Kind::String})
            .multiUse("-i")
            .objects(0, 1)
            .query()
            .edit();
    host::script::registerCommand(
        "flagged", [](const host::script::CommandCall& call) -> host::script::Value {
            const auto parsed = flags.parse(call);
            std::string text = parsed.isQuery() ? "q" : parsed.isEdit() ? "e" : "c";
            if (parsed.isSet("name"))
                text += " n=" + parsed.getString("-name");
            if (parsed.isSet("-rgb"))
                text += " b=" + host::script::formatFloat(parsed.getFloat("-rgbValue", 0, 2));
            text += parsed.getBool("visible") ? " v" : "";
            for (const std::string& item : parsed.allStrings("-i"))
                text += " " + item;
            return text + " [" + parsed.object() + "]";
        });
    const char* const rows[][2] = {
        {"flagged -n \"a b\" -rgb 0 .5 1 -v on obj", "string: c n=a b b=1 v [obj]"},
        {"flagged -e -i x -item 2 obj", "string: e x 2 [obj]"},
        {"flagged -q -name obj", "string: q n= [obj]"},
        {"flagged -name -q obj", "string: q n= [obj]"},
        {"flagged -name -7", "string: c n=-7 []"},
        {"flagged -visible yes", "string: c v []"},
        {"flagged -xyz", "error: line 1: Invalid flag '-xyz'."},
        {"flagged obj -name", "error: line 1: Flag '-name' must be passed a string argument"},
        {"flagged -rgb 1 2", "error: line 1: Flag '-rgb' must be passed 3 arguments"},
        {"flagged a b", "error: line 1: Too many objects or values."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(resultOf(row[0]), row[1]) << row[0];
    host::script::unregisterCommand("flagged");
}

} // namespace
