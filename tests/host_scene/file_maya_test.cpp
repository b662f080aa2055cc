// Scenes as Maya 2015 to 2026 write them: what the host understands, and that a save loses nothing
// of the rest.
#include "FileFixture.h"
#include "scene/files/AsciiTokens.h"
#include "scene/text/StatementText.h"

#include <QBuffer>

#include <algorithm>
#include <set>

namespace {

class FromMaya : public FileFixture {
protected:
    // A scene around `body`, with head and end as they should be.
    void writeScene(const std::string& name, const std::string& body) const {
        write(name, QByteArray::fromStdString("//Maya ASCII 2024 scene\n//Name: " + name +
                                              "\n//Codeset: UTF-8\nrequires maya \"2024\";\n" +
                                              body + "// End of " + name + "\n"));
    }
    // The statements of a file, each as its words; the order does not count.
    static std::multiset<std::string> statements(QByteArray text) {
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        host::AsciiScanner scanner(buffer);
        host::Statement statement;
        std::multiset<std::string> result;
        while (scanner.next(statement) == host::AsciiScanner::Result::Statement)
            result.insert(host::statementText(statement.tokens));
        return result;
    }
    static int count(const QByteArray& text, const char* part) { return int(text.count(part)); }
};

// One of everything, in the order and the layout of real files.
const char* const wholeScene =
    R"(file -rdi 1 -ns "rig" -rfn "rigRN" -op "v=0;" -typ "mayaAscii"
		 "/shows/one/assets//rig.ma";
file -rdi 2 -ns "prop" -dr 1 -rfn "rig:propRN" -op "v=0;" -typ "mayaAscii" "/shows/one/assets//prop.ma";
file -r -ns "rig" -dr 1 -rfn "rigRN" -op "VERS|2024|UVER|undef|INCL|undef(|LUNI|cm|" -typ
		 "mayaAscii" "/shows/one/assets//rig.ma";
requires "stereoCamera" "10.0";
requires -nodeType "wavyDeformer" -nodeType "wavyField"
		 -dataType "wavyData" "wavy" "5.3.4.1";
requires "stereoCamera" "10.0";
currentUnit -l centimeter -a degree -t ntsc;
fileInfo "application" "maya";
fileInfo "product" "Maya 2024";
fileInfo "osv" "Windows 10 Pro v2009 (Build: 19045)\n";
fileInfo "UUID" "5C5D1D6B-4B2B-93C7-8B43-1B9E5D1C7A10";
workspace -fr "mayaAscii" "scenes";
createNode transform -s -n "persp";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A01";
	setAttr ".v" no;
	setAttr ".t" -type "double3" -1.5 7.25 1.2345678901234567 ;
	setAttr ".rpt" -type "double3" 3.9e-15 -1.4e-15 2.3e-15 ;
createNode camera -s -n "perspShape" -p "persp";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A02";
	setAttr -k off ".v" no;
	setAttr ".fl" 34.999999999999993;
	setAttr ".imn" -type "string" "persp";
	setAttr ".hc" -type "string" "viewSet -p %camera";
createNode transform -n "pCube1";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A03";
	addAttr -dcb 0 -ci true -k true -sn "w0" -ln "handW0" -nn "Weight" -dv 1 -min 0 -at "double";
	addAttr -ci true -sn "nts" -ln "notes" -dt "string";
	addAttr -s false -ci true -m -sn "fbd" -ln "faceBlindData" -at "compound" -nc 1;
	addAttr -ci true -sn "extrudeSide" -ln "extrudeSide" -at "long" -p "faceBlindData";
	setAttr -av ".s" -type "double3" 2 2 2 ;
	setAttr -l on -k off ".rx";
	setAttr -k on ".w0" 0.25;
	setAttr ".nts" -type "string" "first line\nsecond \"quoted\" \\ one";
	setAttr -s 3 ".fbd[0:2]"  0 1 0;
createNode mesh -n "pCubeShape1" -p "pCube1";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A04";
	setAttr -k off ".v";
	setAttr -s 8 ".iog[0].og";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 4 ".uvst[0].uvsp[0:3]" -type "float2" 0.375 0 0.625 0 0.375
		 0.25 0.625 0.25;
	setAttr -s 4 ".vt[0:3]"  -0.5 -0.5 0.5 0.5 -0.5 0.5 -0.5 0.5 0.5 0.5 0.5 0.5;
	setAttr -s 1 -ch 4 ".fc[0]" -type "polyFaces"
		f 4 0 1 3 -3
		mu 0 4 0 1 3 2;
	setAttr ".cd" -type "dataPolyComponent" Index_Data Edge 0 ;
createNode joint -n "hip";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A05";
	addAttr -ci true -sn "liw" -ln "lockInfluenceWeights" -min 0 -max 1 -at "bool";
	setAttr ".bps" -type "matrix" 1 0 0 0 0 1 0 0
		 0 0 1 0 0 2.5 0 1;
createNode joint -n "knee" -p "hip";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A06";
createNode transform -n "pad" -p "knee";
	setAttr ".ty" 3;
lockNode -l 1 -lu 1;
parent -s -nc -r -add "|pCube1|pCubeShape1" "pad" ;
createNode lightLinker -s -n "lightLinker1";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A07";
	setAttr -s 2 ".lnk";
createNode reference -n "rigRN";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A08";
	setAttr -s 2 ".phl";
	setAttr ".phl[1]" 0;
	setAttr ".ed" -type "dataReferenceEdits"
		"rigRN"
		"rigRN" 0
		2 "|rig:hand" "visibility" " 0"
		5 3 "rigRN" "|rig:hand.translate" "rigRN.placeHolderList[1]" "";
	setAttr ".ptag" -type "string" "";
lockNode -l 1 ;
createNode wavyDeformer -n "wavy1";
	setAttr ".wd" -type "wavyData" 3 "a;b" "// no comment" 0.5 ;
	setAttr ".otfna" -type "stringArray" 2 "NURBS Curves" "Misc. UI"  ;
	setAttr ".pts" -type "doubleArray" 3 1.5 2 -3 ;
createNode animCurveTL -n "pCube1_translateX";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A09";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 0 15 3 30 0;
	setAttr -s 3 ".kit[0:2]"  1 18 2;
	setAttr -s 3 ".kot[0:2]"  1 18 2;
	setAttr -s 3 ".kix[0:2]"  0.5 1 0.25;
	setAttr -s 3 ".kiy[0:2]"  0.86602540378443871 0 0.96824583655185426;
createNode script -n "uiConfigurationScriptNode";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A10";
	setAttr ".b" -type "string" (
		"// Maya Mel UI Configuration File.\n//\n\nglobal string $gMainPane;\nif (`paneLayout -exists $gMainPane`) {\n"
		+ "\tmodelPanel -e -l (\"Top View\") $panelName;\n"
		+ "}\n");
	setAttr ".st" 3;
createNode script -n "sceneConfigurationScriptNode";
	rename -uid "B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A11";
	setAttr ".b" -type "string" "playbackOptions -min 1 -max 120 -ast 1 -aet 200 ";
	setAttr ".st" 6;
select -ne :time1;
	setAttr -av -k on ".cch";
	setAttr ".o" 12;
	setAttr ".unw" 12;
select -ne :hardwareRenderingGlobals;
	addAttr -ci true -h true -sn "dss" -ln "defaultSurfaceShader" -dt "string";
	setAttr ".otfna" -type "stringArray" 3 "NURBS Curves" "Polygons" "Misc. UI"  ;
	setAttr ".otfva" -type "Int32Array" 22 0 1 1 1 1 1
		 1 1 1 0 0 0 0 0 0 0 0 0
		 0 0 0 0 ;
	setAttr ".fprt" yes;
select -ne :defaultRenderingList1;
select -ne :initialShadingGroup;
	setAttr -s 2 ".dsm";
connectAttr "pCube1_translateX.o" "pCube1.tx";
connectAttr "rigRN.phl[1]" "pCubeShape1.iog[0].og[0].gid";
connectAttr "|rig:hand.tx" "wavy1.in[0]" -l on;
connectAttr "pCubeShape1.iog" ":initialShadingGroup.dsm" -na;
connectAttr "wavy1.msg" "lightLinker1.lnk"
		 -na;
relationship "link" ":lightLinker1" ":initialShadingGroup.message" ":defaultLightSet.message";
relationship "shadowLink" ":lightLinker1" ":initialShadingGroup.message" ":defaultLightSet.message";
dataStructure -fmt "raw" -as "name=externalContentTable:string=node:string=key:uint32=upathcrc";
applyMetadata -fmt "raw" -v "channel\nname externalContentTable\n0\n\"rigRN\" \"\" 32187\nendChannel\n"
		-scn;
)";

TEST_F(FromMaya, NothingOfASceneIsLostThroughEitherForm) {
    writeScene("maya.ma", wholeScene);
    open("maya.ma");
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("getAttr -t 15 pCube1.tx") + run(" getAttr pCube1.sx"), "32");
    EXPECT_EQ(run("getAttr pCube1.nts"), "first line\nsecond \"quoted\" \\ one");
    EXPECT_EQ(run("getAttr uiConfigurationScriptNode.b"),
              "// Maya Mel UI Configuration File.\n//\n\nglobal string $gMainPane;\n"
              "if (`paneLayout -exists $gMainPane`) {\n\tmodelPanel -e -l (\"Top View\") "
              "$panelName;\n}\n");
    EXPECT_EQ(run("listRelatives -p pad") + run("listRelatives -p knee"), "kneehip");
    EXPECT_EQ(run("playbackOptions -q -max") + run("currentTime -q"), "12012");
    EXPECT_EQ(run("lockNode -q pad"), "1");

    save("once.ma");
    save("through.mb");
    open("through.mb");
    EXPECT_TRUE(errors.empty()) << errors.front();
    save("twice.ma");
    QByteArray once = bytes("once.ma"), twice = bytes("twice.ma");
    EXPECT_EQ(once.replace("once.ma", "twice.ma").toStdString(), twice.toStdString());

    // Every statement of the file is in what was saved, but for those whose words the host writes
    // in its own way.
    std::multiset<std::string> saved = statements(twice);
    const std::set<std::string> own = {
        "requires \"stereoCamera\" \"10.0\";", // said twice
        "setAttr \".fl\" 34.999999999999993;",
        "setAttr \".ty\" 3;",
        "setAttr -av \".s\" -type \"double3\" 2 2 2;",
        "setAttr -k on \".w0\" 0.25;",
        "setAttr -av -k on \".cch\";",
        "setAttr -s 3 \".kit[0:2]\" 1 18 2;",
        "setAttr -s 3 \".kot[0:2]\" 1 18 2;",
        "setAttr -s 3 \".ktv[0:2]\" 0 0 15 3 30 0;",
    };
    for (const std::string& statement : statements(bytes("maya.ma"))) {
        const auto found = saved.find(statement);
        if (found != saved.end())
            saved.erase(found);
        else if (own.count(statement) == 0)
            ADD_FAILURE() << "lost: " << statement;
    }
    // What the file is made of stands in its order.
    int at = -1;
    for (const char* part :
         {"file -rdi 1", "file -rdi 2", "file -r -ns", "requires maya", "currentUnit", "workspace",
          "createNode transform -n \"pCube1\"",
          "rename -uid \"B3E1C7A2-4F0C-1B2D-9A77-5D0C2E8F1A03", "lockNode -l 1 -lu 1", "parent -s",
          "createNode lightLinker", "lockNode -l 1 ;", "select -ne :hardwareRenderingGlobals",
          "setAttr \".otfva\"", "connectAttr", "relationship \"link\"", "dataStructure",
          "applyMetadata", "// End of"}) {
        const int here = int(twice.indexOf(part));
        EXPECT_GT(here, at) << part;
        at = here;
    }
}

TEST_F(FromMaya, WhatIsKeptFollowsTheNodesItIsAbout) {
    writeScene("maya.ma", wholeScene);
    open("maya.ma");
    // Nodes that go take what was said of them along; what stood behind them stays.
    run("lockNode -l 0 pad; delete lightLinker1 pad; setKeyframe -t 50 -v 1 pCube1.tx;"
        "rename knee shin; deleteAttr pCube1.w0");
    save("edited.ma");
    const QByteArray saved = bytes("edited.ma");
    EXPECT_EQ(count(saved, "lightLinker -s"), 0);
    EXPECT_EQ(count(saved, "lockNode -l 1 -lu 1"), 0);
    EXPECT_EQ(count(saved, "parent -s -nc"), 1);
    EXPECT_EQ(count(saved, ".kix"), 0) << "tangents of keys that are others now";
    EXPECT_EQ(count(saved,
                    "createNode joint -n \"shin\" -p \"hip\";\n\trename -uid \"B3E1C7A2-4F0C-"
                    "1B2D-9A77-5D0C2E8F1A06\""),
              1);
    EXPECT_EQ(count(saved, "handW0"), 0);
    // An import twice gives every uuid to one node only.
    run("file -f -new; file -import " + quotedPath("maya.ma") + "; file -import " +
        quotedPath("maya.ma"));
    save("twice.ma");
    EXPECT_EQ(count(bytes("twice.ma"), "5D0C2E8F1A03"), 1);
}

TEST_F(FromMaya, TextsGoOnOverLinesAndBackslashes) {
    writeScene("texts.ma", "createNode transform -n \"a\";\n"
                           "\taddAttr -ci true -sn \"nts\" -ln \"notes\" -dt \"string\";\n"
                           "\tsetAttr \".nts\" -type \"string\" (\"one;\" + \" two)\"\n"
                           "\t\t + \"(\" );\n"
                           "createNode transform -n \"b\";\n"
                           "\taddAttr -ci true -sn \"nts\" -ln \"notes\" -dt \"string\";\n"
                           "\tsetAttr \".nts\" -type \"string\" \"left \\\nright \\\r\nend\";\n"
                           "createNode transform -n \"c\";\n"
                           "\tsetAttr \".tx\" 3;\n");
    open("texts.ma");
    EXPECT_TRUE(errors.empty()) << errors.front();
    EXPECT_EQ(run("getAttr a.nts"), "one; two)(");
    EXPECT_EQ(run("getAttr b.nts"), "left right end");
    EXPECT_EQ(run("getAttr c.tx"), "3");
}

TEST_F(FromMaya, StrayWordsAndForeignScriptAreSaidAndHideNothing) {
    writeScene("stray.ma", "createNode transform stray -n \"a\";\n\tsetAttr \".tx\" 2;\n"
                           "global proc p() {\n\toptionVar -iv \"ran\" 1;\n"
                           "createNode transform -n \"within\";\n}\n"
                           "global proc q() { int $i; for ($i = 0; $i < 3; $i++) { print $i; } }\n"
                           "createNode transform -n \"b\";\n\tsetAttr \".tx\" 3;\n"
                           "frobnicate -n \"c\";\n\tsetAttr \".tx\" 4;\n"
                           "createNode transform -n \"d\";\n");
    EXPECT_NE(failing("file -f -o " + quotedPath("stray.ma")).find("Error reading"),
              std::string::npos);
    EXPECT_TRUE(mentions(errors, "line 5: createNode with a stray word: stray"));
    EXPECT_EQ(run("getAttr a.tx") + run("getAttr b.tx"), "23");
    EXPECT_EQ(run("objExists d") + run("objExists c") + run("optionVar -ex ran"), "100");
    save("again.ma", true);
    const QByteArray again = bytes("again.ma");
    EXPECT_EQ(count(again, "global proc q() { int $i; for ($i = 0; $i < 3; $i++) { print $i; } }"),
              1);
    EXPECT_EQ(count(again, "frobnicate -n \"c\";\n\tsetAttr \".tx\" 4;\n"), 1);
}

} // namespace
