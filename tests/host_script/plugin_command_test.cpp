#include "ScriptFixture.h"
#include "foundation/UndoQueue.h"
#include "script/PluginCommands.h"

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTime.h>

namespace {

using host::undoQueue;
using host::script::registerPluginCommand;
using host::script::unregisterPluginCommand;

// What the command below did, in order.
std::string history;
int alive = 0;

/// tally NUMBER adds to a total; undoable unless told otherwise.
class Tally : public MPxCommand {
public:
    static int total;

    Tally() { ++alive; }
    ~Tally() override { --alive; }
    static void* creator() { return new Tally; }

    static MSyntax newSyntax() {
        MSyntax syntax;
        syntax.addFlag("-nu", "-noUndo");
        syntax.addFlag("-fl", "-fail", MSyntax::kString);
        syntax.addFlag("-nst", "-nested", MSyntax::kString);
        syntax.addFlag("-r", "-record", MSyntax::kBoolean);
        syntax.addFlag("-fu", "-failUndo");
        syntax.addArg(MSyntax::kLong);
        return syntax;
    }

    MStatus doIt(const MArgList& args) override {
        MStatus status;
        const MArgDatabase database(syntax(), args, &status);
        if (!status)
            return status;
        undoable_ = !database.isFlagSet("-noUndo");
        failUndo_ = database.isFlagSet("failUndo");
        database.getCommandArgument(0, amount_);
        if (database.isFlagSet("-nested")) {
            bool record = false;
            database.getFlagArgument("-r", 0, record);
            status = MGlobal::executeCommand(database.flagArgumentString("-nst", 0), false, record);
            if (!status)
                return status;
        }
        if (database.isFlagSet("-fail")) {
            MString text;
            database.getFlagArgument("-fail", 0, text);
            if (text.length() > 0)
                displayError(text);
            return MS::kFailure;
        }
        return redoIt();
    }
    MStatus redoIt() override {
        total += amount_;
        history += "+" + std::to_string(amount_);
        setResult(total);
        return MS::kSuccess;
    }
    MStatus undoIt() override {
        if (failUndo_)
            return MS::kFailure;
        total -= amount_;
        history += "-" + std::to_string(amount_);
        return MS::kSuccess;
    }
    bool isUndoable() const override { return undoable_; }

private:
    int amount_ = 0;
    bool undoable_ = true, failUndo_ = false;
};

int Tally::total = 0;

class PluginCommand : public ScriptTest {
protected:
    void SetUp() override {
        ScriptTest::SetUp();
        history.clear();
        Tally::total = 0;
        ASSERT_TRUE(registerPluginCommand("tally", Tally::creator, Tally::newSyntax, "test"));
    }
    void TearDown() override {
        unregisterPluginCommand("tally");
        ScriptTest::TearDown();
        EXPECT_EQ(alive, 0);
    }
};

TEST_F(PluginCommand, UndoFollowsTheCommand) {
    EXPECT_EQ(resultOf("tally 3"), "int: 3");
    EXPECT_EQ(resultOf("tally(4)"), "int: 7");
    EXPECT_EQ(resultOf("`tally -noUndo 10` + 1"), "int: 18");
    EXPECT_EQ(alive, 2); // the one that cannot be undone is gone
    EXPECT_EQ(output("undo; undo; redo; redo; undo;"), "");
    EXPECT_EQ(history, "+3+4+10-4-3+3+4-4");
    EXPECT_EQ(output("tally 100;"), ""); // what was undone is forgotten
    EXPECT_EQ(output("redo;"), "line 1: There are no more commands to redo.");
    EXPECT_EQ(resultOf("undoInfo -q -undoName"), "string: tally 100");
    EXPECT_EQ(alive, 2);

    // Commands of one statement are one step; statements are steps of their own.
    history.clear();
    EXPECT_EQ(output("proc both() { tally 1; tally 2; } both; tally 5;"), "");
    EXPECT_EQ(output("undo; undo;"), "");
    EXPECT_EQ(history, "+1+2+5-5-2-1");
    EXPECT_EQ(output("undoInfo -openChunk; tally 1; tally 2; undoInfo -closeChunk; undo;"), "");
    EXPECT_EQ(history, "+1+2+5-5-2-1+1+2-2-1");

    undoQueue().setLimit(2);
    output("tally 1; tally 2; tally 3;");
    EXPECT_EQ(alive, 2);
    undoQueue().setLimit(0);
    output("undoInfo -state off; tally 9; undoInfo -state on;");
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(output("undo;"), "line 1: There are no more commands to undo.");
}

TEST_F(PluginCommand, FailureIsAnErrorAndNotRecorded) {
    EXPECT_EQ(output("print 1; tally -fail \"no way\" 5; print 2;", "a.mel"),
              "file: a.mel line 1: no way");
    EXPECT_EQ(errors, "no way\n"); // said once, by the command
    EXPECT_EQ(printed, "1");
    errors.clear();
    EXPECT_EQ(output("tally -fail \"\" 5;").substr(0, 8), "line 1: ");
    EXPECT_EQ(errors.substr(0, 8), "line 1: ");
    EXPECT_EQ(output("print `catch(tally(\"-fail\", \"x\", 5))`;"), "1");
    EXPECT_FALSE(undoQueue().canUndo());
    EXPECT_EQ(alive, 0);

    // An undo that fails ends with the state there was, and may be tried again.
    output("tally 1; proc two() { tally -failUndo 2; tally 4; } two;");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(output("undo;"), "line 1: The command could not be undone.");
        EXPECT_EQ(Tally::total, 7);
        EXPECT_EQ(alive, 3) << "what a step holds is not lost";
    }
    EXPECT_FALSE(undoQueue().canRedo());
}

TEST_F(PluginCommand, NestedCommandsAreRecordedWhenAsked) {
    output("tally -nested \"tally 1\" 10; undo;");
    EXPECT_EQ(history, "+1+10-10");
    history.clear();
    output("tally -nested \"tally 1\" -record on 10; undo; redo;");
    EXPECT_EQ(history, "+1+10-10-1+1+10");
    // A failure inside is shown, and fails what it is part of.
    errors.clear();
    EXPECT_EQ(output("tally -nested \"noSuch\" 3;"),
              "line 1: line 1: Cannot find procedure \"noSuch\".");
    EXPECT_EQ(errors, "line 1: Cannot find procedure \"noSuch\".\n");

    history.clear();
    MGlobal::executeCommand("tally 1");
    EXPECT_EQ(alive, 2); // the two of the last chunk; this one is not kept
    MGlobal::executeCommand("tally 2", false, true);
    output("undo;");
    EXPECT_EQ(history, "+1+2-2");
}

TEST_F(PluginCommand, ArgumentsAreCheckedBeforeTheCommandRuns) {
    const char* const rows[][2] = {
        {"tally -bogus 1", "line 1: Invalid flag '-bogus'."},
        {"tally -q 1", "line 1: Invalid flag '-q'."},
        {"tally -noUndo -noUndo 1", "line 1: Flag '-noUndo' can be used only once."},
        {"tally 1 -fail", "line 1: Flag '-fail' must be passed a string argument"},
        {"tally -record maybe 1", "line 1: Flag '-record' must be passed a boolean argument"},
        {"tally", "line 1: Not enough objects or values."},
        {"tally x", "line 1: Argument 1 must be an integer."},
        {"tally 1 2", "line 1: Too many objects or values."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(output(row[0]), row[1]) << row[0];
    EXPECT_EQ(history, "");
    // Either name of a flag works; an array counts as its elements.
    EXPECT_EQ(resultOf("tally -nu 1; string $a[] = {\"-noUndo\", \"5\"}; tally $a"), "int: 6");
    EXPECT_FALSE(undoQueue().canUndo());
}

TEST_F(PluginCommand, RegistrationHasOneOwner) {
    EXPECT_FALSE(registerPluginCommand("tally", Tally::creator, nullptr, "other"));
    EXPECT_FALSE(registerPluginCommand("print", Tally::creator, nullptr, "other"));
    EXPECT_EQ(host::script::pluginOfCommand("tally"), "test");
    output("tally 1;");
    EXPECT_TRUE(unregisterPluginCommand("tally"));
    EXPECT_EQ(alive, 0); // its code may go now
    EXPECT_FALSE(undoQueue().canUndo());
    EXPECT_FALSE(unregisterPluginCommand("tally"));
    EXPECT_FALSE(unregisterPluginCommand("print"));
    EXPECT_FALSE(host::script::hasPluginCommands("test"));
    EXPECT_EQ(resultOf("tally 1"), "error: line 1: Cannot find procedure \"tally\".");
}

/// Returns what its one argument names, through every way of setting a result.
class Results : public MPxCommand {
public:
    static void* creator() { return new Results; }
    MStatus doIt(const MArgList& args) override {
        const MString kind = args.asString(0);
        if (kind == "int") {
            setResult(7);
        } else if (kind == "double") {
            setResult(2.5);
        } else if (kind == "bool") {
            setResult(true);
        } else if (kind == "string") {
            setResult("text");
            EXPECT_EQ(currentResultType(), kString);
            EXPECT_EQ(currentStringResult(), MString("text"));
            int number = 3;
            EXPECT_EQ(getCurrentResult(number), MS::kFailure);
            EXPECT_EQ(number, 3);
        } else if (kind == "ints") {
            setResult(1);
            appendToResult(2);
            EXPECT_TRUE(isCurrentResultArray());
        } else if (kind == "strings") {
            appendToResult("a");
            appendToResult(MString("b"));
        } else if (kind == "doubles") {
            MDoubleArray numbers;
            numbers.append(0.5);
            setResult(numbers);
            appendToResult(1.5);
        } else if (kind == "mixed") {
            setResult(1);
            appendToResult("b");
        } else if (kind == "cleared") {
            setResult(1);
            clearResult();
        } else if (kind == "inner") {
            setResult("outer");
            int inner = 0;
            EXPECT_EQ(MGlobal::executeCommand("results int", inner), MS::kSuccess);
            EXPECT_EQ(inner, 7);
        }
        return MS::kSuccess;
    }
};

TEST_F(PluginCommand, ResultsKeepTheirType) {
    ASSERT_TRUE(registerPluginCommand("results", Results::creator, nullptr, "test"));
    const char* const rows[][2] = {{"int", "int: 7"},
                                   {"double", "float: 2.5"},
                                   {"bool", "int: 1"},
                                   {"string", "string: text"},
                                   {"ints", "int[]: 1 2"},
                                   {"strings", "string[]: a b"},
                                   {"doubles", "float[]: 0.5 1.5"},
                                   {"mixed", "int: 1"},
                                   {"cleared", "void: "},
                                   {"inner", "string: outer"}};
    for (const auto& row : rows)
        EXPECT_EQ(resultOf(std::string("results ") + row[0]), row[1]) << row[0];
    EXPECT_NE(warnings, ""); // the mixed one

    int i = -1;
    double d = -1;
    MString s("unset");
    MIntArray ints;
    MDoubleArray doubles;
    MStringArray strings;
    EXPECT_EQ(MGlobal::executeCommand("results int", i), MS::kSuccess);
    EXPECT_EQ(i, 7);
    EXPECT_EQ(MGlobal::executeCommand("results double", d), MS::kSuccess);
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(MGlobal::executeCommand("results int", d), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("results int", s), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("results cleared", i), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("noSuch", i), MS::kFailure);
    EXPECT_TRUE(i == 7 && d == 2.5 && s == "unset");
    EXPECT_EQ(MGlobal::executeCommand("results ints", ints), MS::kSuccess);
    EXPECT_EQ(MGlobal::executeCommand("results doubles", doubles), MS::kSuccess);
    EXPECT_EQ(MGlobal::executeCommand("results strings", strings), MS::kSuccess);
    ASSERT_TRUE(ints.length() == 2 && doubles.length() == 2 && strings.length() == 2);
    EXPECT_TRUE(ints[1] == 2 && doubles[1] == 1.5 && strings[1] == "b");
    MStatus status;
    EXPECT_EQ(MGlobal::executeCommandStringResult("results string", false, false, &status),
              MString("text"));
    EXPECT_EQ(status, MS::kSuccess);

    MCommandResult any;
    EXPECT_EQ(MGlobal::executeCommand("results doubles", any), MS::kSuccess);
    EXPECT_EQ(any.resultType(), MCommandResult::kDoubleArray);
    EXPECT_EQ(any.getResult(i), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("about -batch", any), MS::kSuccess);
    EXPECT_EQ(any.resultType(), MCommandResult::kInt);
    EXPECT_EQ(MGlobal::executeCommand("results cleared", any), MS::kSuccess);
    EXPECT_EQ(any.resultType(), MCommandResult::kInvalid);
    EXPECT_EQ(MGlobal::executeCommand("matrix $n[2][2] = <<1, 2; 3, 4>>; $n", any), MS::kSuccess);
    int rows2 = 0, columns = 0;
    EXPECT_EQ(any.getResult(doubles, rows2, columns), MS::kSuccess);
    EXPECT_TRUE(rows2 == 2 && columns == 2 && doubles[3] == 4);
    unregisterPluginCommand("results");
}

TEST_F(PluginCommand, EchoShowsCommandAndResult) {
    MGlobal::executeCommand("tally 2", true, false);
    EXPECT_EQ(printed, "tally 2\n");
    EXPECT_EQ(shown, "2\n");
    printed.clear();
    shown.clear();
    MGlobal::executeCommand("tally 2");
    EXPECT_EQ(printed + shown, "");
}

TEST(Syntax, FlagNamesFollowTheRules) {
    MSyntax syntax;
    EXPECT_EQ(syntax.addFlag("-r", "retime", MSyntax::kDouble), MS::kSuccess);
    EXPECT_EQ(syntax.addFlag("mtn", "-moveToNext"), MS::kSuccess);
    EXPECT_EQ(syntax.addFlag("-rt", "-retime"), MS::kFailure);   // taken, dash or not
    EXPECT_EQ(syntax.addFlag("r", "-another"), MS::kFailure);    // taken
    EXPECT_EQ(syntax.addFlag("-long", "-longer"), MS::kFailure); // four letters are no short name
    EXPECT_EQ(syntax.addFlag("-s", "-sho"), MS::kFailure);       // three are no long one
    EXPECT_EQ(syntax.addFlag("-q", "-quick"), MS::kSuccess);     // free without queries
    syntax.enableEdit();
    EXPECT_EQ(syntax.addFlag("-e", "-exact"), MS::kFailure);
    EXPECT_EQ(syntax.makeFlagMultiUse("mtn"), MS::kSuccess);
    EXPECT_EQ(syntax.makeFlagMultiUse("-nothing"), MS::kFailure);
    MSyntax copy(syntax); // the same description
    EXPECT_EQ(copy.addFlag("-late", "-lateFlag"), MS::kFailure);
    EXPECT_EQ(copy.addFlag("-l", "-lateFlag"), MS::kSuccess);
    EXPECT_EQ(syntax.addFlag("-l", "-lateFlag"), MS::kFailure);
    EXPECT_TRUE(syntax.canEdit() && !syntax.canQuery());
}

MArgList arguments(std::initializer_list<const char*> words) {
    MArgList list;
    for (const char* word : words)
        list.addArg(MString(word));
    return list;
}

TEST(Syntax, DatabaseReadsFlagsObjectsAndModes) {
    MSyntax syntax;
    syntax.addFlag("-a", "-active");
    syntax.addFlag("-mv", "move", MSyntax::kUnsigned, MSyntax::kLong, MSyntax::kString);
    syntax.addFlag("-n", "name", MSyntax::kString);
    syntax.addFlag("-t", "-time", MSyntax::kTime);
    syntax.addFlag("-k", "-keep", MSyntax::kDouble);
    syntax.makeFlagMultiUse("-k");
    syntax.addFlag("-v", "-visible", MSyntax::kBoolean);
    syntax.makeFlagQueryWithFullArgs("-v", true);
    syntax.enableQuery();
    syntax.enableEdit();
    syntax.setObjectType(MSyntax::kStringObjects, 0, 2);

    MStatus status;
    const MArgDatabase create(syntax,
                              arguments({"-mv", "4", "-2", "cam \"x\"", "obj", "-name", "-weird",
                                         "-k", "0.1", "-keep", "1e3", "other"}),
                              &status);
    ASSERT_EQ(status, MS::kSuccess);
    EXPECT_TRUE(create.isFlagSet("move") && create.isFlagSet("-mv") && create.isFlagSet("mv"));
    EXPECT_FALSE(create.isFlagSet("-a") || create.isQuery() || create.isEdit());
    EXPECT_FALSE(create.isFlagSet("-nonsense", &status));
    EXPECT_EQ(status, MS::kInvalidParameter);
    unsigned index = 0;
    int target = 0;
    MString text;
    EXPECT_EQ(create.getFlagArgument("-move", 0, index), MS::kSuccess);
    EXPECT_EQ(create.getFlagArgument("mv", 1, target), MS::kSuccess);
    EXPECT_EQ(create.getFlagArgument("mv", 2, text), MS::kSuccess);
    EXPECT_TRUE(index == 4 && target == -2 && text == "cam \"x\"");
    EXPECT_EQ(create.getFlagArgument("mv", 3, text), MS::kFailure);
    EXPECT_EQ(create.getFlagArgument("mv", 2, target), MS::kFailure); // no number
    EXPECT_TRUE(text == "cam \"x\"" && target == -2);
    EXPECT_EQ(create.flagArgumentString("-name", 0), MString("-weird"));
    EXPECT_EQ(create.numberOfFlagUses("-k"), 2u);
    EXPECT_EQ(create.numberOfFlagsUsed(), 4u);
    MArgList second;
    EXPECT_EQ(create.getFlagArgumentList("-k", 1, second), MS::kSuccess);
    EXPECT_EQ(second.asDouble(0), 1000.0);
    EXPECT_EQ(create.getFlagArgumentList("-k", 2, second), MS::kFailure);
    MStringArray objects;
    EXPECT_EQ(create.getObjects(objects), MS::kSuccess);
    ASSERT_EQ(objects.length(), 2u);
    EXPECT_TRUE(objects[0] == "obj" && objects[1] == "other");

    // Queried flags have no arguments, wherever the mode stands.
    for (const auto& words : {arguments({"-q", "-name", "obj"}), arguments({"-name", "-q", "obj"}),
                              arguments({"-name", "obj", "-query"})}) {
        SCOPED_TRACE(words.asString(0).asChar());
        const MArgDatabase query(syntax, words, &status);
        ASSERT_EQ(status, MS::kSuccess);
        EXPECT_TRUE(query.isQuery() && query.isFlagSet("name"));
        query.getObjects(objects);
        ASSERT_EQ(objects.length(), 1u);
        EXPECT_EQ(objects[0], MString("obj"));
    }
    EXPECT_TRUE(MArgDatabase(syntax, arguments({"-q", "-v", "on", "x"})).flagArgumentBool("-v", 0));
    EXPECT_TRUE(MArgDatabase(syntax, arguments({"-q", "-v", "x"}), &status).isQuery());
    EXPECT_EQ(status, MS::kSuccess);
    EXPECT_TRUE(MArgDatabase(syntax, arguments({"-e", "-a", "x"})).isEdit());

    for (const auto& words :
         {arguments({"-mv", "-4", "1", "c"}), arguments({"-mv", "1", "2"}), arguments({"-zz"}),
          arguments({"a", "b", "c"}), arguments({"-k", "word"}), arguments({"-a", "-active"})}) {
        SCOPED_TRACE(words.asString(0).asChar());
        status = MS::kSuccess;
        const MArgDatabase bad(syntax, words, &status);
        EXPECT_NE(status, MS::kSuccess);
        EXPECT_FALSE(bad.isFlagSet("-a"));
    }
}

TEST(Syntax, NumbersArriveUnrounded) {
    MSyntax syntax;
    syntax.addFlag("-d", "-depth", MSyntax::kDouble);
    syntax.addArg(MSyntax::kLong);
    MArgList list;
    list.addArg(MString("-d"));
    list.addArg(0.1 + 0.2);
    list.addArg(2147483647);
    const MArgDatabase database(syntax, list);
    EXPECT_EQ(database.flagArgumentDouble("-d", 0), 0.1 + 0.2);
    EXPECT_EQ(database.commandArgumentInt(0), 2147483647);
}

} // namespace
