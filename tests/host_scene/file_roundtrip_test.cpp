#include "FileFixture.h"

namespace {

using host::script::quoted;

const std::vector<std::string> hostileTexts = {
    "say \"hi\"",
    "back\\slash\\",
    "two\nlines\r\n\tand a tab",
    "semi;colon // no comment /* neither */",
    "$x `system(\"ls\")` { }",
    "\xd0\x9a\xd0\xb0\xd0\xbc\xd0\xb5\xd1\x80\xd0\xb0 \xe3\x82\xab\xe3\x83\xa1\xe3\x83\xa9 "
    "\xf0\x9f\x8e\xa5",
    "",
};

class RoundTrip : public FileFixture, public ::testing::WithParamInterface<const char*> {
protected:
    std::string name(const std::string& stem) const { return stem + GetParam(); }
    // Saves, forgets the scene and reads it back, without any complaint.
    void reopen(const std::string& stem) {
        save(name(stem));
        run("file -f -new");
        open(name(stem));
        EXPECT_TRUE(errors.empty()) << errors.front();
        EXPECT_TRUE(warnings.empty()) << warnings.front();
        EXPECT_EQ(run("file -q -mf"), "0");
    }
};

INSTANTIATE_TEST_SUITE_P(BothForms, RoundTrip, ::testing::Values(".ma", ".mb"));

TEST_P(RoundTrip, NodesKeepNamesPlacesAndSwitches) {
    run("createNode transform -n a; createNode transform -n x -p a; createNode transform -n b;"
        "createNode transform -n x -p b; setAttr \"a|x.t\" 1 2.5 -1e-7; setAttr \"b|x.ty\" 0.1;"
        "setAttr \"b|x.r\" 90 33.333333333333336 -45; setAttr \"a.sx\" 2; setAttr \"a.v\" 0;"
        "setAttr -l on \"a.tx\"; setAttr -k off -cb on \"a.ty\"; setAttr -k off \"b.v\";"
        "createNode transform -n lone -p \"|b|x\"");
    reopen("nodes");
    EXPECT_EQ(run("listRelatives -c a b"), "x x");
    EXPECT_EQ(run("getAttr \"a|x.t\""), "1 2.5 -1e-07");
    EXPECT_EQ(run("getAttr \"b|x.ty\""), "0.1");
    EXPECT_EQ(run("abs(`getAttr \"b|x.ry\"` - 33.333333333333336) < 1e-12"), "1");
    EXPECT_EQ(run("getAttr a.sx"), "2");
    EXPECT_EQ(run("getAttr a.v"), "0");
    EXPECT_EQ(run("getAttr -l a.tx") + run("getAttr -l a.ty") + run("getAttr -k a.ty") +
                  run("getAttr -cb a.ty") + run("getAttr -k b.v") + run("getAttr -k b.tx"),
              "100101");
    EXPECT_EQ(run("listRelatives -f -p lone"), "|b|x");
}

TEST_P(RoundTrip, AddedAttributesAndTheirTextsSurvive) {
    run("createNode transform -n t; addAttr -ln count -at long -min -3 -max 9 -dv 4 -k 1 t;"
        "addAttr -ln ratio -sn rat -at double t; addAttr -ln small -at \"float\" t;"
        "addAttr -ln flag -at bool t; addAttr -ln mode -at \"enum\" -en \"one:two=5:three\" t;"
        "setAttr t.count -2; setAttr t.ratio 0.30000000000000004; setAttr t.small 0.1;"
        "setAttr t.flag 1; setAttr t.mode 5");
    for (std::size_t i = 0; i < hostileTexts.size(); ++i) {
        const std::string plug = "note" + std::to_string(i);
        run("addAttr -ln " + plug + " -dt \"string\" t; setAttr -type \"string\" t." + plug + " " +
            quoted(hostileTexts[i]));
    }
    reopen("added");
    EXPECT_EQ(run("getAttr t.count") + " " + run("getAttr t.flag") + " " + run("getAttr t.mode"),
              "-2 1 5");
    EXPECT_EQ(run("`getAttr t.ratio` == 0.30000000000000004"), "1");
    EXPECT_EQ(run("getAttr -type t.mode") + run("getAttr -type t.small"), "enumfloat");
    for (std::size_t i = 0; i < hostileTexts.size(); ++i)
        EXPECT_EQ(run("getAttr t.note" + std::to_string(i)), hostileTexts[i]) << "text " << i;
    const QByteArray once = bytes(name("added"));
    save(name("added"));
    EXPECT_EQ(bytes(name("added")), once) << "saving what was read changes nothing";
}

TEST_P(RoundTrip, MotionTimeUnitsAndNotes) {
    run("currentUnit -t pal; polySphere -n ball -r 2; camera -n shotCam -fl 50; rename shotCam1 "
        "shotCam;"
        "setKeyframe -t 1 -at ty -v 5 -itt linear -ott linear ball;"
        "setKeyframe -t 11 -at ty -v 0 -itt linear -ott linear ball;"
        "setKeyframe -t 21 -at ty -v 5 -itt linear -ott step ball;"
        "setKeyframe -t 1 -at ry -v 0 -itt linear -ott linear ball;"
        "setKeyframe -t 21 -at ry -v 90 -itt linear -ott linear ball;"
        "playbackOptions -ast 1 -min 3 -max 40 -aet 48; currentTime 6");
    run("fileInfo \"note\" " + quoted(hostileTexts[0] + hostileTexts[1] + hostileTexts[2]));
    reopen("motion");
    EXPECT_EQ(run("currentUnit -q -t"), "pal");
    EXPECT_EQ(run("currentTime -q"), "6");
    EXPECT_EQ(run("playbackOptions -q -ast") + " " + run("playbackOptions -q -min") + " " +
                  run("playbackOptions -q -max") + " " + run("playbackOptions -q -aet"),
              "1 3 40 48");
    EXPECT_EQ(run("getAttr ball.ty"), "2.5");
    EXPECT_EQ(run("getAttr -t 16 ball.ty") + " " + run("getAttr -t 11 ball.ry"), "2.5 45");
    EXPECT_EQ(run("getAttr shotCamShape.fl"), "50");
    EXPECT_EQ(run("getAttr polySphere1.radius"), "2");
    EXPECT_EQ(run("listConnections -s 1 -d 0 ballShape.inMesh"), "polySphere1");
    EXPECT_EQ(run("fileInfo -q note"), hostileTexts[0] + hostileTexts[1] + hostileTexts[2]);
    EXPECT_EQ(run("size(`ls -type script`)"), "0") << "the settings are no node here";
}

TEST_P(RoundTrip, PluginDataTravelWhateverTheyHold) {
    loadTestPlugin();
    for (std::size_t i = 0; i < hostileTexts.size(); ++i)
        run("hostTestData -text " + quoted(hostileTexts[i]) + " -numbers " +
            std::to_string(i * 7919) + " `createNode -n d" + std::to_string(i) +
            " hostTestNode`; setAttr d" + std::to_string(i) + ".amount -2.25");
    run("createNode hostTestLocator -n empty");
    reopen("data");
    for (std::size_t i = 0; i < hostileTexts.size(); ++i) {
        SCOPED_TRACE("text " + std::to_string(i));
        const std::string node = "d" + std::to_string(i);
        const auto n = static_cast<long long>(i) * 7919;
        std::string text = hostileTexts[i];
        if (i == 2 && std::string(GetParam()) == ".ma") {
            EXPECT_EQ(run("hostTestData " + node), text);
        }
        EXPECT_EQ(run("hostTestData " + node), text);
        EXPECT_EQ(run("hostTestData -total " + node), std::to_string(n * (n - 3) / 2));
        EXPECT_EQ(run("getAttr " + node + ".amount"), "-2.25");
    }
    EXPECT_EQ(run("hostTestData empty"), "(none)");
    // Made interactively it gave itself 7; a node that is being read leaves what was saved.
    EXPECT_EQ(run("getAttr empty.amount"), "7");
    EXPECT_EQ(run("getAttr (`createNode hostTestLocator` + \".amount\")"), "7");
    EXPECT_NE(bytes(name("data")).indexOf("hosttestplugin"), -1);
}

TEST_P(RoundTrip, LockedDataComeBackAndStayLocked) {
    loadTestPlugin();
    run("createNode hostTestNode -n d; hostTestData -text \"kept\" -numbers 5 d; "
        "setAttr -lock 1 d.payload; createNode hostTestNode -n e; "
        "hostTestData -text \"too\" -numbers 3 e; lockNode e");
    reopen("locked");
    EXPECT_EQ(run("hostTestData d") + run("hostTestData e"), "kepttoo");
    EXPECT_EQ(run("getAttr -lock d.payload"), "1");
    if (std::string(GetParam()) == ".mb")
        return;
    // As others write it: in one statement, or the lock first.
    QByteArray text = bytes(name("locked"));
    const QByteArray lock = "\tsetAttr -l on \".pay\";\n";
    ASSERT_GT(text.indexOf(lock), text.indexOf("\tsetAttr \".pay\" -type"));
    text.replace(lock, "");
    for (const char* beginning : {"\tsetAttr -l on \".pay\" -type",
                                  "\tsetAttr -l on \".pay\";\n\tsetAttr \".pay\" -type"}) {
        QByteArray other = text;
        write("other.ma", other.replace("\tsetAttr \".pay\" -type", beginning));
        open("other.ma");
        EXPECT_EQ(run("hostTestData d") + run("getAttr -lock d.payload"), "kept1") << beginning;
    }
}

TEST_P(RoundTrip, DataThatReadWronglyHarmNothingElse) {
    loadTestPlugin();
    run("createNode hostTestNode -n d; hostTestData -text \"LAZY\" -numbers 5000 d;"
        "createNode hostTestNode -n e; hostTestData -text \"GREEDY\" -numbers 50 e;"
        "createNode hostTestNode -n f; hostTestData -text \"fine\" -numbers 3 f;"
        "createNode transform -n after; setAttr after.tx 4");
    reopen("wrong");
    EXPECT_EQ(run("hostTestData d") + run("hostTestData e") + run("hostTestData f"),
              "LAZYGREEDYfine");
    EXPECT_EQ(run("hostTestData -total f"), "0");
    EXPECT_EQ(run("getAttr after.tx"), "4");
}

TEST_P(RoundTrip, AScenePassesThroughAHostWithoutThePlugin) {
    loadTestPlugin();
    run("createNode transform -n p; createNode hostTestLocator -n loc -p p; setAttr loc.amount 3;"
        "hostTestData -text \"keep \\\"me\\\"\" -numbers 40 loc; createNode hostTestNode -n dg;"
        "hostTestData -text \"too\" -numbers 2 dg; connectAttr loc.amount dg.amount;"
        "createNode transform -n other; setAttr other.ty 6");
    save(name("with"));
    run("file -f -new; unloadPlugin hosttestplugin");
    open(name("with"));
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_TRUE(mentions(warnings, "hosttestplugin"));
    EXPECT_TRUE(mentions(warnings, "hostTestLocator"));
    EXPECT_EQ(run("getAttr other.ty"), "6");
    EXPECT_EQ(run("nodeType loc") + run("nodeType dg"), "unknownDagunknown");
    run("setAttr other.ty 7; rename p q");
    save(name("through"));

    const std::string otherForm = std::string(GetParam()) == ".ma" ? "other.mb" : "other.ma";
    if (otherForm == "other.ma") { // binary data cannot be turned into words without the plug-in
        run("file -rename " + quotedPath(otherForm) + "; file -type mayaAscii");
        EXPECT_NE(failing("file -save").find("loc.pay"), std::string::npos);
        save(otherForm, true);
    } else {
        save(otherForm);
    }

    forget();
    run("file -f -new");
    loadTestPlugin();
    open(name("through"));
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("listRelatives -p loc"), "q");
    EXPECT_EQ(run("hostTestData loc") + run("hostTestData dg"), "keep \"me\"too");
    EXPECT_EQ(run("hostTestData -total loc"), "740");
    EXPECT_EQ(run("getAttr dg.amount"), "3") << "the connection came through too";
    EXPECT_EQ(run("getAttr other.ty"), "7");
}

TEST_P(RoundTrip, ImportingMakesNamesUniqueAndKeepsTheFilesOwnHierarchy) {
    loadTestPlugin();
    run("currentUnit -t film; createNode transform -n a; createNode transform -n x -p a;"
        "setAttr x.tx 3; createNode hostTestLocator -n l -p x; hostTestData -text \"it\" -numbers "
        "1 l;"
        "setKeyframe -t 24 -at ty -v 1 a; setKeyframe -t 48 -at ty -v 2 a");
    save(name("part"));
    run("file -f -new; currentUnit -t pal; createNode transform -n a; setAttr a.tx 9");
    run("file -import " + quotedPath(name("part")));
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("getAttr a.tx") + run("listRelatives -p x") + run("getAttr x.tx"), "9a13");
    EXPECT_EQ(run("hostTestData l"), "it");
    EXPECT_EQ(run("currentUnit -q -t"), "pal");
    EXPECT_EQ(run("keyframe -q -tc a1"), "25 50") << "one second stays one second";
    EXPECT_EQ(run("file -q -mf"), "1");
    EXPECT_EQ(run("undoInfo -q -undoQueueEmpty"), "1") << "an import is not undone";
}

} // namespace
