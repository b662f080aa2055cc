// Drawing as a user does it: the window system's pointer over the view, the real tool, filter,
// sampling thread and command.
#include "document/Frame.h"
#include "document/Layer.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/ThreadManager.h"
#include "ui/InputInjector.h"
#include "ui/MainWindow.h"
#include "ui/Tools.h"
#include "ui/ViewWidget.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProcess>
#include <QThread>

#include <maya/MAnimControl.h>

using support::sure;

namespace vellum::test {
namespace {

class Drawing : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().activeTool = Tool::Pencil;
        settings().of(Tool::Pencil).size = 12;
        settings().activeColor = QColor(250, 120, 10);
        activateDrawTool();
    }

    std::size_t sampled() {
        const Stroke* stroke = document()->currentStroke();
        return stroke ? stroke->points.size() : 0;
    }

    // Presses, drags through the points and waits until each has been sampled; the button stays
    // down.
    void drag(std::initializer_list<QPoint> places) {
        bool down = false;
        for (const QPoint place : places) {
            moveTo(place);
            if (!down)
                press();
            down = true;
            const QPoint expected = imagePixel(place);
            EXPECT_TRUE(waitFor([&] { return isSampledNear(expected); }))
                << "no sample near " << place.x() << ", " << place.y();
        }
    }

    bool isSampledNear(QPoint pixel) {
        const Stroke* stroke = document()->currentStroke();
        if (!stroke || stroke->points.empty())
            return false;
        const StrokePoint& last = stroke->points.back();
        // Smoothing holds a point back by a good half of the last way.
        return std::abs(last.x - pixel.x()) + std::abs(last.y - pixel.y()) < 200;
    }

    void stroke(std::initializer_list<QPoint> places) {
        drag(places);
        release();
    }
};

TEST_F(Drawing, ClickLeavesADabUnderThePointer) {
    for (const Tool tool : {Tool::Pencil, Tool::Brush}) {
        SCOPED_TRACE("tool " + std::to_string(numberOf(tool)));
        settings().activeTool = tool;
        moveTo({200, 150});
        press();
        release();
        const QPoint pixel = imagePixel({200, 150});
        EXPECT_GT(alphaAt(pixel), 60) << "tool " << numberOf(tool);
        EXPECT_EQ(alphaAt(pixel + QPoint(40, 0)), 0);
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    }
}

TEST_F(Drawing, StrokeFollowsAndIsUndoneAndRedone) {
    stroke({{100, 100}, {200, 140}, {300, 100}});
    EXPECT_EQ(document()->currentStroke(), nullptr);
    EXPECT_FALSE(ThreadManager::instance().isActive());
    const QImage drawn = picture();
    EXPECT_EQ(drawn.pixelColor(imagePixel({100, 100})), QColor(250, 120, 10, 255));
    EXPECT_GT(alphaAt(imagePixel({150, 120})), 0);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(picture(), drawn);

    settings().activeTool = Tool::Eraser;
    stroke({{80, 100}, {120, 100}});
    EXPECT_EQ(alphaAt(imagePixel({100, 100})), 0);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), drawn);
}

TEST_F(Drawing, PointsAreTheVeryDevicePixels) {
    settings().activeTool = Tool::Line; // keeps press and present position, unsmoothed
    const QPoint from(101, 77);
    const QPoint to(250, 203);
    moveTo(from);
    press();
    ASSERT_TRUE(waitFor([&] { return sampled() == 2; }));
    moveTo(to);
    ASSERT_TRUE(waitFor([&] {
        const StrokePoint& last = sure(document()->currentStroke()).points[1];
        return QPoint(last.x, last.y) == imagePixel(to);
    }));
    const StrokePoint& first = sure(document()->currentStroke()).points[0];
    EXPECT_EQ(QPoint(first.x, first.y), imagePixel(from));
    release();
    EXPECT_GT(alphaAt((imagePixel(from) + imagePixel(to)) / 2), 100);
}

// The scale of a screen is fixed when a program starts, so each has a run of its own.
TEST(DrawingAtScale, PointsAreTheVeryDevicePixels) {
    for (const char* scale : {"1.5", "2", "3"}) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QLatin1String(scale));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--gtest_filter=Drawing.PointsAreTheVeryDevicePixels:"
                                      "Drawing.ClickLeavesADabUnderThePointer")});
        ASSERT_TRUE(program.waitForFinished(60'000)) << scale;
        EXPECT_EQ(program.exitCode(), 0) << "at scale " << scale << ":\n"
                                         << program.readAll().toStdString();
    }
}

TEST_F(Drawing, EraserEndErasesWithoutChangingTheTool) {
    stroke({{100, 100}, {300, 100}});
    ASSERT_GT(alphaAt(imagePixel({150, 100})), 0);
    settings().of(Tool::Eraser).size = 60;
    moveTo({150, 100});
    pluginState().tabletEraser = true; // as the filter sets it
    press();
    release();
    EXPECT_EQ(alphaAt(imagePixel({150, 100})), 0);
    EXPECT_EQ(settings().activeTool, Tool::Pencil);
    EXPECT_FALSE(pluginState().tabletEraser);
}

TEST_F(Drawing, SizeAndOpacityDrags) {
    settings().of(Tool::Pencil).size = 6;
    settings().of(Tool::Pencil).opacity = 50;
    moveTo({200, 200});
    key(Qt::Key_B, true);
    press();
    moveTo({209, 200});
    EXPECT_EQ(settings().of(Tool::Pencil).size, 6);
    moveTo({225, 200});
    EXPECT_EQ(settings().of(Tool::Pencil).size, 8);
    moveTo({100, 200});
    EXPECT_EQ(settings().of(Tool::Pencil).size, 1);
    release();
    key(Qt::Key_B, false);
    moveTo({200, 200});
    key(Qt::Key_M, true);
    press();
    moveTo({240, 220});
    release();
    key(Qt::Key_M, false);
    EXPECT_EQ(settings().of(Tool::Pencil).opacity, 54);
    EXPECT_EQ(document()->cameraLayerCount(camera), 0) << "nothing was drawn";
}

TEST_F(Drawing, TextIsTypedAndCommittedByTheNextPress) {
    settings().activeTool = Tool::Text;
    settings().of(Tool::Text).fontFamily = QStringLiteral("DejaVu Sans");
    settings().of(Tool::Text).size = 40;
    moveTo({150, 120});
    press();
    release();
    ASSERT_NE(document()->currentStroke(), nullptr);
    view().setFocus();
    for (const Qt::Key code : {Qt::Key_H, Qt::Key_B, Qt::Key_X, Qt::Key_Backspace}) {
        key(code, true);
        key(code, false);
    }
    EXPECT_EQ(sure(document()->currentStroke()).text, QStringLiteral("hb"));
    settings().activeTool = Tool::Pencil;
    moveTo({300, 300});
    press();
    EXPECT_NE(picture(), QImage());
    release();
    ASSERT_TRUE(run(QStringLiteral("undo"))); // the dab
    const QPoint corner = imagePixel({150, 120});
    int inked = 0;
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 120; ++x)
            inked += alphaAt(corner + QPoint(x, y)) > 0 ? 1 : 0;
    }
    EXPECT_GT(inked, 200);
    ASSERT_TRUE(run(QStringLiteral("undo"))); // the text, with the layer made for it
    EXPECT_EQ(document()->cameraLayerCount(camera), 0);
}

TEST_F(Drawing, TimeChangeDuringAStrokeLosesNothing) {
    at(1);
    stroke({{100, 100}, {200, 100}});
    const QImage one = picture();
    at(10);
    stroke({{100, 200}, {200, 200}});
    const QImage ten = picture();
    for (const Tool tool : {Tool::Pencil, Tool::Eraser}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = tool;
        at(1);
        drag({{100, 300}, {200, 300}});
        at(10);
        release();
        EXPECT_EQ(alphaAt(imagePixel({120, 200})), 255) << "nothing was in the stroke's way";
        EXPECT_EQ(alphaAt(imagePixel({120, 300})), tool == Tool::Pencil ? 255 : 0);
        EXPECT_EQ(alphaAt(imagePixel({120, 100})), 0) << "nothing comes along from frame 1";
        at(1);
        EXPECT_EQ(picture(), one);
        at(10);
    }
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_EQ(picture(), ten);

    // The frame that was made for the stroke goes with it, though another one was shown.
    settings().activeTool = Tool::Pencil;
    at(5);
    drag({{100, 300}, {200, 300}});
    at(10);
    release();
    EXPECT_NE(picture(), ten);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(picture(), ten);
    EXPECT_EQ(sure(document()->activeLayer(camera)).frameTimes(), (QList<int>{1, 10}));
    // Nothing is shown to draw on any more.
    at(-5);
    drag({{100, 300}, {200, 300}});
    at(-9);
    release();
    EXPECT_EQ(sure(document()->activeLayer(camera)).frameTimes(), (QList<int>{1, 10}));
    EXPECT_EQ(document()->currentStroke(), nullptr);
}

// The program is busy while the hand draws, lets go and moves on.
TEST_F(Drawing, UnderLoadTheLineEndsWhereTheButtonWentUp) {
    const auto hand = host::InputInjector::create();
    if (!hand->isReal())
        GTEST_SKIP() << "the pointer is only moved by the events themselves";
    const auto place = [this](QPoint viewPixel) {
        return host::InputInjector::toScreen(&view(), viewPixel);
    };
    settings().of(Tool::Pencil).size = 1;
    for (int round = 0; round < 6; ++round) {
        SCOPED_TRACE(round);
        const QPoint end(300 + 7 * round, 100 + 20 * round);
        moveTo({100, end.y()});
        press();
        hand->moveTo(place({(100 + end.x()) / 2, end.y()}));
        QThread::msleep(round % 2 == 0 ? 40 : 0);
        hand->moveTo(place(end));
        hand->release(Qt::LeftButton);
        hand->moveTo(place({500, 380}));
        QThread::msleep(round % 3 == 0 ? 100 : 30);
        ASSERT_TRUE(waitFor([this] { return document()->currentStroke() == nullptr; }));
        const QPoint last = imagePixel(end);
        EXPECT_GT(alphaAt(last), 0);
        const QImage image = picture();
        int beyond = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = last.x() + 2; x < image.width(); ++x)
                beyond += y <= last.y() + 1 && y >= last.y() - 1 && qAlpha(image.pixel(x, y)) > 0;
        }
        EXPECT_EQ(beyond, 0);
        EXPECT_EQ(alphaAt(last + QPoint(4, 6)), 0) << "no tail";
    }
}

TEST_F(Drawing, PlaybackDuringAStrokeDestroysNothing) {
    ASSERT_TRUE(run(QStringLiteral("playbackOptions -min 1 -max 3")));
    for (const int time : {1, 2, 3}) {
        at(time);
        stroke({{100, 100 * time}, {200, 100 * time}});
    }
    at(1);
    drag({{250, 100}, {300, 100}});
    ASSERT_TRUE(run(QStringLiteral("play -state on")));
    moveTo({330, 100});
    waitFor([] { return MAnimControl::currentTime() != MTime(1, MTime::uiUnit()); });
    release();
    ASSERT_TRUE(run(QStringLiteral("play -state off")));
    int strokes = 0;
    for (const int time : {1, 2, 3}) {
        at(time);
        EXPECT_EQ(alphaAt(imagePixel({150, 100 * time})), 255);
        strokes += alphaAt(imagePixel({275, 100})) == 255 ? 1 : 0;
    }
    EXPECT_EQ(strokes, 1);
}

TEST_F(Drawing, LeavingTheToolDuringAStrokeKeepsIt) {
    drag({{100, 100}, {200, 100}, {250, 100}});
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    EXPECT_FALSE(ThreadManager::instance().isActive());
    EXPECT_GT(alphaAt(imagePixel({120, 100})), 0);
    release();
    EXPECT_FALSE(pluginState().drawToolActive);
}

TEST_F(Drawing, NewSceneDuringAStrokeEndsItQuietly) {
    drag({{100, 100}, {200, 100}});
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    EXPECT_FALSE(ThreadManager::instance().isActive());
    release();
    EXPECT_TRUE(errors.isEmpty()) << errors.join(QStringLiteral(" | ")).toStdString();
}

TEST_F(Drawing, AStrokeWhoseReleaseNeverCameIsKeptByTheNextPress) {
    class Swallower : public QObject {
    protected:
        bool eventFilter(QObject*, QEvent* event) override {
            return event->type() == QEvent::MouseButtonRelease;
        }
    };
    int row = 60;
    for (const Tool tool : {Tool::Pencil, Tool::Line}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = tool;
        settings().of(tool).size = 12;
        drag({{100, row}, {200, row}});
        {
            Swallower swallower;
            view().installEventFilter(&swallower);
            release();
        }
        ASSERT_NE(document()->currentStroke(), nullptr);
        stroke({{100, row + 60}, {200, row + 60}});
        EXPECT_EQ(document()->currentStroke(), nullptr);
        EXPECT_EQ(alphaAt(imagePixel({120, row})), 255);
        EXPECT_EQ(alphaAt(imagePixel({120, row + 60})), 255);
        // Each is a step of its own.
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(alphaAt(imagePixel({120, row})), 255);
        EXPECT_EQ(alphaAt(imagePixel({120, row + 60})), 0);
        row += 120;
    }
}

TEST_F(Drawing, RefusedPressLeavesNoEffect) {
    stroke({{100, 100}, {200, 100}});
    const QImage drawn = picture();
    document()->setLayerState(camera, 0, LayerState::Locked);
    errors.clear();
    moveTo({100, 200});
    press();
    moveTo({200, 200});
    release();
    EXPECT_EQ(errors, QStringList{QStringLiteral("[Vellum2] Active layer is locked.")});
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("helpLine"))->text(),
              QStringLiteral("Error: [Vellum2] Active layer is locked."))
        << "still to be read when the button is up";
    EXPECT_EQ(picture(), drawn);
    EXPECT_FALSE(ThreadManager::instance().isActive());
}

} // namespace
} // namespace vellum::test
