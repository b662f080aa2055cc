// The check before a stroke, and how node, camera and time are found.
#include "plugin/LinkedClasses.h"

#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/leaves/Settings.h"
#include "plugin/middle/ActiveNode.h"

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

    Layer& layer() { return *document()->activeLayer(QStringLiteral("persp")); }
};

TEST_F(Target, FirstStrokeMakesLayerAndFrame) {
    at(12);
    const DrawingTarget first = target();
    ASSERT_TRUE(first);
    EXPECT_EQ(first.addedLayer, 0);
    EXPECT_TRUE(first.frameCreated);
    EXPECT_EQ(layer().frameTimes(), QList<int>{12});
    EXPECT_EQ(first.frame, layer().frameAt(0));

    const DrawingTarget again = target();
    EXPECT_EQ(again.addedLayer, -1);
    EXPECT_FALSE(again.frameCreated);
    EXPECT_EQ(again.frame, first.frame);

    at(20);
    EXPECT_TRUE(target().frameCreated) << "a drawing of its own for another frame";
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
    document()->setLayerState(QStringLiteral("persp"), 0, layer_state::kLocked);
    refused("Active layer is locked.");
    document()->setLayerState(QStringLiteral("persp"), 0, layer_state::kAnimated);
    layer().setActive(false);
    refused("An active layer does not exist.");
}

TEST_F(Target, StaticLayerNeedsItsFrameAtOrBeforeNow) {
    settings().defaultLayerState = layer_state::kStatic;
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
    EXPECT_FALSE(target().frameCreated);
    EXPECT_EQ(layer().frameCount(), 1);
    at(-1000);
    refused("Static layer: A frame is required at or before the current time.");
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
}

TEST_F(Target, CamerasGoByTheirTransform) {
    EXPECT_TRUE(cameraExists(QStringLiteral("persp")));
    EXPECT_FALSE(cameraExists(QStringLiteral("perspShape")));
    EXPECT_FALSE(cameraExists(QString()));
    EXPECT_EQ(currentCamera(), QStringLiteral("persp"));
    ASSERT_TRUE(run(QStringLiteral("camera -name shotCam")));
    EXPECT_TRUE(cameraNames().contains(QStringLiteral("shotCam")) ||
                cameraNames().contains(QStringLiteral("shotCam1")));
}

TEST_F(Target, RedrawingLeavesTheSceneAsSavedAsItWas) {
    node();
    ASSERT_TRUE(run(QStringLiteral("file -modified 0")));
    node().forceRedraw();
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
    node().drawingChanged();
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1);
    node().forceRedraw();
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1);
}

} // namespace
} // namespace vellum::test
