// Every option of every tool reaches the pixels of the frame, drawn by hand.
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/PluginState.h"
#include "support/Sure.h"
#include "tools/ToolSession.h"
#include "tools/interaction/ThreadManager.h"

#include <QCoreApplication>
#include <QElapsedTimer>

using support::firstOf;
using support::lastOf;
using support::sure;

namespace vellum::test {
namespace {

// What can be told of ink: how dark, what colour, how far it reaches.
struct Ink {
    int darkest = 0;
    QColor color;
    QRect area;
};

Ink inkOf(const QImage& image) {
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 0)
                continue;
            ink.area |= QRect(x, y, 1, 1);
            if (pixel.alpha() > ink.darkest) {
                ink.darkest = pixel.alpha();
                ink.color = pixel;
            }
        }
    }
    return ink;
}

class Options : public ToolSession {
protected:
    void SetUp() override {
        ToolSession::SetUp();
        settings().of(Tool::Text).fontFamily = QStringLiteral("DejaVu Sans");
        settings().activeColor = QColor(250, 120, 10);
        activateDrawTool();
    }

    // The picture of one stroke on an empty scene, which is undone again.
    QImage drawn() {
        drawLine(kFrom, kTo);
        if (settings().activeTool == Tool::Text)
            type({Qt::Key_H, Qt::Key_Escape});
        const QImage image = picture();
        EXPECT_EQ(document()->currentStroke(), nullptr);
        EXPECT_TRUE(run(QStringLiteral("undo")));
        return image;
    }

    const QPoint kFrom{150, 150};
    const QPoint kTo{330, 150};
};

TEST_F(Options, SizeOpacityAndColor) {
    for (const Tool tool :
         {Tool::Pencil, Tool::Brush, Tool::Text, Tool::Line, Tool::Arrow, Tool::Rectangle}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = tool;
        setToolSize(tool, 8);
        setToolOpacity(tool, 100);
        const Ink thin = inkOf(drawn());
        setToolSize(tool, 40);
        const Ink thick = inkOf(drawn());
        setToolOpacity(tool, 40);
        settings().activeColor = QColor(20, 90, 200);
        const Ink faint = inkOf(drawn());
        settings().activeColor = QColor(250, 120, 10);

        EXPECT_EQ(faint.area, thick.area);
        EXPECT_GE(thin.darkest, 250);
        EXPECT_NEAR(thick.darkest, 255, 1);
        // The arrow's strokes cross.
        EXPECT_NEAR(faint.darkest, tool == Tool::Arrow ? 200 : 102, 1);
        EXPECT_NEAR(thin.color.red(), 250, 2);
        EXPECT_NEAR(faint.color.blue(), 200, 3);
        // 32 more in the size: an em for the text, whose H is 0.73 of it, at 96 dots an inch.
        const int grown = thick.area.height() - thin.area.height();
        EXPECT_NEAR(grown, tool == Tool::Text ? 0.73 * 32 * 96 / 72 : 32, 4);
    }
}

TEST_F(Options, ShapesAreWhereTheHandWent) {
    const QPoint from = imagePixel(kFrom);
    const QPoint to = imagePixel(kTo + QPoint(0, 100));
    for (const Tool tool : {Tool::Ellipse, Tool::Rectangle, Tool::Line}) {
        SCOPED_TRACE(numberOf(tool));
        settings().activeTool = tool;
        setToolSize(tool, 2);
        drawLine(kTo + QPoint(0, 100), kFrom); // towards the upper left
        const QRect area = inkOf(picture()).area;
        // A pen of two reaches one to either side.
        EXPECT_EQ(area, QRect(from, to - QPoint(1, 1)).adjusted(-1, -1, 1, 1));
        const QPoint middle = (from + to) / 2;
        EXPECT_EQ(alphaAt(middle) > 0, tool == Tool::Line);
        EXPECT_EQ(alphaAt(from + QPoint(1, 0)) > 100, tool != Tool::Ellipse) << "a corner";
        ASSERT_TRUE(run(QStringLiteral("undo")));
    }
}

TEST_F(Options, EraserTakesItsSizeAndErasesWhollyAlsoWhenFaint) {
    settings().activeTool = Tool::Pencil;
    setToolSize(Tool::Pencil, 60);
    setToolOpacity(Tool::Pencil, 80);
    drawLine(kFrom, kTo);
    settings().activeTool = Tool::Eraser;
    setToolOpacity(Tool::Eraser, 30);
    const QPoint middle = imagePixel({240, 150});
    for (const int size : {10, 30}) {
        SCOPED_TRACE("size " + std::to_string(size));
        setToolSize(Tool::Eraser, size);
        drawTo(kFrom, kTo);
        const QImage* shown = document()->compositeCamera(camera);
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->pixelColor(imagePixel({170, 150})).alpha(), 0) << "seen while erasing";
        EXPECT_EQ(alphaAt(imagePixel({170, 150})), size == 10 ? 204 : 0) << "not yet in the frame";
        release();
        EXPECT_EQ(alphaAt(middle + QPoint(0, size / 2 - 1)), 0);
        EXPECT_EQ(alphaAt(middle + QPoint(0, size / 2 + 3)), 204);
    }
}

// The opacity key does not stop the eraser, which has none to change.
TEST_F(Options, OpacityKeyLetsTheEraserErase) {
    settings().activeTool = Tool::Pencil;
    setToolSize(Tool::Pencil, 30);
    drawLine(kFrom, kTo);
    settings().activeTool = Tool::Eraser;
    key(Qt::Key_M, true);
    drawLine(kFrom, kTo);
    key(Qt::Key_M, false);
    EXPECT_EQ(alphaAt(imagePixel({240, 150})), 0);
    EXPECT_EQ(toolOpacity(Tool::Eraser), 100);
}

// --- The pen ---------------------------------------------------------------------------------

class Pen : public Options {
protected:
    using Phase = host::InputInjector::TabletPhase;

    void SetUp() override {
        Options::SetUp();
        // Beside the real pointer, which presses as well.
        QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, false);
        settings().activeTool = Tool::Pencil;
        setToolSize(Tool::Pencil, 20);
        setToolTabletEnabled(Tool::Pencil, true);
    }
    void TearDown() override {
        QCoreApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTabletEvents, true);
        Options::TearDown();
    }

    std::vector<float> opacities() {
        std::vector<float> all;
        for (const StrokePoint& point : sure(document()->currentStroke()).points)
            all.push_back(point.opacity);
        return all;
    }
};

TEST_F(Pen, PressureGivesOpacityOnlyWhereItIsSwitchedOn) {
    for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Line}) {
        for (const bool enabled : {true, false}) {
            SCOPED_TRACE(testing::Message() << numberOf(tool) << (enabled ? " on" : " off"));
            settings().activeTool = tool;
            setToolSize(tool, 20);
            setToolTabletEnabled(tool, enabled);
            setToolOpacity(tool, 50);
            moveTo(kFrom);
            pen(Phase::Press, kFrom, 0.6); // 0.68 by the curve
            drawTo(kFrom, kTo);
            pen(Phase::Release, kTo, 0.0);
            release();
            const float opacity = enabled && tool != Tool::Line ? 0.5F * 0.68F : 0.5F;
            EXPECT_NEAR(inkOf(picture()).darkest, opacity * 255, 1.5);
            EXPECT_FLOAT_EQ(pluginState().tabletPressure, 1.0F) << "lifted";
            ASSERT_TRUE(run(QStringLiteral("undo")));
        }
    }
}

TEST_F(Pen, ALineThatBeginsWithoutPressureHasNoSpike) {
    moveTo(kFrom);
    pen(Phase::Press, kFrom, 0.0);
    QElapsedTimer sincePress;
    sincePress.start();
    press();
    EXPECT_TRUE(pluginState().pressureAwaited);
    const std::size_t before = sampled();
    pen(Phase::Move, kFrom + QPoint(10, 0), 0.3);
    const bool inTime = sincePress.elapsed() < 150; // else the wait may have ended
    EXPECT_FALSE(pluginState().pressureAwaited);
    if (inTime) {
        EXPECT_EQ(before, 0U) << "held back until the pen tells";
    }
    moveTo(kFrom + QPoint(10, 0));
    moveTo(kFrom + QPoint(40, 0));
    ASSERT_TRUE(waitFor([this] { return sampled() >= 3; }));
    for (const float opacity : opacities())
        EXPECT_LE(opacity, inTime ? 0.3F + 1e-5 : 1.0F);
    EXPECT_NEAR(firstOf(sure(document()->currentStroke()).points).x, imagePixel(kFrom).x(), 3)
        << "from where the pen came down";
    release();
}

TEST_F(Pen, OnlyMovesSilenceAndAPenStuckAtNothing) {
    moveTo(kFrom);
    pen(Phase::Move, kFrom, 0.5); // no press is ever told
    drawTo(kFrom, kTo);           // and nothing more while drawing
    for (const float opacity : opacities())
        EXPECT_FLOAT_EQ(opacity, 0.5F);
    release();
    ASSERT_TRUE(run(QStringLiteral("undo")));

    pen(Phase::Press, kFrom, 0.0); // never any pressure: drawn all the same
    drawTo(kFrom, kTo);
    EXPECT_FLOAT_EQ(lastOf(opacities()), 1.0F);
    release();
    EXPECT_EQ(alphaAt(imagePixel({240, 150})), 255);

    drawLine(kFrom + QPoint(0, 60), kTo + QPoint(0, 60)); // the mouse after the pen
    EXPECT_EQ(alphaAt(imagePixel({240, 210})), 255);
    EXPECT_FALSE(ThreadManager::instance().isActive());
}

TEST_F(Pen, APenThatHoveredTellsItsTouchOnlyByItsNextPressure) {
    moveTo(kFrom);
    pen(Phase::Move, kFrom, 0.0);
    EXPECT_FALSE(pluginState().pressureAwaited) << "not before a button is down";
    press();
    EXPECT_TRUE(pluginState().pressureAwaited) << "until then nothing is drawn";
    pen(Phase::Move, kFrom + QPoint(10, 0), 0.3);
    EXPECT_FALSE(pluginState().pressureAwaited);
    moveTo(kTo);
    ASSERT_TRUE(waitFor([this] { return sampled() >= 3; }));
    release();
    EXPECT_FALSE(pluginState().pressureAwaited);
}

// Longer than a pen that has gone is remembered.
TEST_F(Pen, SilenceIsOnlyTheEndOfAPenThatDoesNotTouch) {
    const auto silence = [] {
        QElapsedTimer timer;
        timer.start();
        return waitFor([&] { return timer.elapsed() > 1100; });
    };
    moveTo(kFrom);
    pen(Phase::Press, kFrom, 0.3);
    drawTo(kFrom, kFrom + QPoint(60, 0));
    ASSERT_TRUE(silence());
    press(Qt::MiddleButton); // a button on the pen's side
    const std::size_t before = sampled();
    moveTo(kTo);
    ASSERT_TRUE(waitFor([&] { return sampled() > before; }));
    release(Qt::MiddleButton);
    for (const float opacity : opacities())
        EXPECT_NEAR(opacity, 0.3F, 1e-5) << "it still touches";
    release();

    pen(Phase::Move, kFrom, 0.0, true);
    EXPECT_TRUE(pluginState().tabletEraser);
    ASSERT_TRUE(silence());
    const QPoint below(0, 60);
    drawTo(kFrom + below, kTo + below);
    EXPECT_EQ(sure(document()->currentStroke()).tool, Tool::Pencil) << "the mouse draws";
    EXPECT_FLOAT_EQ(lastOf(opacities()), 1.0F);
    release();

    // Away and back in the middle of a stroke, with its other end up.
    moveTo(kFrom);
    pen(Phase::Press, kFrom, 0.3);
    drawTo(kFrom, kFrom + QPoint(60, 0));
    pen(Phase::Release, kFrom + QPoint(60, 0), 0.0);
    pen(Phase::Press, kFrom + QPoint(60, 0), 0.5, true);
    moveTo(kTo);
    ASSERT_TRUE(waitFor([this] { return lastOf(opacities()) > 0.301F; }));
    for (const float opacity : opacities())
        EXPECT_LE(opacity, 0.5F + 1e-5);
    EXPECT_EQ(sure(document()->currentStroke()).tool, Tool::Pencil) << "what it began as";
    release();
    EXPECT_FALSE(pluginState().tabletEraser);
}

TEST_F(Pen, EraserEndTurnsTheStrokeIntoAnEraserStroke) {
    drawLine(kFrom, kTo);
    ASSERT_EQ(alphaAt(imagePixel({240, 150})), 255);
    for (const Tool number : {Tool::Brush, Tool::Text, Tool::Ellipse}) {
        SCOPED_TRACE("tool " + std::to_string(static_cast<int>(number)));
        settings().activeTool = number;
        moveTo(kFrom);
        pen(Phase::Press, kFrom, 0.4, true);
        drawTo(kFrom, kTo);
        EXPECT_EQ(sure(document()->currentStroke()).tool, Tool::Eraser);
        pen(Phase::Release, kTo, 0.0, true);
        release();
        EXPECT_EQ(alphaAt(imagePixel({240, 150})), 0);
        EXPECT_EQ(settings().activeTool, number);
        ASSERT_TRUE(run(QStringLiteral("undo")));
    }
}

} // namespace
} // namespace vellum::test
