// The frame markers on the time slider, and drawings dragged along it with a highlighted range:
// judged by the slider's picture, done with the pointer.
#include "foundation/Idle.h"
#include "plugin/base/Settings.h"
#include "support/Hand.h"
#include "support/Session.h"
#include "ui/MainWindow.h"
#include "ui/TimeSlider.h"

#include <QImage>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <vector>

namespace vellum::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLastFrame = 40;

class TimeSliderMarkers : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        ASSERT_TRUE(run(QStringLiteral("playbackOptions -minTime 1 -maxTime %1;"
                                       "rvVellumNode -layer -camera persp")
                            .arg(kLastFrame)));
    }

    host::TimeSlider& slider() { return window->timeSlider(); }

    void drawAt(const std::vector<int>& frames) {
        for (const int frame : frames)
            ASSERT_TRUE(run(QStringLiteral("currentTime %1; rvVellumFrame -insert").arg(frame)));
        ASSERT_TRUE(run(QStringLiteral("currentTime 1")));
    }

    void settle() {
        host::idle::drainAll();
        support::settle();
    }

    /// Frames with a box in the slider's picture, by its outline; or those with a black box.
    std::vector<int> boxes(bool black) {
        settle();
        const QImage image = slider().grab().toImage();
        const double scale = image.devicePixelRatio();
        const auto colorAt = [&](double x, int fromBottom) {
            return image.pixelColor(static_cast<int>(x * scale),
                                    static_cast<int>((slider().height() - fromBottom) * scale));
        };
        const int bottom = 5;
        std::vector<int> found;
        for (int frame = slider().firstFrame(); frame <= slider().lastFrame(); ++frame) {
            const int left = static_cast<int>(slider().xOf(frame) + 0.5);
            if (colorAt(left, bottom) == factoryTimelineFrameColor() &&
                (!black || colorAt(left + 2, bottom) == QColor(Qt::black)))
                found.push_back(frame);
        }
        return found;
    }
    std::vector<int> markers() { return boxes(false); }
    std::vector<int> blackMarkers() { return boxes(true); }

    QPointF onFrame(double frame) {
        const double scale = slider().devicePixelRatioF();
        return {(slider().xOf(frame) + slider().xOf(frame + 1)) / 2 * scale,
                slider().height() / 2 * scale};
    }
    void highlight(int first, int last) {
        hand.moveTo(slider(), onFrame(first));
        hand.key(Qt::Key_Shift, true);
        hand.press();
        hand.moveTo(slider(), onFrame(last));
        hand.release();
        hand.key(Qt::Key_Shift, false);
    }
    void grab(int frame) {
        hand.moveTo(slider(), onFrame(frame));
        hand.press();
    }
    void dragTo(int frame) { hand.moveTo(slider(), onFrame(frame)); }
    int now() { return number(QStringLiteral("int($vlNow = `currentTime -q`)")); }

    support::Hand hand;
};

TEST_F(TimeSliderMarkers, FollowTheActiveLayer) {
    EXPECT_THAT(markers(), IsEmpty());
    drawAt({3, 12, 30});
    EXPECT_THAT(markers(), ElementsAre(3, 12, 30));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add persp; currentTime 7;"
                                   "rvVellumFrame -insert")));
    EXPECT_THAT(markers(), ElementsAre(7));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -e -active 0 persp")));
    EXPECT_THAT(markers(), ElementsAre(3, 12, 30));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_THAT(markers(), ElementsAre(7));
    ASSERT_TRUE(run(QStringLiteral("redo; playbackOptions -minTime 1 -maxTime 80")));
    settle();
    ASSERT_TRUE(run(QStringLiteral("playbackOptions -maxTime %1").arg(kLastFrame)));
    window->resize(1000, 640);
    settle();
    EXPECT_THAT(markers(), ElementsAre(3, 12, 30)) << "on a wider slider";
    const auto overlays = slider().findChildren<QWidget*>();
    ASSERT_EQ(overlays.size(), 1);
    EXPECT_EQ(overlays.first()->geometry(), slider().rect());
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    EXPECT_THAT(markers(), IsEmpty());
}

TEST_F(TimeSliderMarkers, ShowAsTheDisplayModeAsks) {
    drawAt({5, 9});
    ASSERT_TRUE(run(QStringLiteral("select -cl; setToolTo selectSuperContext")));
    EXPECT_THAT(markers(), ElementsAre(5, 9)) << "always";
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -timelineFrameDisplay 1")));
    EXPECT_THAT(markers(), IsEmpty()) << "nothing selected, another tool";
    ASSERT_TRUE(run(QStringLiteral("select -r vellum")));
    EXPECT_THAT(markers(), ElementsAre(5, 9));
    ASSERT_TRUE(run(QStringLiteral("select -r persp")));
    EXPECT_THAT(markers(), IsEmpty());
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    EXPECT_THAT(markers(), ElementsAre(5, 9));
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    EXPECT_THAT(markers(), IsEmpty());
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw; select -r vellum;"
                                   "rvVellumUtil -e -timelineFrameDisplay 2")));
    EXPECT_THAT(markers(), IsEmpty()) << "never";
}

TEST_F(TimeSliderMarkers, LeaveThePointerToTheSlider) {
    drawAt({3, 12});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    grab(25);
    EXPECT_EQ(now(), 25);
    dragTo(31);
    hand.release();
    EXPECT_EQ(now(), 31);
    EXPECT_THAT(markers(), ElementsAre(3, 12));
    highlight(4, 8);
    EXPECT_TRUE(slider().rangeVisible());
    EXPECT_EQ(slider().range().end, 9);
    grab(20);
    hand.release();
    EXPECT_FALSE(slider().rangeVisible());
    EXPECT_THAT(markers(), ElementsAre(3, 12)) << "nothing was moved";
}

TEST_F(TimeSliderMarkers, ADraggedRangeTakesItsDrawingsAlong) {
    drawAt({5, 10, 13, 19, 28});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(10, 20);
    grab(14);
    dragTo(16);
    EXPECT_THAT(markers(), ElementsAre(5, 12, 15, 21, 28)) << "during the drag";
    dragTo(19);
    EXPECT_THAT(markers(), ElementsAre(5, 15, 18, 24, 28));
    EXPECT_THAT(blackMarkers(), IsEmpty());
    hand.release();
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    EXPECT_THAT(markers(), ElementsAre(5, 15, 18, 24, 28));
    // The drawings went, not only the markers; and the next drag goes on from there.
    grab(20);
    dragTo(21);
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(5, 16, 19, 25, 28));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_THAT(markers(), ElementsAre(5, 15, 18, 24, 28));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_THAT(markers(), ElementsAre(5, 10, 13, 19, 28));
}

TEST_F(TimeSliderMarkers, TheDrawingAfterADraggedRangeStays) {
    drawAt({10, 20, 21});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(10, 20);
    grab(14);
    dragTo(11);
    EXPECT_THAT(markers(), ElementsAre(7, 17, 21)) << "during the drag";
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(7, 17, 21));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(TimeSliderMarkers, EveryOperationWorksOnTheHighlight) {
    using Frames = std::vector<int>;
    Frames shown{2, 11, 13, 25};
    drawAt(shown);
    const auto becomes = [&](const char* operation, const Frames& after) {
        SCOPED_TRACE(operation);
        ASSERT_TRUE(run(QStringLiteral("rvVellumFrame ") + QLatin1String(operation)));
        EXPECT_EQ(markers(), after);
        ASSERT_TRUE(run(QStringLiteral("undo")));
        EXPECT_EQ(markers(), shown);
        // Redo keeps to the range there was, not to the one there is.
        highlight(1, 1);
        ASSERT_TRUE(run(QStringLiteral("redo")));
        EXPECT_EQ(markers(), after);
        shown = after;
    };
    highlight(10, 14);
    becomes("-insert", {2, 10, 11, 12, 13, 14, 25});
    highlight(10, 14);
    becomes("-clear", {2, 10, 11, 12, 13, 14, 25});
    highlight(10, 14);
    ASSERT_TRUE(run(QStringLiteral("rvVellumFrame -copy")));
    highlight(20, 21);
    becomes("-paste", {2, 10, 11, 12, 13, 14, 20, 21, 22, 23, 24, 25});
    highlight(12, 22);
    becomes("-cutFrame", {2, 10, 11, 23, 24, 25});
    highlight(30, 30);
    becomes("-paste", {2, 10, 11, 23, 24, 25, 30, 31, 32, 38, 39, 40});
    highlight(10, 24);
    becomes("-delete", {2, 25, 30, 31, 32, 38, 39, 40});
    highlight(26, 31);
    becomes("-retime 3", {2, 25, 28, 31, 34, 40});
}

TEST_F(TimeSliderMarkers, FramesThatWouldLandOnOthersAreBlackAndTheMoveIsRefused) {
    drawAt({10, 15, 25, 30});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(8, 17);
    grab(12);
    dragTo(21);
    EXPECT_THAT(markers(), ElementsAre(19, 24, 25, 30));
    EXPECT_THAT(blackMarkers(), IsEmpty());
    dragTo(22);
    EXPECT_THAT(markers(), ElementsAre(20, 25, 30));
    EXPECT_THAT(blackMarkers(), ElementsAre(25));
    errors.clear();
    hand.release();
    EXPECT_THAT(errors, ElementsAre(QStringLiteral(
                            "[Vellum2] Move Failed. A frame already exists at time 25")));
    EXPECT_THAT(markers(), ElementsAre(10, 15, 25, 30)) << "where the drawings still are";

    // Towards earlier times nothing warns, yet the move is refused all the same.
    highlight(24, 27);
    grab(25);
    dragTo(15);
    EXPECT_THAT(markers(), ElementsAre(10, 15, 30));
    EXPECT_THAT(blackMarkers(), IsEmpty());
    errors.clear();
    hand.release();
    EXPECT_EQ(errors.size(), 1) << allErrors().toStdString();
    EXPECT_THAT(markers(), ElementsAre(10, 15, 25, 30));
}

TEST_F(TimeSliderMarkers, OnlyAMoveMovesThem) {
    drawAt({10, 15, 20});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(8, 22);
    const double scale = slider().devicePixelRatioF();
    hand.moveTo(slider(), {slider().xOf(23) * scale, slider().height() / 2 * scale});
    hand.press();
    hand.moveTo(slider(), {slider().xOf(30) * scale, slider().height() / 2 * scale});
    hand.release();
    EXPECT_EQ(slider().range().end, 30);
    EXPECT_THAT(markers(), ElementsAre(10, 15, 20)) << "made longer";
    hand.moveTo(slider(), {slider().xOf(8) * scale, slider().height() / 2 * scale});
    hand.press();
    hand.moveTo(slider(), {slider().xOf(5) * scale, slider().height() / 2 * scale});
    EXPECT_THAT(markers(), ElementsAre(10, 15, 20));
    hand.release();
    EXPECT_EQ(slider().range().start, 5);
    EXPECT_THAT(markers(), ElementsAre(10, 15, 20)) << "made longer at its start";
    highlight(8, 29);

    grab(12);
    dragTo(15);
    dragTo(12);
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(10, 15, 20)) << "there and back again";

    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    grab(12);
    dragTo(15);
    hand.release();
    EXPECT_EQ(slider().range().start, 11);
    EXPECT_THAT(markers(), ElementsAre(10, 15, 20)) << "with another tool";
    // Back with the draw tool, the range counts as it stands now.
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    grab(15);
    dragTo(16);
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(10, 16, 21));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(TimeSliderMarkers, ADragGoesOnOutsideTheSliderAndToBothItsEnds) {
    drawAt({12, 15});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(10, 20);
    grab(14);
    dragTo(12);
    hand.moveTo(slider(), {-20, -150});
    EXPECT_THAT(markers(), ElementsAre(3, 6));
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(3, 6));
    grab(5);
    hand.moveTo(slider(), {slider().width() * slider().devicePixelRatioF() + 60, -150});
    hand.release();
    EXPECT_EQ(slider().range().end, kLastFrame + 1);
    EXPECT_THAT(markers(), ElementsAre(32, 35));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_THAT(markers(), ElementsAre(12, 15));
}

TEST_F(TimeSliderMarkers, StandOnTheirFramesBelowZeroAndInAFractionalRange) {
    ASSERT_TRUE(run(QStringLiteral("playbackOptions -minTime -10.5 -maxTime 29.5")));
    drawAt({-8, 0, 12});
    EXPECT_THAT(markers(), ElementsAre(-8, 0, 12));
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(-9, 1);
    grab(-4);
    dragTo(-1);
    EXPECT_THAT(markers(), ElementsAre(-5, 3, 12));
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(-5, 3, 12));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(TimeSliderMarkers, ADragThatIsDisturbedLeavesNothingBehind) {
    drawAt({10, 13});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    // Another button goes down and up while the range is held.
    highlight(8, 15);
    grab(12);
    dragTo(17);
    hand.press(Qt::MiddleButton);
    hand.release(Qt::MiddleButton);
    EXPECT_THAT(markers(), ElementsAre(15, 18));
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(15, 18));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    // A menu takes the release: the drawings go along all the same when the hand is back.
    highlight(8, 15);
    grab(12);
    dragTo(15);
    dragTo(17);
    {
        QMenu menu;
        menu.addAction(QStringLiteral("entry"));
        menu.popup(window->mapToGlobal(QPoint(300, 100)));
        settle();
        hand.release();
        menu.close();
        settle();
    }
    hand.moveTo(slider(), onFrame(17) + QPointF(0, 2));
    EXPECT_THAT(markers(), ElementsAre(15, 18));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_THAT(markers(), ElementsAre(10, 13));
    // A new highlight is no move, even if it is as long as the one before.
    highlight(8, 15);
    EXPECT_THAT(markers(), ElementsAre(10, 13));
    // Another tool is taken: where the drawings are is shown at once, and they stay there.
    grab(12);
    dragTo(17);
    ASSERT_TRUE(run(QStringLiteral("setToolTo selectSuperContext")));
    EXPECT_THAT(markers(), ElementsAre(10, 13));
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(10, 13));
    // A locked layer refuses; a static one moves.
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw; rvVellumLayer -es 2 0 persp")));
    highlight(8, 15);
    grab(12);
    dragTo(15);
    dragTo(17);
    errors.clear();
    hand.release();
    EXPECT_EQ(errors.size(), 1) << allErrors().toStdString();
    EXPECT_THAT(markers(), ElementsAre(10, 13));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -es 1 0 persp")));
    highlight(8, 15);
    grab(12);
    dragTo(15);
    dragTo(17);
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(15, 18));
}

TEST_F(TimeSliderMarkers, MovingCanBeSwitchedOff) {
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drainAll();
    unloadPlugin();
    resetSettings();
    settings().timeControlRangeMoveEnabled = false;
    ASSERT_TRUE(saveSettingsTo(text(QStringLiteral("internalVar -userPrefDir")) +
                               QStringLiteral("/vellum2.ini")));
    resetSettings();
    loadPlugin();
    ASSERT_TRUE(run(QStringLiteral("playbackOptions -minTime 1 -maxTime %1;"
                                   "rvVellumNode -layer -camera persp")
                        .arg(kLastFrame)));
    drawAt({10, 20});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(8, 22);
    grab(12);
    dragTo(15);
    EXPECT_THAT(markers(), ElementsAre(10, 20));
    hand.release();
    EXPECT_THAT(markers(), ElementsAre(10, 20));
    EXPECT_EQ(slider().range().start, 11) << "the slider's own range moves";
}

TEST_F(TimeSliderMarkers, ComeWithAnImportedDrawing) {
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("drawn.ma"));
    drawAt({3, 12, 30});
    ASSERT_TRUE(run(QStringLiteral("file -rename \"%1\"; file -save; file -f -new;"
                                   "playbackOptions -minTime 1 -maxTime %2")
                        .arg(file)
                        .arg(kLastFrame)));
    EXPECT_THAT(markers(), IsEmpty());
    ASSERT_TRUE(run(QStringLiteral("file -import \"%1\"").arg(file)));
    EXPECT_THAT(markers(), ElementsAre(3, 12, 30));
}

TEST_F(TimeSliderMarkers, EndWithThePlugin) {
    drawAt({4});
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -draw")));
    highlight(3, 6);
    grab(4);
    dragTo(8);
    // In the middle of a drag.
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drainAll();
    unloadPlugin();
    EXPECT_TRUE(slider().findChildren<QWidget*>().isEmpty());
    dragTo(10);
    hand.release();
    settle();
    loadPlugin();
}

} // namespace
} // namespace vellum::test
