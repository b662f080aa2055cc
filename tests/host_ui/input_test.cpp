// The finer points of input: hovering, pens, several views, the wheel, the camera's arithmetic.
#include "host_ui/UiTest.h"
#include "render/Frame.h"
#include "render/View.h"
#include "render/Views.h"
#include "ui/CameraNavigation.h"
#include "ui/InputInjector.h"

#include <QTabletEvent>

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

#include <cmath>
#include <gmock/gmock.h>

using testing::ElementsAre;
using uitest::calls;

namespace {

/// Writes down every mouse and pen event of one widget, as a plug-in's filter sees them.
class PenWatch : public QObject {
public:
    std::vector<std::string> seen;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease: {
            const auto* pen = static_cast<QTabletEvent*>(event);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
            const bool eraser = pen->pointerType() == QPointingDevice::PointerType::Eraser;
#else
            const bool eraser = pen->pointerType() == QTabletEvent::Eraser;
#endif
            const char* what = event->type() == QEvent::TabletPress  ? "pen down "
                               : event->type() == QEvent::TabletMove ? "pen move "
                                                                     : "pen up ";
            seen.push_back(what + std::to_string(int(std::lround(pen->pressure() * 100))) +
                           (eraser ? " eraser" : ""));
            break;
        }
        case QEvent::MouseButtonPress:
            seen.push_back("mouse down");
            break;
        case QEvent::MouseButtonRelease:
            seen.push_back("mouse up");
            break;
        default:
            break;
        }
        return false;
    }
};

} // namespace

class Input : public uitest::UiTest {};

TEST_F(Input, PensComeWithTheRealPointer) {
    PenWatch watch;
    view().installEventFilter(&watch);
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, false);
    const auto pen = [this](host::InputInjector::TabletPhase phase, int x, double pressure,
                            bool eraser = false) {
        host::InputInjector::tablet(window->windowHandle(), phase,
                                    host::InputInjector::toScreen(&view(), QPointF(x, 50)),
                                    pressure, eraser);
    };
    using Phase = host::InputInjector::TabletPhase;
    moveTo(view(), {50, 50});
    pen(Phase::Press, 50, 0.25);
    press();
    pen(Phase::Move, 60, 0.5);
    moveTo(view(), {60, 50});
    pen(Phase::Release, 60, 0);
    release();
    pen(Phase::Press, 60, 1, true);
    press();
    pen(Phase::Release, 60, 0, true);
    release();
    QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, true);
    EXPECT_THAT(watch.seen,
                ElementsAre("pen down 25", "mouse down", "pen move 50", "pen up 0", "mouse up",
                            "pen down 100 eraser", "mouse down", "pen up 0 eraser", "mouse up"));
}

TEST_F(Input, ThePressedViewIsTheActiveOne) {
    run("window -widthHeight 200 150 w; paneLayout -parent w p; modelPanel -parent p second;"
        "showWindow w; recordCtx one; setToolTo one");
    host::ModelPanel* second = host::ModelPanel::find("second");
    ASSERT_NE(second, nullptr);
    second->window()->move(600, 100);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(second->window()));
    uitest::settle();
    calls().clear();
    EXPECT_EQ(M3dView::active3dView().widget(), static_cast<QWidget*>(&view()));
    const host::ViewWidget& other = second->viewWidget();
    moveTo(other, {20, 30});
    press();
    EXPECT_EQ(M3dView::active3dView().widget(), static_cast<const QWidget*>(&other));
    moveTo(other, {25, 30});
    EXPECT_FALSE(second->view().toolDrawables().empty());
    EXPECT_TRUE(view().view().toolDrawables().empty()) << "tools draw in their own view only";
    // A drag that leaves the view stays the view's, with positions outside the port.
    moveTo(view(), {100, 100});
    release();
    EXPECT_EQ(calls().size(), 4U);
    EXPECT_EQ(M3dView::active3dView().widget(), static_cast<const QWidget*>(&other));
    EXPECT_EQ(runString("getPanel -withFocus"), "second");
    EXPECT_EQ(run("getPanel -type modelPanel").size(), 2U);
    EXPECT_EQ(run("getPanel -type outlinerPanel").size(), 0U);
    EXPECT_EQ(runString("getPanel -underPointer"), "modelPanel4");
    run("deleteUI w");
    EXPECT_EQ(M3dView::active3dView().widget(), static_cast<QWidget*>(&view()));
}

TEST_F(Input, DoubleClicksArePresses) {
    run("recordCtx one; setToolTo one");
    uitest::settle();
    calls().clear();
    moveTo(view(), {40, 40});
    for (int i = 0; i < 2; ++i) {
        press();
        release();
    }
    ASSERT_EQ(calls().size(), 4U);
    EXPECT_EQ(calls()[2].substr(0, 6), "press2");
}

TEST_F(Input, TrackingFollowsThePointer) {
    host::View& shown = view().view();
    const QSize port = view().portSize();
    const auto centre = [&](const MDagPath& camera) {
        const MMatrix m = camera.inclusiveMatrix();
        const double distance = run("getAttr perspShape.centerOfInterest").toFloat();
        return MPoint(m(3, 0) - m(2, 0) * distance, m(3, 1) - m(2, 1) * distance,
                      m(3, 2) - m(2, 2) * distance);
    };
    const MDagPath camera = shown.camera();
    const MPoint point = centre(camera);
    const auto before = shown.frame()->project(point);
    host::CameraNavigation track(camera, host::CameraNavigation::Mode::Track);
    track.drag({37, -21}, port);
    const auto after = shown.frame()->project(point);
    EXPECT_NEAR(after.x - before.x, 37, 0.01);
    EXPECT_NEAR(after.y - before.y, -21, 0.01);
}

TEST_F(Input, OrthographicAndLockedCameras) {
    ASSERT_TRUE(window->mainPanel().lookThrough("top"));
    const MDagPath top = view().view().camera();
    const MMatrix start = top.inclusiveMatrix();
    const double width = run("getAttr topShape.orthographicWidth").toFloat();
    host::CameraNavigation::dollyStep(top, 3);
    EXPECT_LT(run("getAttr topShape.orthographicWidth").toFloat(), width);
    EXPECT_TRUE(top.inclusiveMatrix().isEquivalent(start, 1e-12));
    host::CameraNavigation(top, host::CameraNavigation::Mode::Tumble)
        .drag({50, 50}, view().portSize());
    EXPECT_TRUE(top.inclusiveMatrix().isEquivalent(start, 1e-12)) << "these do not tumble";

    ASSERT_TRUE(window->mainPanel().lookThrough("persp"));
    run("setAttr -lock true persp.translateY");
    const double y = run("getAttr persp.translateY").toFloat();
    host::CameraNavigation(view().view().camera(), host::CameraNavigation::Mode::Tumble)
        .drag({50, 50}, view().portSize());
    EXPECT_EQ(run("getAttr persp.translateY").toFloat(), y);
    run("setAttr -lock false persp.translateY");
}

TEST_F(Input, CameraMovesAreNotUndone) {
    run("flushUndo");
    host::CameraNavigation::dollyStep(view().view().camera(), 1);
    const double distance = run("getAttr perspShape.centerOfInterest").toFloat();
    type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(run("getAttr perspShape.centerOfInterest").toFloat(), distance);
}
