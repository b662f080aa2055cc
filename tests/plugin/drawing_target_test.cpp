// The check before a stroke, and how node, camera and time are found.
#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/LinkedClasses.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/DrawingTarget.h"
#include "plugin/session/SceneNodes.h"
#include "plugin/session/SceneTime.h"

namespace vellum::test {
namespace {

class Target : public LinkedClasses {
protected:
    void at(int frame) {
        ASSERT_TRUE(run(QStringLiteral("currentTime %1").arg(frame)));
        propagateCurrentTime();
    }

    DrawingTarget target() {
        errors.clear();
        return drawingTarget(node(), QStringLiteral("persp"));
    }

    void refused(const char* message) {
        const int layers = document()->totalLayerCount();
        EXPECT_FALSE(target());
        EXPECT_EQ(errors, QStringList{QStringLiteral("[Vellum2] ") + QLatin1String(message)});
        EXPECT_EQ(document()->totalLayerCount(), layers);
    }

    const Layer& layer() { return *document()->activeLayer(QStringLiteral("persp")); }

    /// No change of the document makes a camera with layers but without an active one.
    void setActive(bool active) {
        const_cast<Layer&>(*document()->layer(QStringLiteral("persp"), 0)).setActive(active);
    }
};

TEST_F(Target, FirstStrokeMakesLayerAndFrame) {
    at(12);
    const DrawingTarget first = target();
    ASSERT_TRUE(first);
    EXPECT_EQ(first.added.layerIndex(*document()), 0);
    EXPECT_TRUE(first.added.hasFrame());
    EXPECT_EQ(layer().frameTimes(), QList<int>{12});
    EXPECT_EQ(first.frame, layer().frameAt(0));

    const DrawingTarget again = target();
    EXPECT_EQ(again.added.layerIndex(*document()), -1);
    EXPECT_FALSE(again.added.hasFrame());
    EXPECT_EQ(again.frame, first.frame);

    at(20);
    EXPECT_TRUE(target().added.hasFrame()) << "a drawing of its own for another frame";
    EXPECT_EQ(layer().frameTimes(), (QList<int>{12, 20}));
    EXPECT_FALSE(drawingTarget(node(), QString())) << "no camera, nothing to draw for";
}

TEST_F(Target, EachRefusalSaysWhyAndChangesNothing) {
    settings().automaticallyAddFirstLayer = false;
    refused("A layer does not exist for the current camera");
    settings().automaticallyAddFirstLayer = true;
    ASSERT_TRUE(target());

    document()->setLayerVisible(QStringLiteral("persp"), 0, false);
    refused("Active layer is not visible.");
    document()->setLayerVisible(QStringLiteral("persp"), 0, true);
    document()->setLayerState(QStringLiteral("persp"), 0, LayerState::Locked);
    refused("Active layer is locked.");
    document()->setLayerState(QStringLiteral("persp"), 0, LayerState::Animated);
    setActive(false);
    refused("An active layer does not exist.");
}

TEST_F(Target, StaticLayerNeedsItsFrameAtOrBeforeNow) {
    settings().defaultLayerState = numberOf(LayerState::Static);
    settings().insertDefaultStaticFrame = false;
    at(5);
    EXPECT_FALSE(target());
    EXPECT_EQ(errors, QStringList{QStringLiteral(
                          "[Vellum2] Static layer: A frame is required at or before the current "
                          "time.")});
    EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("persp")), 1) << "the layer stays";

    settings().insertDefaultStaticFrame = true;
    settings().defaultStaticFrameTime = 6;
    refused("Static layer: A frame is required at or before the current time.");
    settings().defaultStaticFrameTime = -999;
    ASSERT_TRUE(target());
    EXPECT_EQ(layer().frameTimes(), QList<int>{-999});
    at(400);
    EXPECT_FALSE(target().added.hasFrame());
    EXPECT_EQ(layer().frameCount(), 1);
    at(-1000);
    refused("Static layer: A frame is required at or before the current time.");
}

TEST_F(Target, RefusalsComeInTheirOrder) {
    // Everything is against the stroke; one thing after the other is put right.
    const QString camera = QStringLiteral("persp");
    at(5);
    settings().automaticallyAddFirstLayer = false;
    settings().alwaysDisplayNewLayerDialog = true;
    settings().insertDefaultStaticFrame = false;
    refused("A layer does not exist for the current camera");
    settings().automaticallyAddFirstLayer = true;
    EXPECT_FALSE(target());
    EXPECT_EQ(errors.filter(QStringLiteral("rvVellumUtil")).size(), 1)
        << "the dialog is asked for: " << allErrors().toStdString();
    EXPECT_EQ(document()->totalLayerCount(), 0);

    settings().alwaysDisplayNewLayerDialog = false;
    settings().defaultLayerState = numberOf(LayerState::Locked);
    errors.clear();
    const DrawingTarget locked = drawingTarget(node(), camera);
    EXPECT_FALSE(locked);
    EXPECT_EQ(locked.added.layerIndex(*document()), 0) << "the layer stays";
    EXPECT_FALSE(locked.added.hasFrame());
    EXPECT_EQ(errors, QStringList{QStringLiteral("[Vellum2] Active layer is locked.")});
    EXPECT_EQ(document()->layerName(camera, 0), QStringLiteral("Layer"));
    EXPECT_EQ(layer().frameCount(), 0);

    const Layer& only = layer();
    setActive(false);
    document()->setLayerVisible(camera, 0, false);
    refused("An active layer does not exist.");
    setActive(true);
    refused("Active layer is not visible.");
    document()->setLayerVisible(camera, 0, true);
    refused("Active layer is locked.");
    document()->setLayerState(camera, 0, LayerState::Static);
    refused("Static layer: A frame is required at or before the current time.");
    document()->addFrameAt(camera, 6);
    refused("Static layer: A frame is required at or before the current time.");
    settings().insertDefaultStaticFrame = true;
    settings().defaultStaticFrameTime = 6;
    refused("Static layer: A frame is required at or before the current time.");
    settings().defaultStaticFrameTime = 5;
    const DrawingTarget now = target();
    ASSERT_TRUE(now) << "at the current time is early enough";
    EXPECT_TRUE(now.added.hasFrame());
    EXPECT_EQ(only.frameTimes(), (QList<int>{5, 6}));
    EXPECT_EQ(now.frame, only.frameAt(0));
    document()->setLayerState(camera, 0, LayerState::Animated);
    at(7);
    EXPECT_TRUE(target().added.hasFrame());
    EXPECT_EQ(only.frameTimes(), (QList<int>{5, 6, 7}));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Target, BetweenFramesTheWholeOneCounts) {
    settings().defaultStaticFrameTime = 5;
    const auto atTime = [this](const char* time) {
        ASSERT_TRUE(run(QStringLiteral("currentTime ") + QLatin1String(time)));
        propagateCurrentTime();
    };
    atTime("4.75");
    ASSERT_TRUE(target());
    EXPECT_FALSE(target().added.hasFrame());
    atTime("-0.75");
    ASSERT_TRUE(target());
    atTime("0.75");
    EXPECT_FALSE(target().added.hasFrame()) << "towards zero from both sides";
    EXPECT_EQ(layer().frameTimes(), (QList<int>{0, 4}));
    EXPECT_EQ(currentFrame(), 0);

    document()->addLayer(QStringLiteral("persp"), -1, QString());
    document()->setActiveLayer(QStringLiteral("persp"), 1, false);
    document()->setLayerState(QStringLiteral("persp"), 1, LayerState::Static);
    atTime("4.99");
    refused("Static layer: A frame is required at or before the current time.");
    atTime("5.01");
    ASSERT_TRUE(target());
    EXPECT_EQ(layer().frameTimes(), QList<int>{5});

    // The moment of a drawing stays when frames get another length.
    atTime("8");
    document()->setLayerState(QStringLiteral("persp"), 1, LayerState::Animated);
    ASSERT_TRUE(target());
    ASSERT_TRUE(run(QStringLiteral("currentUnit -time ntsc")));
    propagateCurrentTime();
    EXPECT_EQ(currentFrame(), 10);
    EXPECT_EQ(layer().frameTimes(), (QList<int>{6, 10}));
    EXPECT_FALSE(target().added.hasFrame());
    ASSERT_TRUE(run(QStringLiteral("currentUnit -time sec")));
    propagateCurrentTime();
    EXPECT_EQ(currentFrame(), 0);
    EXPECT_FALSE(target().added.hasFrame()) << "both lie in the first second";
}

TEST_F(Target, SelectionDesignatesTheNode) {
    BaseNode* shape = &node();
    ASSERT_TRUE(run(QStringLiteral("select -cl")));
    EXPECT_EQ(selectedNode(), nullptr);
    ASSERT_TRUE(run(QStringLiteral("select -r `ls -type rvVellum`")));
    EXPECT_EQ(selectedNode(), shape);
    ASSERT_TRUE(run(QStringLiteral("string $shapes[] = `ls -type rvVellum`; select -r "
                                   "`listRelatives -parent $shapes[0]`")));
    EXPECT_EQ(selectedNode(), shape) << "the transform designates its shape";
    ASSERT_TRUE(run(QStringLiteral("select -add persp")));
    EXPECT_EQ(selectedNode(), nullptr) << "two items designate nothing";
    ASSERT_TRUE(run(QStringLiteral("select -r persp")));
    EXPECT_EQ(selectedNode(), nullptr);
    ASSERT_TRUE(run(QStringLiteral("string $parents[] = `listRelatives -parent $shapes[0]`;"
                                   "group -name above $parents[0]; select -r above")));
    EXPECT_EQ(selectedNode(), nullptr) << "its children's children do not count";
    // The first of several shapes, among other children.
    ASSERT_TRUE(run(QStringLiteral("createNode transform -n two; createNode locator -p two;"
                                   "createNode rvVellum -n twoA -p two;"
                                   "createNode rvVellum -n twoB -p two; select -r two")));
    ASSERT_NE(selectedNode(), nullptr);
    EXPECT_EQ(selectedNode()->name(), MString("twoA"));
    ASSERT_TRUE(run(QStringLiteral("select -r twoB")));
    ASSERT_NE(selectedNode(), nullptr);
    EXPECT_EQ(selectedNode()->name(), MString("twoB"));
    ASSERT_TRUE(run(QStringLiteral("select -r time1")));
    EXPECT_EQ(selectedNode(), nullptr) << "no DAG node";
}

TEST_F(Target, CamerasGoByTheirTransform) {
    EXPECT_TRUE(cameraExists(QStringLiteral("persp")));
    EXPECT_FALSE(cameraExists(QStringLiteral("perspShape")));
    EXPECT_FALSE(cameraExists(QString()));
    EXPECT_EQ(currentCamera(), QStringLiteral("persp"));
    // Under two groups, cameras of one name share what is drawn for it.
    ASSERT_TRUE(run(QStringLiteral("camera; rename camera1 shot; group -n left shot;"
                                   "duplicate -n right left")));
    for (const char* path : {"left|shot", "right|shot"}) {
        ASSERT_TRUE(
            run(QStringLiteral("lookThroughModelPanel %1 modelPanel4").arg(QLatin1String(path))));
        EXPECT_EQ(currentCamera(), QStringLiteral("shot")) << path;
    }
    EXPECT_TRUE(cameraExists(QStringLiteral("shot")));
    ASSERT_TRUE(run(QStringLiteral("rename \"right|shot\" other")));
    EXPECT_EQ(currentCamera(), QStringLiteral("other"));
    EXPECT_TRUE(cameraExists(QStringLiteral("shot"))) << "the one on the left";
    ASSERT_TRUE(run(QStringLiteral("delete \"left|shot\"")));
    EXPECT_FALSE(cameraExists(QStringLiteral("shot")));
    ASSERT_TRUE(run(QStringLiteral("delete other")));
    EXPECT_FALSE(cameraExists(QStringLiteral("other")));
    EXPECT_TRUE(cameraExists(currentCamera())) << "the panel looks through another";
    ASSERT_TRUE(run(QStringLiteral("undo; lookThroughModelPanel top modelPanel4")));
    EXPECT_EQ(currentCamera(), QStringLiteral("top"));
    EXPECT_TRUE(cameraNames().contains(QStringLiteral("other")));
}

TEST_F(Target, RedrawingLeavesTheSceneAsSavedAsItWas) {
    node();
    ASSERT_TRUE(run(QStringLiteral("file -modified 0")));
    node().forceRedraw();
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
    tell(Change::Pixels, document().get());
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1);
    node().forceRedraw();
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1);
}

} // namespace
} // namespace vellum::test
