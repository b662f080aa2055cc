// rvVellumStroke: the merge as an undoable step.
#include "document/Frame.h"
#include "document/Layer.h"
#include "foundation/UndoQueue.h"
#include "node/BaseNode.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Settings.h"
#include "plugin/session/DrawingTarget.h"
#include "support/FrameChanges.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

using support::sure;

namespace vellum::test {
namespace {

class StrokeStep : public ToolSession {
protected:
    // A horizontal pencil line across the canvas at the given height.
    void begin(int y, Tool tool = Tool::Pencil) {
        Stroke* stroke = document()->beginStroke(camera, tool, QColor(200, 30, 60));
        ASSERT_NE(stroke, nullptr);
        stroke->points = {{10, 1.0F, 1.0F, 100, y}, {10, 1.0F, 1.0F, 900, y}};
        stroke->dirty = true;
    }

    // As the tool does it: check, stroke, command.
    void draw(int y, Tool tool = Tool::Pencil) {
        const DrawingTarget target = drawingTarget(node(), camera);
        ASSERT_TRUE(target);
        begin(y, tool);
        ASSERT_TRUE(run(command::commitStroke(camera, target.added.layerIndex(*document()),
                                              target.added.hasFrame())));
    }

    QList<int> frames() { return sure(document()->activeLayer(camera)).frameTimes(); }
};

TEST_F(StrokeStep, UndoAndRedoExchangeThePictures) {
    at(1);
    draw(100);
    const QImage first = picture();
    draw(300);
    const QImage second = picture();
    draw(100, Tool::Eraser);
    const QImage erased = picture();
    EXPECT_NE(first, second);
    EXPECT_EQ(alphaAt({500, 100}), 0);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(picture(), second);
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(picture(), first);
        ASSERT_TRUE(run(QStringLiteral("redo")));
        EXPECT_EQ(picture(), second);
        ASSERT_TRUE(run(QStringLiteral("redo")));
        EXPECT_EQ(picture(), erased);
    }
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1);
}

TEST_F(StrokeStep, FirstStrokeTakesItsLayerAndFrameBack) {
    at(7);
    draw(100);
    const QImage drawn = picture();
    const quint64 layer = sure(document()->layer(camera, 0)).id();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    ASSERT_EQ(document()->cameraLayerCount(camera), 1);
    EXPECT_EQ(sure(document()->layer(camera, 0)).id(), layer) << "later steps on it would be lost";
    EXPECT_EQ(document()->activeLayerIndex(camera), 0);
    EXPECT_EQ(frames(), QList<int>{7});
    EXPECT_EQ(picture(), drawn);
}

TEST_F(StrokeStep, AddedFrameGoesAtItsOwnTime) {
    at(1);
    draw(100);
    at(5);
    draw(200);
    EXPECT_EQ(frames(), (QList<int>{1, 5}));
    at(9); // frame 5 still shows
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(frames(), QList<int>{1});
    EXPECT_EQ(alphaAt({500, 100}), 255);
}

TEST_F(StrokeStep, RedoThatFindsNoFrameLeavesNothingInItsOwnWay) {
    for (const bool firstLayer : {true, false}) {
        SCOPED_TRACE(firstLayer);
        at(7);
        draw(100);
        const QImage drawn = picture();
        const int layers = document()->cameraLayerCount(camera) - (firstLayer ? 1 : 0);
        ASSERT_TRUE(run(QStringLiteral("undo")));
        at(3); // before the frame: nothing is shown to exchange a picture with
        EXPECT_FALSE(run(QStringLiteral("redo")));
        EXPECT_EQ(document()->cameraLayerCount(camera), layers);
        const Layer* active = document()->activeLayer(camera);
        EXPECT_FALSE(active && active->hasFrameAtIntTime(7));
        at(7);
        ASSERT_TRUE(run(QStringLiteral("redo")));
        EXPECT_EQ(frames(), QList<int>{7});
        EXPECT_EQ(picture(), drawn);
        takeFrames(*document(), camera);
    }
}

TEST_F(StrokeStep, StaticLayersGetTheirFrameBackWhereItWas) {
    settings().defaultLayerState = numberOf(LayerState::Static);
    at(30);
    draw(100);
    EXPECT_EQ(frames(), QList<int>{-999});
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    settings().defaultLayerState = numberOf(LayerState::Static);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(frames(), QList<int>{-999});
}

TEST_F(StrokeStep, UndoGivesTheOtherCameraItsActivityBack) {
    const QString other = QStringLiteral("top");
    document()->addLayer(other, 0, QStringLiteral("A"));
    document()->addLayer(other, 1, QStringLiteral("B"));
    document()->setActiveLayer(other, 1, true);
    document()->setCurrentCamera(camera); // the user looks through another camera
    draw(100);
    document()->setActiveLayer(other, 0, false);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    EXPECT_EQ(document()->currentCamera(), other);
    EXPECT_EQ(document()->activeLayerIndex(other), 1);
}

TEST_F(StrokeStep, RefusalsSayWhyAndLeaveNothingToUndo) {
    at(1);
    draw(100);
    const QImage drawn = picture();
    refuses(QStringLiteral("rvVellumStroke"), QStringLiteral("[Vellum2] Camera not specified"));
    refuses(QStringLiteral("rvVellumStroke \"no \\\"such\\\" %1\""),
            QStringLiteral("[Vellum2] Camera does not exist: no \"such\" %1"));
    refuses(QStringLiteral("rvVellumStroke persp"),
            QStringLiteral("[Vellum2] There is no stroke to commit for camera: persp"));
    begin(300);
    document()->setLayerState(camera, 0, LayerState::Animated);
    takeFrames(*document(), camera);
    EXPECT_FALSE(run(QStringLiteral("rvVellumStroke persp")));
    document()->discardStroke();
    document()->addFrameAtCurrentTime(camera);
    // The step on the queue is still the first stroke.
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    EXPECT_FALSE(drawn.isNull());
}

TEST_F(StrokeStep, UndoLeavesADrawingAloneThatIsNotItsOwn) {
    ASSERT_TRUE(run(QStringLiteral("camera; rename camera1 shotCam; flushUndo")));
    camera = QStringLiteral("shotCam");
    at(1);
    draw(100);
    draw(200);
    const QImage drawn = picture();
    MSelectionList list;
    MObject lens;
    list.add("shotCam");
    ASSERT_EQ(list.getDependNode(0, lens), MS::kSuccess);
    MFnDependencyNode(lens).setName("renamed"); // the undo queue does not know
    refuses(QStringLiteral("undo"), QStringLiteral("[Vellum2] Camera does not exist: shotCam"));
    EXPECT_EQ(picture(), drawn);
    MFnDependencyNode(lens).setName("shotCam");
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_NE(picture(), drawn);
    {
        const host::UndoSuspender off;
        ASSERT_TRUE(run(QStringLiteral("delete `ls -type rvVellum`; createNode rvVellum")));
        document()->addLayer(camera, 0, QString());
        document()->addFrameAtCurrentTime(camera);
    }
    refuses(QStringLiteral("redo"), QStringLiteral("[Vellum2] Node not found"));
    EXPECT_EQ(alphaAt({500, 200}), 0);
}

} // namespace
} // namespace vellum::test
