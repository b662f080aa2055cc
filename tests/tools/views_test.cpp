// Several views, views that go or change beneath the pointer, the size cursor, and the menus of
// the right button.
#include "node/BaseNode.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/ThreadManager.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/TimeSlider.h"

#include <QApplication>
#include <QBoxLayout>
#include <QMenu>
#include <QTest>

using support::lastOf;
using support::sure;

namespace vellum::test {
namespace {

class Views : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Pencil;
        settings().of(Tool::Pencil).size = 30;
        window->move(0, 0);
        activateDrawTool();
    }
    // A press in the middle of the other view and a short way.
    void drawIn(host::ModelPanel& panel) {
        other.moveTo(panel.viewWidget(), {100, 100});
        other.press();
        ASSERT_TRUE(waitFor([this] { return sampled() == 2; }));
        other.moveTo(panel.viewWidget(), {160, 100});
        ASSERT_TRUE(waitFor([this] { return sampled() > 2; }));
    }
    QMenu* menuAt(QWidget& place, QPointF position) {
        other.moveTo(place, position);
        other.press(Qt::RightButton);
        other.release(Qt::RightButton);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    support::Hand other;
};

TEST_F(Views, EveryViewDrawnInIsWatchedAndItsKeysAreHeard) {
    host::ModelPanel& panel = floating();
    const QString top = QStringLiteral("top");
    drawIn(panel);
    other.release();
    EXPECT_EQ(document()->cameraLayerCount(top), 1);
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    drawLine({100, 100}, {200, 100});
    EXPECT_EQ(document()->cameraLayerCount(camera), 1);

    for (QWidget* view :
         {static_cast<QWidget*>(&panel.viewWidget()), static_cast<QWidget*>(&this->view())}) {
        QMenu* menu = menuAt(*view, {50, 50});
        ASSERT_NE(menu, nullptr) << view->objectName().toStdString();
        menu->close();
        support::settle();
    }

    // In a window of its own the main window is not asked about keys.
    panel.window()->activateWindow();
    panel.viewWidget().setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel.window()));
    other.moveTo(panel.viewWidget(), {100, 100});
    other.key(Qt::Key_B, true);
    other.press();
    other.moveTo(panel.viewWidget(), {130, 100});
    other.release();
    other.key(Qt::Key_B, false);
    EXPECT_EQ(settings().of(Tool::Pencil).size, 33);
    settings().activeTool = Tool::Text;
    other.click(panel.viewWidget(), {60, 60});
    other.type({Qt::Key_B});
    ASSERT_NE(document()->currentStroke(), nullptr);
    EXPECT_EQ(sure(document()->currentStroke()).text, QStringLiteral("b"));
    other.type({Qt::Key_Escape});
    EXPECT_EQ(document()->currentStroke(), nullptr);
}

TEST_F(Views, MiddleButtonMakesTheLayersOfTheViewCurrent) {
    host::ModelPanel& panel = floating();
    drawIn(panel);
    other.release();
    drawLine({100, 100}, {200, 100});
    document()->setCurrentCamera(camera);
    other.moveTo(panel.viewWidget(), {50, 50});
    other.press(Qt::MiddleButton);
    EXPECT_EQ(document()->currentCamera(), QStringLiteral("top"));
    other.release(Qt::MiddleButton);
    EXPECT_FALSE(ThreadManager::instance().isActive());
}

TEST_F(Views, AViewClosedUnderThePointerKeepsTheStroke) {
    host::ModelPanel& panel = floating();
    drawIn(panel);
    ASSERT_TRUE(run(QStringLiteral("deleteUI floating")));
    EXPECT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
    EXPECT_FALSE(ThreadManager::instance().isActive());
    EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("top")), 1);
    moveTo({100, 100});
    other.release();
    drawLine({100, 100}, {200, 100});
    EXPECT_EQ(alphaAt(imagePixel({150, 100})), 255);
}

TEST_F(Views, CameraSwitchedUnderThePointer) {
    drawTo({100, 100}, {200, 100});
    const QPoint begun = imagePixel({101, 100});
    ASSERT_TRUE(run(QStringLiteral("lookThroughModelPanel top `getPanel -withFocus`")));
    moveTo({240, 130});
    release();
    EXPECT_EQ(alphaAt(begun), 255) << "on the camera it was begun for";
    EXPECT_EQ(document()->cameraLayerCount(QStringLiteral("top")), 0);
    EXPECT_FALSE(ThreadManager::instance().isActive());
}

TEST_F(Views, TheStrokeGoesOnOutsideTheViewAndTheWindow) {
    drawTo({100, 100}, {60, 100});
    moveTo({-20, 100});
    const std::size_t before = sampled();
    moveTo({view().portSize().width() + 300, 260}); // beyond the window
    ASSERT_TRUE(waitFor([&] { return sampled() > before; }));
    EXPECT_GT(lastOf(sure(document()->currentStroke()).points).x, kCanvasSize / 3);
    moveTo({300, 140});
    release();
    EXPECT_EQ(alphaAt(imagePixel({90, 100})), 255);
    EXPECT_EQ(document()->currentStroke(), nullptr);
}

// The pointer stays on the screen where it is while the view slides and grows beneath it.
TEST_F(Views, AViewMovedOrResizedUnderThePointer) {
    settings().activeTool = Tool::Line; // its second point is where the pointer is
    const auto end = [this] {
        const StrokePoint last = lastOf(sure(document()->currentStroke()).points);
        return QPoint(last.x, last.y);
    };
    QWidget strip(window.get());
    auto* column = qobject_cast<QBoxLayout*>(view().parentWidget()->layout());
    ASSERT_NE(column, nullptr);
    drawTo({100, 100}, {200, 110});
    EXPECT_EQ(end(), imagePixel({200, 110}));
    const QSize size = view().size();

    strip.setFixedHeight(60);
    column->insertWidget(0, &strip);
    strip.show();
    ASSERT_TRUE(waitFor([&] { return view().height() == size.height() - 60; }));
    moveTo({230, 80});
    EXPECT_TRUE(waitFor([&] { return end() == imagePixel({230, 80}); })) << "moved down";

    window->resize(window->width() - 80, window->height() - 90);
    ASSERT_TRUE(waitFor([&] { return view().height() == size.height() - 150; }));
    EXPECT_TRUE(waitFor([&] { return end() == imagePixel({230, 80}); })) << "smaller";
    moveTo({240, 90});
    EXPECT_TRUE(waitFor([&] { return end() == imagePixel({240, 90}); }));
    release();
    EXPECT_EQ(alphaAt(imagePixel({239, 89})), 255);
}

TEST_F(Views, TwoQuickPressesAreTwoStrokes) {
    moveTo({200, 150});
    for (int i = 0; i < 4; ++i) {
        press();
        release();
    }
    EXPECT_EQ(alphaAt(imagePixel({200, 150})), 255);
    ASSERT_TRUE(run(QStringLiteral("undo; undo; undo")));
    EXPECT_EQ(alphaAt(imagePixel({200, 150})), 255) << "each its own step";
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
}

TEST_F(Views, ThePenIsSeenBeforeTheFirstPressInAView) {
    floating();
    ASSERT_TRUE(run(QStringLiteral("setFocus second")));
    activateDrawTool(); // only the floating view is watched now
    settings().of(Tool::Pencil).tabletEnabled = true;
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, false);
    using Phase = host::InputInjector::TabletPhase;
    moveTo({100, 100});
    pen(Phase::Press, {100, 100}, 0.3);
    drawTo({100, 100}, {200, 100});
    for (const StrokePoint& point : sure(document()->currentStroke()).points)
        EXPECT_NEAR(point.opacity, 0.3, 1e-5);
    release();

    // In a window of its own that has come after the tool, with the other end of the pen.
    run(QStringLiteral("deleteUI floating"));
    host::ModelPanel& panel = floating();
    other.moveTo(panel.viewWidget(), {100, 100});
    other.moveTo(panel.viewWidget(), {102, 100}); // hovers
    host::InputInjector::tablet(
        panel.window()->windowHandle(), Phase::Press,
        host::InputInjector::toScreen(&panel.viewWidget(), QPointF(102, 100)), 0.3, true);
    support::settle();
    drawIn(panel);
    EXPECT_EQ(sure(document()->currentStroke()).tool, Tool::Eraser);
    other.release();
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, true);
}

// --- The size cursor ---------------------------------------------------------------------------

TEST_F(Views, SizeCursorIsSeenInBothRenderersAndGoes) {
    for (const char* renderer : {"vp2Renderer", "base_OpenGL_Renderer"}) {
        SCOPED_TRACE(renderer);
        ASSERT_TRUE(run(QStringLiteral("modelEditor -e -grid 0 -rendererName \"%1\" "
                                       "`getPanel -withFocus`")
                            .arg(QLatin1String(renderer))));
        settings().of(Tool::Pencil).size = 50;
        moveTo({200, 200});
        view().repaint();
        const QImage before = onScreen();
        const double viewPixels = 512.0 / (imagePixel({512, 0}).x() - imagePixel({0, 0}).x());
        const int reach = static_cast<int>(25 * viewPixels + 0.5);
        const auto isMarked = [&](int distance) {
            const QImage now = onScreen();
            for (int x = 200 + distance - 2; x <= 200 + distance + 2; ++x) {
                if (now.pixel(x, 200) != before.pixel(x, 200))
                    return true;
            }
            return false;
        };
        key(Qt::Key_B, true);
        press();
        EXPECT_TRUE(waitFor([&] { return isMarked(reach); })) << reach;
        moveTo({500, 200}); // size 80
        EXPECT_EQ(settings().of(Tool::Pencil).size, 80);
        EXPECT_TRUE(waitFor([&] { return isMarked(reach * 80 / 50); }));
        EXPECT_TRUE(waitFor([&] { return !isMarked(reach); })) << "the old circle is gone";
        release();
        key(Qt::Key_B, false);
        EXPECT_TRUE(waitFor([&] { return onScreen() == before; }));
    }
}

// --- Menus of the right button -----------------------------------------------------------------

TEST_F(Views, RightButtonMenusOfViewAndTimeSlider) {
    drawLine({100, 100}, {200, 100});
    document()->addLayer(camera, 1, QStringLiteral("Upper"));
    document()->setActiveLayer(camera, 0, true);
    const QImage drawn = picture();
    QMenu* menu = menuAt(view(), {150, 150});
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    QAction* upper = menu->actions().first();
    ASSERT_EQ(upper->text(), QStringLiteral("Upper"));
    other.click(*menu, menu->actionGeometry(upper).center());
    EXPECT_TRUE(waitFor([this] { return document()->activeLayerIndex(camera) == 1; }));
    document()->setActiveLayer(camera, 0, true);
    EXPECT_EQ(picture(), drawn) << "choosing draws nothing";

    host::TimeSlider& slider = window->timeSlider();
    pluginState().timeControl = &slider;
    pluginState().interactive = true;
    activateDrawTool();
    for (const bool allowed : {true, false}) {
        SCOPED_TRACE(allowed ? "allowed" : "not allowed");
        settings().timelineContextMenu = settings().drawToolContextMenu = allowed;
        for (QWidget* place : {static_cast<QWidget*>(&slider), static_cast<QWidget*>(&view())}) {
            menu = menuAt(*place, {40, 10});
            EXPECT_EQ(menu != nullptr, allowed) << place->metaObject()->className();
            if (menu)
                menu->close();
            support::settle();
        }
        other.key(Qt::Key_Shift, true);
        EXPECT_EQ(menuAt(slider, {40, 10}), nullptr) << "with a modifier it is Maya's";
        other.key(Qt::Key_Shift, false);
    }
    settings().drawToolContextMenu = true;
    window->activateWindow();
    view().setFocus();
    other.key(Qt::Key_Backslash, true);
    EXPECT_EQ(menuAt(view(), {150, 150}), nullptr) << "the key of panning and zooming is held";
    other.key(Qt::Key_Backslash, false);
    menu = menuAt(view(), {190, 180}); // elsewhere: no double click
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    EXPECT_TRUE(waitFor([] { return QApplication::activePopupWidget() == nullptr; }))
        << "its menu goes with the tool";
    EXPECT_EQ(menuAt(view(), {130, 150}), nullptr);
}

} // namespace
} // namespace vellum::test
