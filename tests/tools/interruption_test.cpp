// What happens to the scene while the pointer is down or while strokes wait in the undo queue:
// nothing may be stuck or lost, and the next stroke must work.
#include "document/Frame.h"
#include "document/Layer.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "plugin/session/SceneTime.h"
#include "support/FrameChanges.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/ThreadManager.h"

#include <QTemporaryDir>

#include <functional>

using support::sure;

namespace vellum::test {
namespace {

class Interrupted : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Pencil;
        settings().of(Tool::Pencil).size = 12;
        activateDrawTool();
    }

    // Presses and drags along a row of the view; the button stays down.
    void drag(int row) {
        moveTo({100, row});
        press();
        EXPECT_TRUE(waitFor([this] { return sampled() == 2; })) << "in row " << row;
        moveTo({200, row});
        EXPECT_TRUE(waitFor([this] { return sampled() > 2; })) << "in row " << row;
    }
    std::size_t sampled() {
        const Stroke* stroke = document()->currentStroke();
        return stroke ? stroke->points.size() : 0;
    }
    void stroke(int row) {
        drag(row);
        release();
    }
    int inkAt(int row) { return alphaAt(imagePixel({120, row})); }

    void nothingIsStuck() {
        EXPECT_FALSE(ThreadManager::instance().isActive());
        for (BaseNode* drawn : allNodes()) {
            EXPECT_EQ(drawn->layerManager()->currentStroke(), nullptr);
        }
    }
};

TEST_F(Interrupted, UndoUnderThePointer) {
    for (const Tool tool : {Tool::Pencil, Tool::Eraser}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = Tool::Pencil;
        stroke(100);
        stroke(200);
        settings().activeTool = tool;
        drag(100);
        ASSERT_TRUE(run(QStringLiteral("undo"))); // the stroke at 200
        release();
        nothingIsStuck();
        EXPECT_EQ(inkAt(200), 0);
        EXPECT_EQ(inkAt(100), tool == Tool::Eraser ? 0 : 255);
        settings().activeTool = Tool::Pencil;
        stroke(300);
        EXPECT_EQ(inkAt(300), 255);
        ASSERT_TRUE(run(QStringLiteral("file -f -new")));
        node();
        activateDrawTool();
    }
}

// The stroke before it would go, and what could be redone with the next step.
TEST_F(Interrupted, UndoByKeyWaitsUntilThePenIsUp) {
    stroke(100);
    ASSERT_TRUE(waitFor([this] { return inkAt(100) > 0; }));
    at(5);
    stroke(150);
    ASSERT_TRUE(waitFor([this] { return inkAt(150) > 0; }));
    const auto undoByKey = [this] {
        key(Qt::Key_Control, true);
        type({Qt::Key_Z});
        key(Qt::Key_Control, false);
    };
    drag(200);
    undoByKey();
    release();
    EXPECT_TRUE(waitFor([this] { return inkAt(200) > 0; }));
    EXPECT_GT(inkAt(150), 0) << "undone while the pen was down";
    undoByKey();
    EXPECT_TRUE(waitFor([this] { return inkAt(200) == 0; })) << "afterwards the key works";
    EXPECT_GT(inkAt(150), 0);
    nothingIsStuck();
}

TEST_F(Interrupted, UndoOfTheFrameUnderThePointer) {
    stroke(100);
    const QImage first = picture();
    drag(200);
    ASSERT_TRUE(run(QStringLiteral("undo"))); // takes layer and frame away
    release();
    nothingIsStuck();
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(picture(), first);
    stroke(300);
    EXPECT_EQ(inkAt(300), 255);
}

TEST_F(Interrupted, NodeDeletedUnderThePointer) {
    stroke(100);
    const QImage first = picture();
    drag(200);
    ASSERT_TRUE(run(QStringLiteral("delete `ls -type rvVellum`")));
    errors.clear();
    release();
    nothingIsStuck();
    EXPECT_EQ(errors, QStringList{QStringLiteral("[Vellum2] Node not found")});
    moveTo({100, 300});
    press(); // no node, no drawing
    release();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), first);
    nothingIsStuck();
    stroke(300);
    EXPECT_EQ(inkAt(300), 255);
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
}

TEST_F(Interrupted, LayerGoneHiddenOrLockedUnderThePointer) {
    stroke(100);
    const QImage first = picture();
    struct Case {
        const char* name;
        std::function<void()> change;
        QStringList said;
    };
    const Case changes[] = {
        {"locked",
         [this] { document()->setLayerState(camera, 0, LayerState::Locked); },
         {QStringLiteral("[Vellum2] Active layer is locked.")}},
        {"hidden", [this] { document()->setLayerVisible(camera, 0, false); }, {}},
        {"taken away",
         [this] { document()->takeLayer(camera, 0); },
         {QStringLiteral("[Vellum2] A layer does not exist for the current camera")}},
        {"emptied",
         [this] { takeFrames(*document(), camera); },
         {QStringLiteral("[Vellum2] A frame is required at or before the current time.")}},
    };
    for (const auto& [name, change, said] : changes) {
        SCOPED_TRACE(name);
        drag(200);
        change();
        errors.clear();
        release();
        nothingIsStuck();
        EXPECT_EQ(errors, said);
        document()->setLayerState(camera, 0, LayerState::Animated);
        document()->setLayerVisible(camera, 0, true);
        stroke(300);
        EXPECT_EQ(inkAt(300), 255);
    }
    EXPECT_NE(picture(), first);
}

TEST_F(Interrupted, ALayerLockedUnderThePointerStaysAsItIs) {
    stroke(100);
    const QImage first = picture();
    for (const Tool tool : {Tool::Pencil, Tool::Eraser, Tool::Brush}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = tool;
        drag(tool == Tool::Eraser ? 100 : 200);
        document()->setLayerState(camera, 0, LayerState::Locked);
        release();
        nothingIsStuck();
        EXPECT_EQ(picture(), first);
        document()->setLayerState(camera, 0, LayerState::Animated);
    }
    ASSERT_TRUE(run(QStringLiteral("undo"))); // the one stroke there was
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
}

TEST_F(Interrupted, SceneOpenedUnderThePointer) {
    stroke(100);
    const QImage first = picture();
    QTemporaryDir folder;
    for (const char* name : {"a.ma", "a.mb"}) {
        SCOPED_TRACE(name);
        const QString file = folder.filePath(QString::fromLatin1(name));
        ASSERT_TRUE(run(QStringLiteral("file -rename \"%1\"; file -f -save -type \"%2\"")
                            .arg(file, QString::fromLatin1(name).endsWith(QLatin1Char('b'))
                                           ? QStringLiteral("mayaBinary")
                                           : QStringLiteral("mayaAscii"))));
        drag(200);
        ASSERT_TRUE(run(QStringLiteral("file -f -open \"%1\"").arg(file)));
        release();
        propagateCurrentTime();
        nothingIsStuck();
        EXPECT_EQ(picture(), first) << name;
        EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
        activateDrawTool();
    }
}

TEST_F(Interrupted, SavedUnderThePointer) {
    stroke(100);
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.mb"));
    drag(200);
    ASSERT_TRUE(
        run(QStringLiteral("file -rename \"%1\"; file -f -save -type \"mayaBinary\"").arg(file)));
    release();
    EXPECT_EQ(inkAt(200), 255);
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 1) << "the stroke is not in the file";
}

TEST_F(Interrupted, CameraRenamedWhileStrokesWaitToBeUndone) {
    ASSERT_TRUE(run(QStringLiteral("string $made[] = `camera`; rename $made[0] \"shotCam\"; "
                                   "lookThroughModelPanel shotCam `getPanel -withFocus`")));
    const QString shot = QStringLiteral("shotCam");
    stroke(100);
    stroke(200);
    ASSERT_EQ(document()->cameraLayerCount(shot), 1);
    const QImage both = sure(document()->currentFrame(shot)).image();
    ASSERT_TRUE(run(QStringLiteral("rename shotCam otherCam")));
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_NE(sure(document()->currentFrame(shot)).image(), both);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(shot), 0);
    ASSERT_TRUE(run(QStringLiteral("redo; redo; redo"))); // renamed again
    EXPECT_EQ(sure(document()->currentFrame(shot)).image(), both);

    drag(300); // through the camera of the new name: layers of its own
    ASSERT_TRUE(run(QStringLiteral("rename otherCam thirdCam")));
    release();
    nothingIsStuck();
    stroke(300);
    EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("thirdCam")), 1);
    EXPECT_EQ(sure(document()->currentFrame(shot)).image(), both);

    drag(100);
    ASSERT_TRUE(run(QStringLiteral("lookThroughModelPanel persp `getPanel -withFocus`; "
                                   "delete thirdCam")));
    release();
    nothingIsStuck();
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("thirdCam")), 1);
}

TEST_F(Interrupted, DuplicatedNodeSharesTheDocument) {
    stroke(100);
    ASSERT_TRUE(run(QStringLiteral("string $shape[] = `ls -type rvVellum`; duplicate "
                                   "`listRelatives -parent $shape[0]`")));
    ASSERT_EQ(allNodes().size(), 2U);
    EXPECT_EQ(allNodes()[0]->layerManager(), allNodes()[1]->layerManager());
    stroke(200);
    const QImage both = picture();
    ASSERT_TRUE(run(
        QStringLiteral("$shape = `ls -type rvVellum`; delete `listRelatives -parent $shape[0]`")));
    EXPECT_EQ(picture(), both) << "the copy has it all";
    stroke(300);
    ASSERT_TRUE(run(QStringLiteral("undo; undo; undo")));
    EXPECT_EQ(inkAt(200), 0);
    EXPECT_EQ(inkAt(100), 255);
    nothingIsStuck();
}

} // namespace
} // namespace vellum::test
