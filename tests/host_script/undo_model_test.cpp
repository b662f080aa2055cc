#include "ScriptFixture.h"
#include "script/PluginCommands.h"

#include <maya/MArgList.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>

#include <random>

namespace {

using host::undoQueue;

std::vector<int>& document() {
    static std::vector<int> values;
    return values;
}
int living = 0;

/// push N adds a number to the document; a negative one fails after having changed nothing, a
/// multiple of ten cannot be undone.
class Push : public MPxCommand {
public:
    Push() { ++living; }
    ~Push() override { --living; }
    static void* creator() { return new Push; }
    MStatus doIt(const MArgList& args) override {
        value_ = args.asInt(0);
        return value_ < 0 ? MS::kFailure : redoIt();
    }
    MStatus redoIt() override {
        document().push_back(value_);
        return MS::kSuccess;
    }
    MStatus undoIt() override {
        EXPECT_FALSE(document().empty());
        if (document().empty())
            return MS::kFailure;
        EXPECT_EQ(document().back(), value_);
        document().pop_back();
        return MS::kSuccess;
    }
    bool isUndoable() const override { return value_ % 10 != 0; }

private:
    int value_ = 0;
};

class UndoModel : public ScriptTest {
protected:
    void SetUp() override {
        ScriptTest::SetUp();
        document().clear();
        host::script::registerPluginCommand("push", Push::creator, nullptr, "test");
    }
    void TearDown() override {
        host::script::unregisterPluginCommand("push");
        undoQueue().setLimit(0);
        ScriptTest::TearDown();
        EXPECT_EQ(living, 0);
    }
};

// The queue against a list of snapshots.
TEST_F(UndoModel, RandomWorkMatchesSnapshots) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        document().clear();
        undoQueue().flush();
        std::vector<std::vector<int>> states = {{}}; // states[at] is the present
        std::size_t at = 0;
        const auto done = [&] {
            states.resize(at + 1);
            states.push_back(document());
            ++at;
        };
        for (int step = 0; step < 200; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            const int number = 1 + static_cast<int>(random() % 9);
            const std::string push = "push " + std::to_string(number) + ";";
            switch (random() % 8) {
            case 0:
            case 1:
                ASSERT_EQ(output(push), "");
                done();
                break;
            case 2: // several at once
                ASSERT_EQ(output("proc many() { " + push + push + push + " } many;"), "");
                done();
                break;
            case 3: // the first half of something that fails stays, and can be undone
                ASSERT_NE(output("proc half() { " + push + " push -1; push 5; } half;"), "");
                done();
                break;
            case 4: // fails before it did anything
                ASSERT_NE(output("push -1;"), "");
                break;
            case 5: { // not recorded, so taken back by hand
                const std::vector<int> before = document();
                ASSERT_EQ(MGlobal::executeCommand(push.c_str(), false, false), MS::kSuccess);
                ASSERT_EQ(document().size(), before.size() + 1);
                document() = before;
                break;
            }
            case 6:
                ASSERT_EQ(output("undo;") == "", at > 0);
                at -= at > 0;
                break;
            default:
                ASSERT_EQ(output("redo;") == "", at + 1 < states.size());
                at += at + 1 < states.size();
            }
            ASSERT_EQ(document(), states[at]) << "step " << step;
            ASSERT_EQ(undoQueue().canUndo(), at > 0);
            ASSERT_EQ(undoQueue().canRedo(), at + 1 < states.size());
        }
        while (undoQueue().undo())
            ASSERT_EQ(document(), states[--at]);
        EXPECT_EQ(at, 0u);
    }
}

TEST_F(UndoModel, AStepIsNamedByWhatTheStatementCalls) {
    EXPECT_EQ(output("global proc int many() { push 1; push 2; return 1; }"), "");
    for (const char* statement :
         {"many;", "int $made = `many`;", "$made = 3 * `many`;", "if ($made) many;",
          "for ($one in {1, 2}) many;", "while ($made) { many; $made = 0; }"}) {
        SCOPED_TRACE(statement);
        EXPECT_EQ(output(statement), "");
        EXPECT_EQ(resultOf("undoInfo -q -undoName"), "string: many") << statement;
    }
    EXPECT_EQ(output("flushUndo;"), "");
}

TEST_F(UndoModel, AFiniteQueueForgetsTheOldest) {
    EXPECT_EQ(output("undoInfo -length 3;"), "");
    EXPECT_EQ(resultOf("undoInfo -q -length"), "int: 3");
    for (int i = 1; i <= 9; ++i)
        output("push " + std::to_string(i) + ";");
    EXPECT_EQ(living, 3);
    EXPECT_EQ(output("undo; undo; undo;"), "");
    EXPECT_NE(output("undo;"), "");
    EXPECT_EQ(document(), (std::vector<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(output("redo; redo; redo;"), "");
    EXPECT_EQ(output("undoInfo -infinity on;"), "");
    EXPECT_EQ(resultOf("undoInfo -q -infinity"), "int: 1");
    EXPECT_EQ(resultOf("undoInfo -q -undoQueueEmpty"), "int: 0");
    EXPECT_EQ(output("flushUndo;"), "");
    EXPECT_EQ(living, 0);
    EXPECT_EQ(resultOf("undoInfo -q -undoQueueEmpty"), "int: 1");
}

TEST_F(UndoModel, WhatAnUndoDoesIsNotRecorded) {
    output("push 1; push 2;");
    // A script that runs while an undo is under way adds nothing to undo.
    class Nested : public MPxCommand {
    public:
        static void* creator() { return new Nested; }
        MStatus doIt(const MArgList&) override { return MS::kSuccess; }
        MStatus undoIt() override {
            EXPECT_TRUE(MGlobal::isUndoing());
            return MGlobal::executeCommand("push 7", false, true);
        }
        MStatus redoIt() override {
            EXPECT_TRUE(MGlobal::isRedoing());
            return MS::kSuccess;
        }
        bool isUndoable() const override { return true; }
    };
    host::script::registerPluginCommand("nested", Nested::creator, nullptr, "test");
    output("nested;");
    const std::size_t before = undoQueue().undoCount();
    EXPECT_EQ(output("undo;"), "");
    EXPECT_EQ(document(), (std::vector<int>{1, 2, 7}));
    EXPECT_EQ(undoQueue().undoCount(), before - 1);
    EXPECT_TRUE(undoQueue().canRedo());
    EXPECT_EQ(output("redo;"), "");
    EXPECT_FALSE(MGlobal::isUndoing() || MGlobal::isRedoing());
    host::script::unregisterPluginCommand("nested");
}

} // namespace
