#include "FileFixture.h"

namespace {

class Commands : public FileFixture {};

struct Undoable {
    const char* setup;
    const char* command;
    const char* query;
    const char* before;
    const char* after;
};

// Each command once: what it does, and that undo and redo do the same again and again.
const Undoable undoables[] = {
    {"", "createNode transform -n a", "objExists a", "0", "1"},
    {"", "createNode camera -n c", "ls -type camera -tail 1", "sideShape", "c"},
    {"createNode transform -n a; createNode transform -n b -p a; setAttr b.tx 3; select b",
     "delete a", "ls -sl", "b", ""},
    {"polySphere -n s", "delete sShape", "size(`ls s sShape`)", "2", "0"},
    {"createNode transform -n a", "rename a z", "objExists z", "0", "1"},
    {"polyCube -n box1; rename box1 crate1", "rename crate1 k2", "listRelatives -s `ls -sl`",
     "crateShape1", "kShape2"},
    {"createNode transform -n a; move 1 2 3 a; createNode transform -n b", "parent b a",
     "getAttr b.t", "0 0 0", "-1 -2 -3"},
    {"createNode transform -n a; createNode transform -n b", "parent b a", "listRelatives -c a", "",
     "b"},
    {"createNode transform -n a -p `createNode transform -n b`", "parent -w a",
     "listRelatives -f -p a", "|b", ""},
    {"createNode transform -n a; setAttr a.ty 4", "duplicate -n d a", "ls d", "", "d"},
    {"createNode transform -n a", "setAttr a.t 1 2 3", "getAttr a.t", "0 0 0", "1 2 3"},
    {"createNode transform -n a", "setAttr -l on a.tx", "getAttr -l a.tx", "0", "1"},
    {"createNode transform -n a", "setAttr -k off a.tx", "getAttr -k a.tx", "1", "0"},
    {"createNode transform -n a", "addAttr -ln mm -at double -dv 2 a", "attributeQuery -ex -n a mm",
     "0", "1"},
    {"createNode transform -n a; addAttr -ln mm -at double a; setAttr a.mm 5", "deleteAttr a.mm",
     "objExists a.mm", "1", "0"},
    {"createNode transform -n a; addAttr -ln mm -at double a; createNode transform -n b;"
     "setAttr a.mm 5; connectAttr a.mm b.tx",
     "deleteAttr a.mm", "size(`listConnections b.tx`) + getAttr(\"b.tx\")", "6", "5"},
    {"createNode transform -n a; createNode transform -n b; setAttr a.tx 7",
     "connectAttr a.tx b.ty", "getAttr b.ty", "0", "7"},
    {"createNode transform -n a; createNode transform -n b; connectAttr a.tx b.ty",
     "disconnectAttr a.tx b.ty", "size(`listConnections b.ty`)", "1", "0"},
    {"createNode transform -n a; createNode transform -n b; select a", "select -add b", "ls -sl",
     "a", "a b"},
    {"createNode transform -n a; select a", "select -cl", "ls -sl", "a", ""},
    {"createNode transform -n a; rotate 0 90 0 a; createNode transform -n b -p a",
     "move -r 2 0 0 b", "getAttr b.tz", "0", "2"},
    {"createNode transform -n a", "rotate 10 20 30 a", "getAttr a.r", "0 0 0", "10 20 30"},
    {"createNode transform -n a; scale 2 2 2 a", "scale 3 1 1 a", "getAttr a.s", "2 2 2", "6 2 2"},
    {"createNode transform -n a", "xform -t 1 0 0 -ro 0 0 5 -s 1 2 1 a",
     "xform -q -t a; getAttr a.rz", "0", "5"},
    {"", "polyPlane -n p", "size(`ls p pShape polyPlane1`)", "0", "3"},
    {"createNode transform -n a", "setKeyframe -t 5 -v 2 -at tx a", "keyframe -q -kc a", "0", "1"},
    {"createNode transform -n a; setKeyframe -t 1 -v 1 -at tx a", "setKeyframe -t 5 -v 2 -at tx a",
     "keyframe -q -vc a", "1", "1 2"},
    {"", "currentUnit -t pal", "currentUnit -q -t", "film", "pal"},
    {"createNode transform -n a", "lockNode a", "lockNode -q a", "0", "1"},
    {"createNode transform -n a; createNode transform -n b", "group -n g a b", "listRelatives -c g",
     "", "a b"},
};

TEST_F(Commands, TimeGoesItsOwnWayOutsideOfUndo) {
    run("file -f -new");
    run("createNode transform -n a; currentTime 12; undo");
    EXPECT_EQ(host::script::execute("currentTime -q").display(), "12");
    EXPECT_EQ(host::script::execute("objExists a").display(), "0");
}

TEST_F(Commands, DoUndoAndRedo) {
    for (const Undoable& each : undoables) {
        SCOPED_TRACE(each.command);
        run("file -f -new");
        run(each.setup);
        // Where the node does not exist yet, asking for it may fail; that counts as nothing.
        const auto ask = [&]() -> std::string {
            try {
                return host::script::execute(each.query).display();
            } catch (const host::script::ScriptError&) {
                return "";
            }
        };
        run("file -mf 0");
        EXPECT_EQ(ask(), each.before);
        run(each.command);
        EXPECT_EQ(ask(), each.after);
        for (int round = 0; round < 2; ++round) {
            run("undo");
            EXPECT_EQ(ask(), each.before) << "undo " << round;
            run("redo");
            EXPECT_EQ(ask(), each.after) << "redo " << round;
        }
    }
}

TEST_F(Commands, RefuseWithWordsAndChangeNothing) {
    const std::pair<const char*, const char*> refusals[] = {
        {"delete persp", "default node"},
        {"delete nothing", "No object matches name: nothing"},
        {"delete two", "More than one object matches name: two"},
        {"setAttr two.tx 1", "More than one object matches name: two"},
        {"rename a \"\"", "no legal characters"},
        {"rename persp x", "read-only"},
        {"parent a b", "one of its children"},
        {"parent a aShape", "No object matches name: aShape"},
        {"parent b nothing drive", "No object matches name: nothing"},
        {"group b nothing", "No object matches name: nothing"},
        {"group b time1", "Only DAG nodes have a parent: time1"},
        {"group -parent b a", "one of its children"},
        {"setAttr a.nope 1", "No object matches name: a.nope"},
        {"setAttr a.tx", "No value"},
        {"setAttr a.tx \"word\"", "takes a number"},
        {"setAttr b.t 1 2", "data element"},
        {"setAttr b.t 1 2 3 4", "Too many values"},
        {"setAttr a.ty 5", "locked or connected"},
        {"setAttr a.tz 5", "locked or connected"},
        {"move 0 3 0 a", "locked or connected"},
        {"connectAttr b.tx a.tz", "already has an incoming connection"},
        {"connectAttr a.tx a.ty", "locked"},
        {"disconnectAttr a.tx b.tx", "no connection"},
        {"deleteAttr a.tx", "static attribute"},
        {"addAttr -ln tx -at double a", "same name"},
        {"addAttr -ln q -at banana a", "unknown"},
        {"createNode banana", "Unknown object type: banana"},
        {"createNode shape", "Unknown object type: shape"},
        {"select nothing", "No object matches name: nothing"},
        {"ls -type banana", "Unknown object type: banana"},
        {"currentUnit -t fortnight", "Invalid unit"},
        {"setKeyframe -itt wavy -at tx a", "Invalid tangent type"},
        {"playbackOptions -often once", "Invalid flag '-often'"},
        {"getAttr a.message", "cannot be displayed"},
    };
    run("createNode transform -n a; createNode transform -n b -p a; createNode transform -n drive;"
        "createNode transform -n two -p a; createNode transform -n two -p drive;"
        "connectAttr drive.tx a.tz; setAttr -l on a.ty; select b; flushUndo; file -mf 0");
    const char* state = "stringArrayToString(`ls`, \" \") + stringArrayToString(`ls -sl`, \" \") + "
                        "`getAttr a.tx` + `getAttr b.tx` + `file -q -mf`";
    const std::string before = run(state);
    for (const auto& [script, words] : refusals) {
        EXPECT_NE(failing(script).find(words), std::string::npos)
            << script << " said: " << failing(script);
        EXPECT_EQ(run(state), before) << script;
    }
}

TEST_F(Commands, ListsSayWhatIsThere) {
    run("createNode transform -n grp1; polySphere -n ball; parent ball grp1;"
        "createNode transform -n grp2; createNode transform -n ball -p grp2; select grp2");
    const std::pair<const char*, const char*> answers[] = {
        {"ls ball", "grp1|ball grp2|ball"},
        {"ls \"grp*\"", "grp1 grp2"},
        {"ls \"*ll\"", "grp1|ball grp2|ball"},
        {"ls -type mesh", "ballShape"},
        {"ls -l -type mesh", "|grp1|ball|ballShape"},
        {"ls -s -dag \"ballSh*\"", "ballShape"},
        {"ls -dag grp1", "grp1 grp1|ball ballShape"},
        {"ls -dag -l -tr grp1 \"grp1|ball\"", "|grp1 |grp1|ball"},
        {"ls -dag -sl", "grp2 grp2|ball"},
        {"ls -dag -sl grp1", ""},
        {"ls -as grp1 ball", "grp1"},
        {"ls -ca", "perspShape topShape frontShape sideShape"},
        {"ls -st grp2", "grp2 transform"},
        {"ls -hd 1 \"grp*\"", "grp1"},
        {"ls -et mesh -et camera", "perspShape topShape frontShape sideShape ballShape"},
        {"ls -dag -ext camera -ext mesh -s", ""},
        {"setAttr grp1.v 0; setAttr grp2.template 1; ls -iv -s", "perspShape topShape frontShape "
                                                                 "sideShape ballShape"},
        {"ls -v -tr \"grp*\"", "grp2"},
        {"ls -tm", "grp2"},
        {"ls -ut \"grp*\"", "grp1"},
        {"ls -g", "ballShape"},
        {"ls -lf \"grp*\" \"*|ball\" ballShape", "grp2|ball ballShape"},
        {"lockNode grp2; ls -ln \"grp*\"", "grp2"},
        {"lockNode -l 0 grp2; select grp2 grp1; ls -os", "grp2 grp1"},
        {"listRelatives -ad grp1", "ballShape ball"},
        {"listRelatives -ad -f grp1", "|grp1|ball|ballShape |grp1|ball"},
        {"listRelatives -s \"grp1|ball\"", "ballShape"},
        {"listRelatives -p ballShape", "ball"},
        {"listRelatives -p -pa ballShape", "grp1|ball"},
        {"nodeType ballShape", "mesh"},
        {"nodeType grp1.tx", "transform"},
        {"objExists \"grp2|ball\"", "1"},
        {"objExists \"grp2|ball.tx\"", "1"},
        {"objExists \"grp2|ball.nope\"", "0"},
        {"objExists ball7", "0"},
        {"getAttr -type grp1.t", "double3"},
        {"getAttr -type grp1.tx", "doubleLinear"},
        {"getAttr -type grp1.rx", "doubleAngle"},
        {"getAttr -type grp1.v", "bool"},
        {"xform -q -ws -t grp2", "0 0 0"},
        {"camera -q -fl persp", "35"},
        {"setKeyframe -t 3 -v 1 -at tx grp1; setKeyframe -t 4 -v 1 -at ty grp1;"
         "keyframe -q -tc -at tx grp1",
         "3"},
        {"keyframe -q -tc grp1", "3 4"},
    };
    for (const auto& [script, answer] : answers)
        EXPECT_EQ(run(script), answer) << script;
}

TEST_F(Commands, WorldAndLocalSpaceAgree) {
    run("createNode transform -n p; move 1 2 3 p; rotate 20 40 -60 p; scale 2 2 2 p;"
        "createNode transform -n c -p p; move 5 6 7 c");
    EXPECT_EQ(
        run("float $w[] = `xform -q -ws -t c`; abs($w[0]-5) + abs($w[1]-6) + abs($w[2]-7) < 1e-9"),
        "1");
    run("float $m[] = `xform -q -ws -m c`; parent -w c; float $n[] = `xform -q -ws -m c`;"
        "float $d = 0; for ($i = 0; $i < 16; ++$i) $d += abs($m[$i] - $n[$i]);");
    EXPECT_EQ(run("$d < 1e-9"), "1") << "a change of parent keeps the place in the world";
    run("undo; move -ls 1 0 0 c");
    EXPECT_EQ(run("getAttr c.t"), "1 0 0");
}

} // namespace
