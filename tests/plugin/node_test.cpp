// The node and its command, through the script line of a host with the real plug-in.
#include "foundation/Faults.h"
#include "support/Hand.h"
#include "support/Session.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <QFile>
#include <QTemporaryDir>

#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MSelectionList.h>

namespace vellum::test {
namespace {

class Node : public Session {};

TEST_F(Node, CreationMakesALockedTemplatedPairAndUndoTakesItBack) {
    run(QStringLiteral("polyCube -name box"));
    run(QStringLiteral("select -r box"));
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0);
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 1);
    EXPECT_EQ(text(QStringLiteral("$r = nodeType(\"vellum|vellumShape\")")),
              QStringLiteral("rvVellum"));
    for (const char* channel :
         {"vellum.tx", "vellum.ry", "vellum.sz", "vellumShape.lpx", "vellumShape.lsz"}) {
        const QString plug = QString::fromLatin1(channel);
        EXPECT_EQ(number(QStringLiteral("getAttr -lock ") + plug), 1) << channel;
        EXPECT_EQ(number(QStringLiteral("getAttr -keyable ") + plug), 0) << channel;
        EXPECT_EQ(number(QStringLiteral("getAttr -channelBox ") + plug), 0) << channel;
    }
    EXPECT_EQ(number(QStringLiteral("getAttr vellumShape.template")), 1);
    EXPECT_EQ(number(QStringLiteral("size(`ls -sl`)")), 0);

    refuses(QStringLiteral("rvVellumNode"), QStringLiteral("[Vellum2] Node already exists"));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 1);

    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(number(QStringLiteral("objExists vellum")), 0);
    EXPECT_EQ(number(QStringLiteral("objExists vellumShape")), 0);
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0);
    EXPECT_EQ(text(QStringLiteral("stringArrayToString(`ls -sl`, \",\")")), QStringLiteral("box"));
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 1);
    EXPECT_EQ(number(QStringLiteral("getAttr -lock vellum.tx")), 1);
}

TEST_F(Node, FirstLayerAndFramesComeWithTheNode) {
    ASSERT_TRUE(run(QStringLiteral(
        "rvVellumNode -layer -camera persp -layerName \"a \\\"b\\\"\" -layerState 5 -frame")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
    EXPECT_EQ(text(QStringLiteral("rvVellumLayer -qn 0 persp")), QStringLiteral("a \"b\""));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -qs 0 persp")), 0) << "5 is no state";
    EXPECT_EQ(text(QStringLiteral("rvVellumNode -q -camera")), QStringLiteral("persp"));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1) << "redo adds none again";
}

TEST_F(Node, FramesComeOverTheHighlightedRangeIfThatIsOneToFill) {
    const auto highlightAndCreate = [this](double start, double end) {
        window->timeSlider().setRange(host::TimeSlider::Range{start, end});
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp -frame")));
    };
    highlightAndCreate(1, 10);
    // Frames at 1 to 9: from the last there is nowhere to go but round to the first.
    ASSERT_TRUE(run(QStringLiteral("currentTime 1; rvVellumFrame -stepBack persp")));
    EXPECT_EQ(number(QStringLiteral("$now = int(`currentTime -q`)")), 9);
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    errors.clear();
    highlightAndCreate(-2000000000, 2000000000);
    EXPECT_TRUE(errors.contains(
        QStringLiteral("[Vellum2] Cannot insert more than 1000000 frames at once")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
    ASSERT_TRUE(run(QStringLiteral("currentTime 5; rvVellumFrame -stepBack persp")));
    EXPECT_EQ(number(QStringLiteral("$now = int(`currentTime -q`)")), 5) << "there is no frame";
}

TEST_F(Node, ModesWithoutMeaningAreRefused) {
    refuses(QStringLiteral("rvVellumNode -e -refresh"),
            QStringLiteral("[Vellum2] Invalid edit parameter"));
    refuses(QStringLiteral("rvVellumNode -q -refresh"),
            QStringLiteral("[Vellum2] Invalid query parameter"));
    errors.clear();
    for (const char* silent :
         {"rvVellumNode -q -camera", "rvVellumNode -refresh", "rvVellumNode -refreshGhosting"})
        EXPECT_FALSE(run(QString::fromLatin1(silent))) << silent;
    EXPECT_EQ(errors.filter(QStringLiteral("[Vellum2]")).size(), 0);
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
    EXPECT_TRUE(run(QStringLiteral("rvVellumNode -refresh")));
    EXPECT_TRUE(run(QStringLiteral("rvVellumNode -rg")));
}

TEST_F(Node, OnlyTheFirstNodeIsActive) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp")));
    ASSERT_TRUE(run(QStringLiteral("createNode rvVellum -name second")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
    ASSERT_TRUE(run(QStringLiteral("delete vellum")));
    EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0) << "the second was never marked";
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
}

TEST_F(Node, OpacityStaysWithinItsRange) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
    EXPECT_FALSE(run(QStringLiteral("setAttr vellumShape.opacity 1.5")));
    EXPECT_TRUE(run(QStringLiteral("setAttr vellumShape.opacity 0.25")));
    EXPECT_EQ(text(QStringLiteral("$r = string(`getAttr vellumShape.op`)")),
              QStringLiteral("0.25"));
}

TEST_F(Node, ADocumentReadFromAFileIsNotReplaced) {
    for (const char* type : {"mayaAscii", "mayaBinary"}) {
        SCOPED_TRACE(type);
        QTemporaryDir directory;
        const QString file = directory.filePath(QStringLiteral("scene.m"));
        const QString kind = QString::fromLatin1(type);
        ASSERT_TRUE(run(QStringLiteral("file -f -new")));
        ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp -layerName kept")));
        ASSERT_TRUE(run(QStringLiteral("currentTime 17")));
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add -n \"x \\\"; `y` \\\\\" persp")));
        ASSERT_TRUE(run(QStringLiteral("file -rename \"%1\"").arg(file)));
        ASSERT_TRUE(run(QStringLiteral("file -f -save -type \"%1\"").arg(kind)));
        EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
        ASSERT_TRUE(run(QStringLiteral("file -f -new")));
        EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0);

        errors.clear();
        ASSERT_TRUE(run(QStringLiteral("file -f -open \"%1\"").arg(file)));
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 2) << type;
        EXPECT_EQ(text(QStringLiteral("rvVellumLayer -qn 0 persp")), QStringLiteral("kept"));
        EXPECT_EQ(text(QStringLiteral("rvVellumLayer -qn 1 persp")),
                  QStringLiteral("x \"; `y` \\"));
        EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0) << "opening changes nothing";
        ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -ev 0 0 persp")));
        EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1) << "a changed drawing is saved";
    }
}

TEST_F(Node, ItsAttributesAreWhatFilesAndTheChannelBoxRelyOn) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode")));
    MSelectionList list;
    ASSERT_TRUE(list.add("vellumShape"));
    MObject object;
    list.getDependNode(0, object);
    const MFnDependencyNode node(object);
    const MFnAttribute data(node.attribute("layerData"));
    EXPECT_EQ(data.shortName(), MString("ld"));
    EXPECT_TRUE(data.isReadable() && data.isWritable() && data.isStorable() && data.isHidden());
    EXPECT_FALSE(data.isConnectable() || data.isKeyable() || data.isArray());
    const MFnNumericAttribute opacity(node.attribute("opacity"));
    EXPECT_EQ(opacity.shortName(), MString("op"));
    EXPECT_EQ(opacity.unitType(), MFnNumericData::kFloat);
    EXPECT_TRUE(opacity.isReadable() && opacity.isWritable() && opacity.isStorable());
    EXPECT_TRUE(opacity.isKeyable() && !opacity.isHidden() && opacity.isConnectable());
    double least = -1.0;
    double most = -1.0;
    float usual = -1.0F;
    opacity.getMin(least);
    opacity.getMax(most);
    opacity.getDefault(usual);
    EXPECT_EQ(least, 0.0);
    EXPECT_EQ(most, 1.0);
    EXPECT_EQ(usual, 1.0F);
}

TEST_F(Node, OfSeveralActiveOnesTheFirstWorks) {
    const auto layers = [this] { return number(QStringLiteral("rvVellumLayer -count persp")); };
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("one.ma"));
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp; file -rename \"%1\";"
                                   "file -f -save; rvVellumLayer -add persp;"
                                   "file -import \"%1\"")
                        .arg(file)));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 2);
    EXPECT_EQ(layers(), 2) << "the scene's own";
    EXPECT_EQ(warnings,
              QStringList{QStringLiteral("[Vellum2] The scene has 2 drawings now. The one that is "
                                         "drawn on is vellum|vellumShape.")});
    ASSERT_TRUE(run(QStringLiteral("group -em -name lone; file -f -new; file -import \"%1\";"
                                   "file -f -open \"%1\"; rvVellumLayer -add persp;"
                                   "file -import \"%1\"")
                        .arg(file)));
    EXPECT_EQ(warnings.size(), 2) << "a first drawing is the only one";
    ASSERT_TRUE(run(QStringLiteral("delete vellum")));
    EXPECT_EQ(layers(), 1) << "the imported one";
    ASSERT_TRUE(run(QStringLiteral("undo; group -n deep vellum; rename deep a")));
    EXPECT_EQ(layers(), 1) << "the group stands behind the imported one";
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_EQ(layers(), 2);
    refuses(QStringLiteral("rvVellumNode"), QStringLiteral("[Vellum2] Node already exists"));

    // One that was never active stays so wherever it goes.
    ASSERT_TRUE(run(QStringLiteral("file -f -new; rvVellumNode -layer -camera persp;"
                                   "createNode rvVellum -name second; delete vellum;"
                                   "file -rename \"%1\"; file -f -save")
                        .arg(file)));
    for (const char* way : {"file -f -open", "file -f -new; file -import"}) {
        SCOPED_TRACE(way);
        ASSERT_TRUE(run(QStringLiteral("%1 \"%2\"").arg(QLatin1String(way), file)));
        EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 1) << way;
        EXPECT_EQ(number(QStringLiteral("rvVellumNode -exists")), 0) << way;
    }
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp")));
    EXPECT_EQ(layers(), 1);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

class Documentless : public Node {
protected:
    void TearDown() override {
        host::faults::clear();
        Node::TearDown();
    }

    /// What is shown once, and never again by anything that asks for the drawing.
    void saysOnly(QStringList expected) {
        support::settle();
        EXPECT_EQ(errors, expected);
        errors.clear();
        EXPECT_TRUE(
            run(QStringLiteral("currentTime 4; select bare; select -cl; undo; redo;"
                               "rvVellumNode -layer -camera persp; rvVellumFrame -ins persp;"
                               "currentTime 9; delete bare; undo")));
        support::settle();
        EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
        EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
    }
};

TEST_F(Documentless, AFileWithoutItsDataIsSaidOnce) {
    QTemporaryDir directory;
    const QString bare = directory.filePath(QStringLiteral("bare.ma"));
    QFile scene(bare);
    ASSERT_TRUE(scene.open(QIODevice::WriteOnly));
    scene.write("//Maya ASCII 2024 scene\nrequires maya \"2024\";\n"
                "requires -nodeType \"rvVellum\" -dataType \"rvLayerData\" \"vellum2\" \"2.4.1\";\n"
                "createNode transform -n \"bare\";\n"
                "createNode rvVellum -n \"bareShape\" -p \"bare\";\n// End of bare.ma\n");
    scene.close();
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("file -f -open \"%1\"").arg(bare)));
    saysOnly({QStringLiteral("[Vellum2] Failed to get layer data plug as object")});

    ASSERT_TRUE(run(QStringLiteral("file -rename \"%1\"; file -f -save; file -f -new")
                        .arg(directory.filePath(QStringLiteral("both.ma")))));
    ASSERT_TRUE(run(
        QStringLiteral("file -f -open \"%1\"").arg(directory.filePath(QStringLiteral("both.ma")))));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 2);
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count persp")), 1);
}

TEST_F(Documentless, DataThatCannotBeSetAreSaidAndNothingElseSuffers) {
    host::faults::arm("setMPxData");
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("createNode transform -n bare; createNode rvVellum -p bare")));
    host::faults::clear();
    saysOnly({QStringLiteral("[Vellum2] Failed to set layer data"),
              QStringLiteral("[Vellum2] Failed to initialize layer manager"),
              QStringLiteral("[Vellum2] Failed to get layer data plug as object")});
}

} // namespace
} // namespace vellum::test
