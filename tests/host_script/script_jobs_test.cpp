// Script jobs that follow the scene, and what jobs do to themselves and to each other.
#include "commands/Conditions.h"
#include "commands/SceneCommands.h"
#include "foundation/Events.h"
#include "host_script/ScriptFixture.h"
#include "scene/files/FileIO.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

class ScriptJobs : public ScriptTest {
protected:
    void SetUp() override {
        ScriptTest::SetUp();
        host::registerSceneCommands();
        host::fileIO().newScene();
        output("polySphere -n ball; createNode transform -n group; select -cl; int $n;");
        idle();
    }
    void TearDown() override {
        ScriptTest::TearDown();
        host::fileIO().newScene();
    }
    /// Runs what is due, once.
    void idle() { host::idle::drain(); }
    /// What the jobs print after a script and one idle.
    std::string after(const std::string& script) {
        const std::string error = output(script);
        EXPECT_EQ(error, "") << script;
        printed.clear();
        idle();
        return printed;
    }
    int jobs() { return host::script::execute("size(`scriptJob -listJobs`)").toInt(); }
};

TEST_F(ScriptJobs, HearOfAttributesWhateverChangesThem) {
    output(
        "scriptJob -ac ball.tx \"print X;\"; scriptJob -attributeChange ball.t \"print T;\" -alc;"
        "scriptJob -con ball.ty \"print C;\"; scriptJob -ac group.notes \"\"");
    EXPECT_EQ(jobs(), 3) << "there is no such attribute";
    EXPECT_EQ(after("setAttr ball.ty 3"), "T");
    EXPECT_EQ(after("setAttr ball.tx 0.0000001; setAttr ball.tx 0.0000002"), "XT") << "once";
    EXPECT_EQ(after("setAttr ball.tx 0.0000002; setAttr ball.rx 5"), "");
    EXPECT_EQ(after("undo; undo; undo; undo"), "XT") << "undone";
    EXPECT_EQ(after("connectAttr group.ty ball.ty"), "TC");
    EXPECT_EQ(after("setAttr group.ty 8"), "T") << "through the connection";
    EXPECT_EQ(after("rename ball globe; setAttr globe.tx 9"), "XT") << "by another name";
    // During playback jobs wait; what changed meanwhile is no news afterwards.
    host::conditions::set("playingBack", true);
    EXPECT_EQ(after("setAttr globe.tx 10"), "");
    host::conditions::set("playingBack", false);
    EXPECT_EQ(after("setAttr globe.tx 11"), "XT");
    EXPECT_EQ(after("delete globe"), "");
    EXPECT_EQ(jobs(), 0);
    EXPECT_EQ(after("undo; setAttr globe.tx 12"), "") << "ended with its node";

    EXPECT_EQ(resultOf("scriptJob -ac nobody.tx \"\""),
              "error: line 1: No object matches name: nobody.tx");
    EXPECT_EQ(resultOf("scriptJob -ac group \"\""), "error: line 1: No attribute was specified.");
    EXPECT_EQ(resultOf("scriptJob -ac \"\" \"\""), "error: line 1: No attribute was specified.");
}

TEST_F(ScriptJobs, HearOfNodesAndOfAttributesThatComeAndGo) {
    output("scriptJob -nodeNameChanged ball \"print N;\"; scriptJob -nodeDeleted ball \"print D;\";"
           "scriptJob -attributeAdded group.level \"print A;\"; scriptJob -ro true -nd group \"\"");
    EXPECT_EQ(after("rename ball globe"), "N");
    EXPECT_EQ(after("setAttr globe.tx 4; rename group crowd"), "");
    EXPECT_EQ(after("addAttr -ln level -at double crowd"), "A");
    output("scriptJob -attributeDeleted crowd.level \"print G;\"");
    EXPECT_EQ(after("deleteAttr crowd.level"), "G");
    EXPECT_EQ(after("delete globe"), "D");
    EXPECT_EQ(after("undo; delete globe"), "") << "a node is deleted once";
    after("file -f -new");
    EXPECT_EQ(jobs(), 0);
}

TEST_F(ScriptJobs, ConditionsFollowTheScene) {
    host::undoQueue().flush();
    output("scriptJob -ct SomethingSelected \"print S;\"; scriptJob -cf SomethingSelected \"print "
           "s;\";"
           "scriptJob -cc UndoAvailable \"print U;\"; scriptJob -ct RedoAvailable \"print R;\"");
    EXPECT_EQ(after("select ball"), "SU");
    EXPECT_EQ(after("select group"), "");
    EXPECT_EQ(after("undo; undo"), "sUR");
    EXPECT_EQ(resultOf("isTrue RedoAvailable"), "int: 1");
    EXPECT_EQ(after("select ball; delete ball"), "SsU") << resultOf("isTrue SomethingSelected");
    after("select group");
    EXPECT_EQ(after("file -f -new"), "sU");
}

TEST_F(ScriptJobs, MayEndFailAndStartEachOther) {
    output(
        "global int $self, $other, $count;"
        "$self = `scriptJob -e SelectionChanged \"scriptJob -k $self -k $other; error broken;\"`;"
        "$other = `scriptJob -e SelectionChanged \"print other;\"`;"
        "scriptJob -ro on -e SelectionChanged \"print once; error again;\"");
    EXPECT_EQ(after("select ball"), "once");
    EXPECT_THAT(errors, HasSubstr("broken"));
    EXPECT_THAT(errors, HasSubstr("again"));
    EXPECT_EQ(jobs(), 0);
    // One that sets itself off waits for the next idle: the program goes on meanwhile.
    output("scriptJob -e SelectionChanged \"print ($count++); select -tgl ball\"");
    EXPECT_EQ(after("select group"), "0");
    EXPECT_EQ(after(""), "1");
    EXPECT_EQ(after("scriptJob -ka"), "");
    // Jobs that kill all while some are due, and one that makes another.
    output("scriptJob -e Redo \"scriptJob -killAll\"; scriptJob -pro -e Redo \"print stays;\";"
           "scriptJob -ro on -e Undo \"scriptJob -e Undo \\\"print made;\\\"\"");
    host::events::emit("Redo");
    host::events::emit("Undo");
    EXPECT_EQ(after(""), "stays");
    output("scriptJob -ka -f; scriptJob -ro on -e Undo \"scriptJob -e Undo \\\"print made;\\\"\"");
    host::events::emit("Undo");
    EXPECT_EQ(after(""), "");
    host::events::emit("Undo");
    EXPECT_EQ(after(""), "made");
}

TEST_F(ScriptJobs, IdleJobsRunWheneverThereIsNothingElse) {
    output("global int $turns; scriptJob -ie \"if (++$turns == 3) scriptJob -ka;\"");
    for (int i = 0; i < 6; ++i)
        idle();
    EXPECT_EQ(resultOf("$turns"), "int: 3");
    output("scriptJob -e idle \"$turns++\"");
    idle();
    idle();
    EXPECT_EQ(resultOf("$turns"), "int: 5");
    output("scriptJob -ka");
    EXPECT_FALSE(host::idle::drain() && host::idle::drain()) << "nothing keeps the program awake";
}

TEST_F(ScriptJobs, ProtectedPermanentAndReplacedOnes) {
    output("global int $p, $f; $p = `scriptJob -per -e Undo \"\"`; $f = `scriptJob -pro -e Undo "
           "\"\"`");
    EXPECT_THAT(resultOf("scriptJob -k $p -f"), HasSubstr("is permanent"));
    EXPECT_THAT(resultOf("scriptJob -k $f"), HasSubstr("is protected"));
    output("scriptJob -ka -f");
    EXPECT_EQ(jobs(), 1);
    host::script::killAllScriptJobs();
    output("scriptJob -p win -e Undo \"\"; scriptJob -e Undo \"\"");
    output("scriptJob -p win -rp -e Redo \"\"");
    EXPECT_EQ(jobs(), 2) << "only those of the parent are replaced";
    EXPECT_THAT(resultOf("scriptJob -rp -e Redo \"\""), HasSubstr("-parent"));
    EXPECT_THAT(resultOf("scriptJob -e Undo \"\" -ct playingBack \"\""), HasSubstr("-event"));
    EXPECT_EQ(resultOf("scriptJob -k one"),
              "error: line 1: Flag '-k' must be passed an integer argument");
    EXPECT_EQ(resultOf("scriptJob -xyz"), "error: line 1: Invalid flag '-xyz'.");
}
