#include "FileFixture.h"

#include <random>

namespace {

class Damage : public FileFixture, public ::testing::WithParamInterface<const char*> {
protected:
    std::string name(const std::string& stem) const { return stem + GetParam(); }
    void makeScene(const std::string& stem) {
        loadTestPlugin();
        run("createNode transform -n first; setAttr first.tx 1.5;"
            "createNode hostTestNode -n d; hostTestData -text \"text\" -numbers 700 d;"
            "createNode transform -n last; setAttr last.tx 2.5");
        save(name(stem));
        run("file -f -new");
        forget();
    }
    // Opens whatever it is; false when that ended with an error.
    bool tryOpen(const std::string& file) {
        try {
            host::script::execute("file -f -o " + quotedPath(file));
            return true;
        } catch (const host::script::ScriptError&) {
            return false;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(BothForms, Damage, ::testing::Values(".ma", ".mb"));

TEST_P(Damage, ACutFileIsReportedAndGivesWhatStandsBeforeTheCut) {
    makeScene("whole");
    const QByteArray whole = bytes(name("whole"));
    const auto firstNode = whole.indexOf("first");
    const auto data = whole.indexOf("hostTestData", whole.indexOf("pay"));
    ASSERT_GT(data, firstNode);
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        const int cut = round < 20 ? int(data) + round * 40 : int(random() % (whole.size() - 2));
        write(name("cut"), whole.left(cut));
        forget();
        EXPECT_FALSE(tryOpen(name("cut"))) << cut;
        if (cut > data) {
            EXPECT_EQ(run("getAttr first.tx"), "1.5") << cut;
        }
        EXPECT_EQ(run("objExists persp"), "1") << "cut at " << cut;
    }
    // Saving over such a file would lose what is still in it.
    write(name("cut"), whole.left(whole.size() / 2));
    tryOpen(name("cut"));
    EXPECT_NE(failing("file -save").find("Errors occurred"), std::string::npos);
    EXPECT_EQ(bytes(name("cut")), whole.left(whole.size() / 2));
    run("file -f -save");
}

TEST_P(Damage, FlippedBitsNeverDoMoreThanSpoilWhatTheyHit) {
    makeScene("whole");
    const QByteArray whole = bytes(name("whole"));
    const bool binary = std::string(GetParam()) == ".mb";
    std::mt19937 random(17);
    int kept = 0;
    constexpr int rounds = 150;
    for (int round = 0; round < rounds; ++round) {
        QByteArray flipped = whole;
        const int at = int(random() % unsigned(whole.size()));
        flipped[at] = char(flipped[at] ^ (1 << (random() % 8)));
        write(name("flipped"), flipped);
        forget();
        const bool opened = tryOpen(name("flipped"));
        if (binary) {
            EXPECT_FALSE(opened) << "the checksum of byte " << at << " went unnoticed";
        }
        EXPECT_EQ(run("objExists persp"), "1") << "byte " << at;
        const bool intact = run("objExists first") == "1" && run("objExists last") == "1" &&
                            run("getAttr first.tx") + run("getAttr last.tx") == "1.52.5";
        kept += intact ? 1 : 0;
    }
    EXPECT_GT(kept, rounds * 3 / 4) << "most flips hit the data, the nodes around stay";
}

TEST_P(Damage, ForeignAndMissingFilesLeaveTheSceneAlone) {
    run("createNode transform -n mine");
    write("notes.txt", "just text\n");
    write("empty.ma", "");
    EXPECT_NE(failing("file -f -o " + quotedPath("gone.ma")).find("File not found"),
              std::string::npos);
    EXPECT_NE(failing("file -f -o " + quotedPath("notes.txt")).find("unknown type"),
              std::string::npos);
    failing("file -f -o " + quotedPath("empty.ma"));
    failing("file -f -o " + host::script::quoted(folder.path().toStdString()));
    EXPECT_EQ(run("objExists mine") + run("file -q -mf"), "11");
    EXPECT_EQ(failing("file -o " + quotedPath("notes.txt")), "Unsaved changes.");
}

class Ascii : public FileFixture {};

TEST_F(Ascii, WhatMayaWritesIsUnderstoodOrKept) {
    write(
        "maya.ma",
        "//Maya ASCII 2024 scene\n//Name: maya.ma\n//Codeset: 1252\n"
        "requires maya \"2024\";\nrequires -nodeType \"aiOptions\" \"mtoa\" \"5.3.1.1\";\n"
        "currentUnit -l centimeter -a degree -t ntsc;\nfileInfo \"application\" \"maya\";\n"
        "createNode transform -s -n \"persp\";\n\trename -uid \"A1\";\n"
        "\tsetAttr \".v\" no;\n\tsetAttr \".t\" -type \"double3\" 28 21 28 ;\n"
        "createNode camera -s -n \"perspShape\" -p \"persp\";\n"
        "\tsetAttr -k off \".v\" no;\n\tsetAttr \".fl\" 34.999999999999993;\n"
        "createNode transform -n \"ball\";\n\trename -uid \"B2\";\n"
        "createNode lightLinker -s -n \"lightLinker1\";\n\tsetAttr -s 2 \".lnk\";\n"
        "createNode animCurveTL -n \"ball_translateX\";\n\tsetAttr \".tan\" 18;\n\tsetAttr "
        "\".pst\" 3;\n"
        "\tsetAttr -s 3 \".ktv[0:2]\"  0 0 15 3\n\t\t30 0;\n\tsetAttr -s 3 \".kit[0:2]\"  2 2 2;\n"
        "\tsetAttr -s 3 \".kot[0:2]\"  2 2 2;\n"
        "createNode script -n \"sceneConfigurationScriptNode\";\n"
        "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min 0 -max 30 -ast 0 -aet 60 \";\n"
        "\tsetAttr \".st\" 6;\n"
        "select -ne :time1;\n\tsetAttr -av -k on \".cch\";\n\tsetAttr \".o\" 15;\n"
        "select -ne :hardwareRenderingGlobals;\n\tsetAttr \".otfna\" -type \"stringArray\" 1 "
        "\"x\";\n"
        "connectAttr \"ball_translateX.o\" \"ball.tx\";\n"
        "relationship \"link\" \":lightLinker1\" \":a.message\" \":b.message\";\n"
        "dataStructure -fmt \"raw\" -as \"name=x:bool=y\";\n"
        "// End of maya.ma\n");
    open("maya.ma");
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("getAttr ball.tx"), "3");
    EXPECT_EQ(run("getAttr -t 20 ball.tx"), "2");
    EXPECT_EQ(run("getAttr -t 50 ball.tx"), "2") << "it cycles";
    EXPECT_EQ(run("playbackOptions -q -max") + " " + run("currentUnit -q -t"), "30 ntsc");
    EXPECT_EQ(run("getAttr persp.t"), "28 21 28");
    EXPECT_EQ(run("nodeType lightLinker1"), "unknown");
    save("again.ma");
    const QByteArray again = bytes("again.ma");
    EXPECT_NE(again.indexOf("createNode lightLinker"), -1);
    EXPECT_NE(again.indexOf("setAttr \".pst\" 3;"), -1);
    EXPECT_NE(again.indexOf("requires maya \"2024\";"), -1);
}

TEST_F(Ascii, NothingInAFileRunsAsScript) {
    write("evil.ma",
          "//Maya ASCII 2024 scene\nrequires maya \"2024\";\n"
          "createNode transform -n \"a\";\n\tsetAttr \".tx\" 2;\n"
          "optionVar -iv \"fileRan\" 1;\neval \"optionVar -iv fileRan 1\";\n"
          "python(\"import os\");\nglobal proc p() { optionVar -iv fileRan 1; }\n"
          "if (1) { optionVar -iv \"fileRan\" 1; }\n"
          "createNode transform -n \"b\";\n\tsetAttr \".tx\" 3;\n"
          "createNode script -n \"sceneConfigurationScriptNode\";\n"
          "\tsetAttr \".b\" -type \"string\" \"optionVar -iv fileRan 1; playbackOptions -min 1\";\n"
          "requires \"../../x\" \"1\";\nrequires \"/tmp/evil.so\" \"1\";\n"
          "// End of evil.ma\n");
    run("optionVar -rm fileRan");
    open("evil.ma");
    EXPECT_EQ(run("optionVar -exists fileRan"), "0");
    EXPECT_EQ(run("getAttr a.tx") + run("getAttr b.tx"), "23");
    EXPECT_TRUE(mentions(warnings, "evil.ma, line 5: ")) << "the place is named";
}

TEST_F(Ascii, ASceneBringsInAPluginThatIsOnThePath) {
    loadTestPlugin();
    run("createNode hostTestNode -n d; hostTestData -text \"t\" -numbers 1 d");
    save("auto.ma");
    run("file -f -new; unloadPlugin hosttestplugin");
    qputenv("MAYA_PLUG_IN_PATH", QFileInfo(support::testPluginPath()).absolutePath().toLocal8Bit());
    forget();
    open("auto.ma");
    EXPECT_EQ(run("pluginInfo -q -loaded hosttestplugin"), "1");
    EXPECT_EQ(run("hostTestData d"), "t");
    EXPECT_TRUE(warnings.empty()) << warnings.front();
}

} // namespace
