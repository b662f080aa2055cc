// The region transform as a user does it: a rectangle dragged over the view, Enter, drags, keys and
// the context menu.
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/TransformSession.h"

#include <QApplication>

using support::sure;

namespace vellum::test {
namespace {

TEST_F(Transforming, DragsARegionAppliesUndoesAndRedoes) {
    for (const char* renderer : {"vp2Renderer", "base_OpenGL_Renderer"}) {
        SCOPED_TRACE(renderer);
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -rendererName \"%1\" `getPanel -withFocus`")
                            .arg(QLatin1String(renderer))));
        ASSERT_EQ(picture(), drawn);
        select(QRect(QPoint(400, 460), QPoint(539, 549)));
        EXPECT_FALSE(tool()->isTransforming());
        enter();
        ASSERT_TRUE(tool()->isTransforming());
        EXPECT_EQ(inked(composite()), kInk); // lifted and lying where it was
        ASSERT_TRUE(node().transformDisplay());

        const QPoint from = view().rect().center() * view().devicePixelRatioF();
        drag(from, from + QPoint(60, -40));
        EXPECT_EQ(picture(), drawn); // the frame waits for Enter
        const int right = static_cast<int>(std::lround(60 / pixelsPerImagePixel()));
        const int up = static_cast<int>(std::lround(40 / pixelsPerImagePixel()));
        EXPECT_TRUE(near(inked(composite()), kInk.translated(right, -up), 1));
        enter();
        EXPECT_FALSE(tool()->isTransforming());
        EXPECT_FALSE(node().transformDisplay());
        EXPECT_EQ(document()->currentStroke(), nullptr);
        const QImage moved = picture();
        EXPECT_TRUE(near(inked(moved), kInk.translated(right, -up), 1));
        EXPECT_EQ(inked(moved, qRgb(255, 0, 0)).size(), QSize(50, 50)); // pixel for pixel
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(picture(), drawn);
        ASSERT_TRUE(run(QStringLiteral("redo")));
        EXPECT_EQ(picture(), moved);
        ASSERT_TRUE(run(QStringLiteral("undo")));
    }
}

TEST_F(Transforming, RotatesScalesAndFlips) {
    enter(); // nothing selected: the whole image
    ASSERT_TRUE(tool()->isTransforming());
    ASSERT_NE(document()->currentStroke(), nullptr);
    EXPECT_EQ(sure(document()->currentStroke()).region.region,
              QRect(QPoint(0, 0), QPoint(1022, 1022)));
    const QPoint from = view().rect().center() * view().devicePixelRatioF();

    key(Qt::Key_Shift, true);
    drag(from, from + QPoint(90, 0)); // one degree a pixel
    key(Qt::Key_Shift, false);
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.rotation, 90.0F);
    const QRect upright = inked(composite());
    EXPECT_NEAR(upright.width(), kInk.height(), 2);
    EXPECT_NEAR(upright.height(), kInk.width(), 2);
    // Clockwise: what was left is on top.
    EXPECT_LT(inked(composite(), qRgb(255, 0, 0)).center().y(), upright.center().y());

    // Scaling grows with every drag event; both axes stay above a tenth.
    drag(from, from + QPoint(-300, 200), Qt::MiddleButton);
    for (int i = 0; i < 60; ++i)
        drag(from, from + QPoint(-300, 200), Qt::MiddleButton);
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.scaleX, 0.1F);
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.scaleY, 0.1F);
    key(Qt::Key_Shift, true);
    drag(from, from + QPoint(200, 200), Qt::MiddleButton);
    key(Qt::Key_Shift, false);
    const RegionTransform state = sure(document()->currentStroke()).region;
    EXPECT_GT(state.scaleX, 0.1F);
    EXPECT_FLOAT_EQ(state.scaleX, state.scaleY);

    choose("Flip Horizontal");
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.scaleX, -state.scaleX);
    choose("Flip Vertical");
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.scaleY, -state.scaleY);
    choose("Flip Horizontal");
    choose("Flip Vertical");
    EXPECT_FLOAT_EQ(sure(document()->currentStroke()).region.scaleX, state.scaleX);

    type({Qt::Key_Backspace}); // everything as it was
    host::idle::drain();
    EXPECT_FALSE(tool()->isTransforming());
    EXPECT_EQ(picture(), drawn);
    EXPECT_EQ(inked(composite()), kInk);
    EXPECT_EQ(document()->currentStroke(), nullptr);
}

TEST_F(Transforming, FlippedRegionComesOutMirroredPixelForPixel) {
    select(QRect(QPoint(400, 460), QPoint(539, 549)));
    enter();
    choose("Flip Horizontal");
    choose("Apply Transform");
    const QImage image = picture();
    const QRect ink = inked(image);
    EXPECT_EQ(ink.size(), kInk.size());
    EXPECT_EQ(inked(image, qRgb(255, 0, 0)).size(), QSize(50, 50));
    EXPECT_GT(inked(image, qRgb(255, 0, 0)).left(), inked(image, qRgb(0, 0, 255)).left());
}

TEST_F(Transforming, CutCopyPasteThroughTheMenu) {
    EXPECT_FALSE(tool()->canPaste());
    select(QRect(QPoint(400, 460), QPoint(539, 549)));
    choose("Copy");
    EXPECT_EQ(picture(), drawn);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    ASSERT_TRUE(tool()->canPaste());

    select(QRect(QPoint(400, 460), QPoint(539, 549)));
    choose("Cut");
    EXPECT_TRUE(inked(picture()).isNull());
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);

    // The menu itself, under the pointer: what is pasted lies with its corner there.
    const QPoint corner = at(QPointF(600, 300));
    moveTo(corner);
    press(Qt::RightButton);
    release(Qt::RightButton);
    ASSERT_TRUE(waitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_TRUE(waitFor([] {
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && menu->actions().size() == 9;
    }));
    QApplication::activePopupWidget()->close();
    choose("Paste");
    // Copied 20 pixels left of and above the ink.
    const QRect expected(QPoint(600 + 20, 300 + 20), kInk.size());
    QImage pasted = picture();
    EXPECT_EQ(inked(pasted).left(), kInk.left());
    QPainter(&pasted).eraseRect(kInk);
    {
        QPainter painter(&pasted);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(kInk, Qt::transparent);
    }
    EXPECT_TRUE(near(inked(pasted), expected, 3));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);
    EXPECT_FALSE(run(QStringLiteral("undo"))); // one step for all of it
}

TEST_F(Transforming, PasteMakesAFrameAndCancelTakesItBack) {
    select(QRect(QPoint(400, 460), QPoint(539, 549)));
    choose("Copy");
    at(12);
    settings().automaticallyAddFirstLayer = true;
    const auto frames = [&] { return sure(document()->activeLayer(camera)).frameCount(); };
    choose("Paste and Transform");
    ASSERT_TRUE(tool()->isTransforming());
    EXPECT_EQ(frames(), 2);
    choose("Revert Transform");
    EXPECT_EQ(frames(), 1);
    choose("Paste");
    EXPECT_EQ(frames(), 2);
    EXPECT_FALSE(inked(picture()).isNull());
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(frames(), 1);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(frames(), 2);
    EXPECT_FALSE(inked(picture()).isNull());

    // The first layer of a camera comes and goes in the same way.
    std::vector<std::unique_ptr<Layer>> gone;
    document()->deleteAllLayers(camera, gone);
    ASSERT_TRUE(run(QStringLiteral("flushUndo")));
    choose("Paste and Transform");
    ASSERT_TRUE(tool()->isTransforming());
    EXPECT_EQ(document()->cameraLayerCount(camera), 1);
    choose("Cancel");
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_EQ(pluginState().transformContext, nullptr);
    EXPECT_TRUE(pluginState().drawToolActive);
}

TEST_F(Transforming, AnotherFrameEndsIt) {
    document()->addFrameAt(camera, 9);
    enter();
    const QPoint from = view().rect().center() * view().devicePixelRatioF();
    drag(from, from + QPoint(30, 30));
    const QImage moving = composite();
    at(9);
    EXPECT_FALSE(node().transformDisplay());
    EXPECT_TRUE(inked(composite()).isNull());
    at(1);
    EXPECT_TRUE(node().transformDisplay());
    EXPECT_EQ(composite(), moving);
    at(9);
    drag(from, from + QPoint(50, 0)); // ignored, and the release reverts
    host::idle::drain();
    EXPECT_FALSE(tool()->isTransforming());
    EXPECT_EQ(document()->currentStroke(), nullptr);
    at(1);
    EXPECT_EQ(picture(), drawn);

    // Enter on another frame applies nothing either.
    enter();
    drag(from, from + QPoint(30, 30));
    at(9);
    enter();
    EXPECT_FALSE(tool()->isTransforming());
    EXPECT_TRUE(inked(picture()).isNull());
    at(1);
    EXPECT_EQ(picture(), drawn);
    EXPECT_FALSE(run(QStringLiteral("undo")));
}

TEST_F(Transforming, WorksOnADrawingThatIsHeld) {
    at(5);
    ASSERT_EQ(sure(document()->activeLayer(camera)).frameTimes(), QList<int>{1});
    const QRect around = kInk.adjusted(-20, -20, 20, 20);
    select(around);
    choose("Copy");
    EXPECT_EQ(inked(document()->clipboardImage()).size(), kInk.size());
    EXPECT_EQ(picture(), drawn);
    select(around);
    choose("Cut");
    EXPECT_TRUE(inked(picture()).isNull());
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);
    takeTool();
    enter();
    ASSERT_TRUE(tool()->isTransforming());
    const QPoint from = view().rect().center() * view().devicePixelRatioF();
    drag(from, from + QPoint(30, 0));
    enter();
    EXPECT_GT(inked(picture()).left(), kInk.left());
    EXPECT_EQ(sure(document()->activeLayer(camera)).frameTimes(), QList<int>{1});
    at(1);
    EXPECT_NE(picture(), drawn) << "it is the drawing itself, not a copy at 5";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Transforming, SaysWhyNothingCanBeTransformed) {
    const auto refusedWith = [&](const char* message) {
        SCOPED_TRACE(message);
        for (const char* entry : {"", "Copy", "Cut"}) {
            errors.clear();
            takeTool();
            select(kInk);
            errors.clear();
            *entry ? choose(entry) : enter();
            EXPECT_EQ(errors, QStringList{QStringLiteral("[Vellum2] ") + QLatin1String(message)})
                << entry;
            EXPECT_FALSE(tool()->isTransforming());
        }
    };
    document()->setLayerState(camera, 0, LayerState::Locked);
    refusedWith("Active layer is locked.");
    document()->setLayerState(camera, 0, LayerState::Animated);
    document()->setLayerVisible(camera, 0, false);
    refusedWith("Active layer is not visible.");
    document()->setLayerVisible(camera, 0, true);
    at(-3);
    refusedWith("A frame is required at or before the current time.");
    document()->setLayerState(camera, 0, LayerState::Static);
    refusedWith("Static layer: A frame is required at or before the current time.");
    at(1);
    EXPECT_EQ(picture(), drawn);
    document()->takeLayer(camera, 0);
    refusedWith("A layer does not exist for the current camera");
    EXPECT_FALSE(run(QStringLiteral("undo")));
}

TEST_F(Transforming, SurvivesWhatHappensMeanwhile) {
    const QPoint from = view().rect().center() * view().devicePixelRatioF();
    const auto lift = [&] {
        takeTool();
        enter();
        ASSERT_TRUE(tool()->isTransforming());
        moveTo(from);
        press();
        moveTo(from + QPoint(20, 20));
    };
    // Another tool in mid-drag.
    lift();
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_EQ(picture(), drawn);
    release();
    // Its layer locked or gone.
    lift();
    document()->setLayerState(camera, 0, LayerState::Locked);
    release();
    enter();
    EXPECT_EQ(picture(), drawn);
    EXPECT_EQ(document()->currentStroke(), nullptr);
    enter(); // cannot begin there
    EXPECT_FALSE(tool()->isTransforming());
    document()->setLayerState(camera, 0, LayerState::Animated);
    lift();
    const std::unique_ptr<Layer> layer = document()->takeLayer(camera, 0);
    release();
    enter();
    EXPECT_FALSE(tool()->isTransforming());
    enter();
    EXPECT_FALSE(tool()->isTransforming());
    // The node gone, the scene new.
    draw();
    lift();
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    release();
    enter();
    type({Qt::Key_Escape});
    host::idle::drain();
    EXPECT_FALSE(run(QStringLiteral("undo")));
}

} // namespace
} // namespace vellum::test
