// What of the mouse reaches a tool, and with which coordinates: driven through the X server.
#include "host_ui/UiTest.h"
#include "render/Renderer.h"
#include "render/View.h"
#include "render/Views.h"

#include <QProcess>

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using uitest::calls;
using uitest::RecordingContext;

class ViewEvents : public uitest::UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        run("recordCtx one; setToolTo one");
        uitest::settle();
        calls().clear();
    }

    /// A call at a point given in device pixels from the top left, as the tool should see it.
    std::string at(const char* what, int x, int y, const char* rest = "left") {
        return std::string(what) + " " + std::to_string(x) + " " +
               std::to_string(view().view().portHeight() - 1 - y) + " " + rest;
    }
};

TEST_F(ViewEvents, PressDragReleaseInDevicePixels) {
    const QSize port = view().portSize();
    const double scale = view().devicePixelRatioF();
    EXPECT_EQ(view().view().portWidth(), port.width());
    EXPECT_NEAR(port.width(), view().width() * scale, 0.51);
    // Pixels that lie between logical ones on a scaled display.
    moveTo(view(), {31, 17});
    press();
    moveTo(view(), {32, 18});
    moveTo(view(), {100, 71});
    moveTo(view(), {port.width() - 1.0, port.height() - 1.0});
    release();
    EXPECT_THAT(calls(),
                ElementsAre(at("press2", 31, 17), at("drag2", 32, 18), at("drag2", 100, 71),
                            at("drag2", port.width() - 1, port.height() - 1),
                            at("release2", port.width() - 1, port.height() - 1)));
    const M3dView active = M3dView::active3dView();
    EXPECT_EQ(active.widget(), static_cast<QWidget*>(&view()));
    EXPECT_EQ(active.portHeight(), port.height());
}

TEST_F(ViewEvents, ScaledDisplays) {
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        GTEST_SKIP() << "this is one of the scaled runs";
    for (const char* scale : {"1", "1.5", "2", "3"}) {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SCALE_FACTOR", scale);
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(),
                    {"--gtest_filter=ViewEvents.PressDragReleaseInDevicePixels:"
                     "TimeSliderTest.ScrubsToTheFrameUnderThePointer"});
        ASSERT_TRUE(child.waitForFinished(60000)) << "scale " << scale;
        EXPECT_EQ(child.exitCode(), 0) << "scale " << scale << "\n"
                                       << child.readAll().toStdString();
    }
}

TEST_F(ViewEvents, OnlyLeftAndMiddleWithoutAltArrive) {
    moveTo(view(), {60, 60});
    press(Qt::RightButton);
    moveTo(view(), {70, 60});
    release(Qt::RightButton);
    EXPECT_THAT(calls(), IsEmpty());
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
        SCOPED_TRACE("button " + std::to_string(button));
        key(Qt::Key_Alt, true);
        press(button);
        moveTo(view(), {80, 70});
        key(Qt::Key_Alt, false); // letting go of Alt first does not hand the drag to the tool
        moveTo(view(), {85, 75});
        release(button);
        moveTo(view(), {60, 60});
        EXPECT_THAT(calls(), IsEmpty());
    }
    press(Qt::MiddleButton);
    release(Qt::MiddleButton);
    EXPECT_THAT(calls(),
                ElementsAre(at("press2", 60, 60, "middle"), at("release2", 60, 60, "middle")));
}

TEST_F(ViewEvents, ModifiersAndASecondButton) {
    moveTo(view(), {60, 60});
    key(Qt::Key_Shift, true);
    press();
    press(Qt::MiddleButton); // while one button is in use, another changes nothing
    release(Qt::MiddleButton);
    key(Qt::Key_Shift, false);
    key(Qt::Key_Control, true);
    release();
    key(Qt::Key_Control, false);
    EXPECT_THAT(calls(), ElementsAre(at("press2", 60, 60, "left shift"),
                                     at("release2", 60, 60, "left control")));
}

TEST_F(ViewEvents, PlainFormsFollowFailureAndTheLegacyViewport) {
    RecordingContext::takesModern = false;
    moveTo(view(), {60, 60});
    press();
    release();
    EXPECT_THAT(calls(), ElementsAre(at("press", 60, 60), at("release", 60, 60)));

    RecordingContext::takesModern = true;
    run("modelEditor -e -rendererName \"base_OpenGL_Renderer\" modelPanel4");
    calls().clear();
    press();
    moveTo(view(), {61, 60});
    release();
    EXPECT_THAT(calls(),
                ElementsAre(at("press", 60, 60), at("drag", 61, 60), at("release", 61, 60)));
}

TEST_F(ViewEvents, WhatAToolDrawsIsSeenUntilItsNextEvent) {
    const auto redAt = [this](int x, int yFromBottom) {
        const QImage image = view().grabFramebuffer();
        const QColor color = image.pixelColor(x, image.height() - 1 - yFromBottom);
        return color.red() > 200 && color.green() < 60 && color.blue() < 60;
    };
    moveTo(view(), {100, 100});
    press();
    EXPECT_FALSE(redAt(40, 40));
    moveTo(view(), {110, 100});
    EXPECT_TRUE(redAt(40, 40));
    EXPECT_FALSE(redAt(80, 80));
    release();
    EXPECT_FALSE(redAt(40, 40));
}

TEST_F(ViewEvents, TranslucentDrawingDoesNotLetTheWindowThrough) {
    run("modelEditor -e -grid false modelPanel4");
    const auto seen = [this] { // as the window shows it, not as the view drew it
        uitest::settle();
        const QPoint corner = view().mapTo(window.get(), QPoint(0, 0));
        const QImage image = window->grab().toImage();
        const double scale = image.devicePixelRatio();
        return image.pixelColor(int(corner.x() * scale) + 140,
                                int(corner.y() * scale) + view().portSize().height() - 1 - 40);
    };
    const QColor before = seen();
    moveTo(view(), {100, 100});
    press();
    moveTo(view(), {110, 100});
    const QColor after = seen();
    EXPECT_NEAR(after.red(), before.red() / 2.0, 2);
    EXPECT_NEAR(after.green(), before.green() / 2.0, 2);
    EXPECT_NEAR(after.blue(), before.blue() / 2.0, 2);
    release();
}

TEST_F(ViewEvents, AltMovesTheCamera) {
    const auto camera = [this] { return view().view().camera().inclusiveMatrix(); };
    const auto drag = [this](Qt::MouseButton button, QPointF to) {
        moveTo(view(), {100, 100});
        key(Qt::Key_Alt, true);
        press(button);
        moveTo(view(), to);
        release(button);
        key(Qt::Key_Alt, false);
    };
    const MMatrix start = camera();
    drag(Qt::MiddleButton, {140, 100});
    const MMatrix tracked = camera();
    EXPECT_FALSE(tracked.isEquivalent(start, 1e-6));
    for (int row = 0; row < 3; ++row) { // tracking turns nothing
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(tracked(row, column), start(row, column), 1e-9) << row << ", " << column;
    }
    drag(Qt::LeftButton, {140, 120});
    const MMatrix tumbled = camera();
    EXPECT_GT(std::abs(tumbled(2, 0) - tracked(2, 0)), 0.01);
    // Tumbling keeps the centre of interest where it is.
    const double distance = run("getAttr perspShape.centerOfInterest").toFloat();
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(tumbled(3, i) - tumbled(2, i) * distance,
                    tracked(3, i) - tracked(2, i) * distance, 1e-6);
    drag(Qt::RightButton, {140, 100});
    EXPECT_LT(run("getAttr perspShape.centerOfInterest").toFloat(), distance);
}

TEST_F(ViewEvents, BackslashPansAndZoomsThePicture) {
    const MDagPath camera = view().view().camera();
    const MMatrix still = camera.inclusiveMatrix();
    const MPoint point(0.5, 0.25, -0.5);
    const auto seen = [&] { return view().view().frame()->project(point); };
    const auto drag = [this](Qt::MouseButton button, QPointF to) {
        moveTo(view(), {100, 100});
        key(Qt::Key_Backslash, true);
        press(button);
        moveTo(view(), to);
        release(button);
        key(Qt::Key_Backslash, false);
    };
    for (const char* name : {"persp", "top"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(window->mainPanel().lookThrough(name));
        const std::string shape = std::string(name) + "Shape.";
        const auto whole = seen();
        drag(Qt::MiddleButton, {137, 79});
        EXPECT_NEAR(seen().x - whole.x, 37, 0.01);
        EXPECT_NEAR(seen().y - whole.y, 21, 0.01);
        EXPECT_EQ(runInt("getAttr " + shape + "panZoomEnabled"), 1);
        drag(Qt::RightButton, {150, 100});
        EXPECT_LT(run("getAttr " + shape + "zoom").toFloat(), 0.9);
        // A pan follows the pointer in the enlarged picture too.
        const auto large = seen();
        drag(Qt::LeftButton, {90, 105});
        EXPECT_NEAR(seen().x - large.x, -10, 0.01);
        EXPECT_NEAR(seen().y - large.y, -5, 0.01);
        type({Qt::Key_Backslash});
        EXPECT_EQ(runInt("getAttr " + shape + "panZoomEnabled"), 0);
        EXPECT_NEAR(seen().x, whole.x, 1e-6);
        type({Qt::Key_Backslash});
        EXPECT_NEAR(seen().x, large.x - 10, 0.01);
    }
    EXPECT_TRUE(camera.inclusiveMatrix().isEquivalent(still, 1e-12)) << "the camera stays";
    EXPECT_THAT(calls(), IsEmpty());

    // A release that another window got.
    key(Qt::Key_Backslash, true);
    run("window other; showWindow other");
    ASSERT_TRUE(QTest::qWaitForWindowActive(MQtUtil::findWindow("other")));
    key(Qt::Key_Backslash, false);
    run("deleteUI other");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    moveTo(view(), {60, 60});
    press();
    release();
    EXPECT_EQ(calls().size(), 2U) << "the tool has its press again";
}
