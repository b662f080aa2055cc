// The time slider and playback.
#include "commands/Conditions.h"
#include "foundation/Events.h"
#include "host_ui/UiTest.h"
#include "ui/Playback.h"
#include "ui/TimeSlider.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <maya/MAnimControl.h>
#include <maya/MQtUtil.h>
#include <maya/MTime.h>

#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class TimeSliderTest : public uitest::UiTest {
protected:
    host::TimeSlider& slider() { return window->timeSlider(); }

    /// Device pixel in the middle of a frame.
    QPointF onFrame(int frame) {
        const double scale = slider().devicePixelRatioF();
        return {(slider().xOf(frame) + slider().xOf(frame + 1)) / 2 * scale,
                slider().height() / 2 * scale};
    }
    double now() { return run("currentTime -q").toFloat(); }
    host::script::Floats range() {
        return run("global string $gPlayBackSlider; timeControl -q -rangeArray $gPlayBackSlider")
            .toFloats();
    }
    bool rangeVisible() {
        return runInt("global string $gPlayBackSlider;"
                      "timeControl -q -rangeVisible $gPlayBackSlider") == 1;
    }
    void shiftDrag(int from, int to) {
        moveTo(slider(), onFrame(from));
        key(Qt::Key_Shift, true);
        press();
        moveTo(slider(), onFrame(to));
        release();
        key(Qt::Key_Shift, false);
    }
};

TEST_F(TimeSliderTest, FramesStandWhereMarkersExpectThem) {
    run("playbackOptions -minTime 1 -maxTime 100");
    host::TimeSlider alone;
    alone.resize(1000, 40);
    EXPECT_DOUBLE_EQ(alone.xOf(1), 5);
    EXPECT_NEAR(alone.xOf(100), 985.1, 1e-9);
    EXPECT_EQ(alone.frameAt(5), 1);
    EXPECT_EQ(alone.frameAt(14.8), 1);
    EXPECT_EQ(alone.frameAt(15), 2);
    EXPECT_EQ(alone.frameAt(-50), 1);
    EXPECT_EQ(alone.frameAt(5000), 100);
}

TEST_F(TimeSliderTest, IsFoundByTheNameOfItsGlobal) {
    const std::string name = runString("global string $gPlayBackSlider; $gPlayBackSlider");
    EXPECT_EQ(MQtUtil::findControl(name.c_str()), &slider());
    EXPECT_EQ(MQtUtil::findControl("timeControl1"), &slider());
    EXPECT_EQ(MQtUtil::findControl("timeControl1", window.get()), &slider());
    EXPECT_EQ(MQtUtil::findControl("timeControl1", &view()), nullptr);
    EXPECT_EQ(MQtUtil::findControl("timeControl2"), nullptr);
    EXPECT_EQ(std::string(MQtUtil::fullName(&slider()).asUTF8()), name);
    EXPECT_NE(errorOf("timeControl -q -rangeArray nobody"), "");
    window.reset();
    EXPECT_EQ(runString("global string $gPlayBackSlider; $gPlayBackSlider"), "");
    EXPECT_EQ(MQtUtil::findControl(name.c_str()), nullptr);
}

TEST_F(TimeSliderTest, ScrubsToTheFrameUnderThePointer) {
    std::vector<double> heard;
    const int listener = host::events::listen("timeChanged", [&] { heard.push_back(now()); });
    moveTo(slider(), onFrame(7));
    press();
    moveTo(slider(), onFrame(8));
    moveTo(slider(), onFrame(30));
    release();
    moveTo(slider(), onFrame(12));
    host::events::removeListener(listener);
    EXPECT_THAT(heard, ElementsAre(7, 8, 30));
    EXPECT_EQ(now(), 30);
    EXPECT_FALSE(rangeVisible());
    EXPECT_THAT(range(), ElementsAre(30, 31));
}

TEST_F(TimeSliderTest, APointerWithoutAButtonDragsNothing) {
    slider().setMouseTracking(true);
    moveTo(slider(), onFrame(7));
    press();
    // The release goes elsewhere: what the slider gets next is a pointer that only hovers.
    const auto hover = [this](int frame) {
        const QPointF place = onFrame(frame) / slider().devicePixelRatioF();
        QMouseEvent event(QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&slider(), &event);
    };
    hover(20);
    EXPECT_EQ(now(), 7);
    EXPECT_FALSE(MAnimControl::isScrubbing());
    release();
    shiftDrag(10, 12);
    moveTo(slider(), onFrame(11));
    press();
    hover(30);
    EXPECT_THAT(range(), ElementsAre(10, 13));
    release();
}

TEST_F(TimeSliderTest, ShiftDragHighlightsAndAPlainPressClears) {
    shiftDrag(10, 20);
    EXPECT_TRUE(rangeVisible());
    EXPECT_THAT(range(), ElementsAre(10, 21)) << "half open";
    EXPECT_EQ(now(), 1) << "highlighting does not change the time";
    EXPECT_EQ(runString("global string $gPlayBackSlider; timeControl -q -range $gPlayBackSlider"),
              "\"10:21\"");
    moveTo(slider(), onFrame(40));
    press();
    release();
    EXPECT_FALSE(rangeVisible());
    shiftDrag(20, 15); // backwards
    EXPECT_THAT(range(), ElementsAre(15, 21));
    shiftDrag(17, 18); // anew, not moving what is there
    EXPECT_THAT(range(), ElementsAre(17, 19));

    const QTemporaryDir directory;
    run("file -rename \"" + directory.filePath("shot.ma").toStdString() + "\"; file -save");
    EXPECT_THAT(range(), ElementsAre(17, 19)) << "saving leaves the range alone";
    run("file -force -new");
    EXPECT_FALSE(rangeVisible());
}

TEST_F(TimeSliderTest, RangesMoveAndResizeByDragging) {
    shiftDrag(10, 20);
    run("currentTime 12");
    int changes = 0;
    const int listener = host::events::listen("timeChanged", [&] { ++changes; });
    moveTo(slider(), onFrame(15));
    press();
    moveTo(slider(), onFrame(18));
    moveTo(slider(), onFrame(20));
    EXPECT_THAT(range(), ElementsAre(15, 26));
    EXPECT_EQ(now(), 20) << "the time goes along";
    release();
    EXPECT_EQ(changes, 2);
    moveTo(slider(), onFrame(16));
    press();
    moveTo(slider(), onFrame(1)); // no further than the first frame
    release();
    EXPECT_THAT(range(), ElementsAre(1, 12));
    host::events::removeListener(listener);

    const double scale = slider().devicePixelRatioF();
    moveTo(slider(), {slider().xOf(12) * scale, 5});
    press();
    moveTo(slider(), {slider().xOf(15) * scale + 1, 5});
    release();
    EXPECT_THAT(range(), ElementsAre(1, 15));
}

TEST_F(TimeSliderTest, PlaybackLoopsInItsRangeUntilStopped) {
    run("playbackOptions -minTime 5 -maxTime 8; currentTime 1");
    std::vector<double> heard;
    bool wrapped = false;
    const int listener = host::events::listen("timeChanged", [&] {
        wrapped = wrapped || (!heard.empty() && now() < heard.back());
        heard.push_back(now());
    });
    host::Playback::instance().setEveryFrame(true);
    run("play");
    EXPECT_TRUE(MAnimControl::isPlaying());
    EXPECT_TRUE(host::conditions::state("playingBack"));
    EXPECT_TRUE(uitest::waitFor([&] { return wrapped; }));
    run("play -state off");
    host::events::removeListener(listener);
    EXPECT_FALSE(MAnimControl::isPlaying());
    EXPECT_FALSE(host::conditions::state("playingBack"));
    EXPECT_THAT(heard, Each(testing::AllOf(testing::Ge(5), testing::Le(8))));
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(heard.front(), 5);

    run("currentTime 6; play -wait");
    EXPECT_EQ(now(), 8);
    host::Playback::instance().setEveryFrame(false);
}

TEST_F(TimeSliderTest, PlaybackOptionsSayHowTheRangeIsPlayed) {
    run("playbackOptions -minTime 1 -maxTime 5 -playbackSpeed 0 -maxPlaybackSpeed 0; currentTime "
        "1");
    std::vector<double> heard;
    const int listener = host::events::listen("timeChanged", [&] { heard.push_back(now()); });
    run("playbackOptions -by 2 -loop \"once\"; play");
    EXPECT_TRUE(uitest::waitFor([&] { return !MAnimControl::isPlaying(); }));
    EXPECT_THAT(heard, ElementsAre(3, 5));
    heard.clear();
    run("playbackOptions -by 1 -loop \"oscillate\"; currentTime 3; play");
    EXPECT_TRUE(uitest::waitFor([&] { return heard.size() > 9; }));
    run("play -state off");
    host::events::removeListener(listener);
    heard.resize(9);
    EXPECT_THAT(heard, ElementsAre(3, 4, 5, 4, 3, 2, 1, 2, 3));

    EXPECT_EQ(runString("playbackOptions -q -loop"), "oscillate");
    EXPECT_EQ(run("playbackOptions -q -playbackSpeed").toFloat(), 0);
    EXPECT_NE(errorOf("playbackOptions -loop \"never\" -minTime 3"), "");
    EXPECT_NE(errorOf("playbackOptions -playbackSpeed -1"), "");
    EXPECT_EQ(run("playbackOptions -q -minTime").toFloat(), 1) << "a refused call changes nothing";
    EXPECT_EQ(runString("playbackOptions -q -loop"), "oscillate");
    run("playbackOptions -minTime 2 -maxTime 9");
    run("undo");
    EXPECT_EQ(run("playbackOptions -q -maxTime").toFloat(), 5);
    run("redo");
    EXPECT_EQ(run("playbackOptions -q -maxTime").toFloat(), 9);
    run("playbackOptions -loop \"continuous\" -playbackSpeed 1 -maxPlaybackSpeed 1");
}

TEST_F(TimeSliderTest, PlaybackRunsAtTheRateOfTheTimeUnit) {
    run("currentUnit -time film; playbackOptions -minTime 1 -maxTime 100000; currentTime 1");
    QElapsedTimer clock;
    clock.start();
    run("play");
    EXPECT_TRUE(uitest::waitFor([&] { return now() >= 25; }));
    // One second of film; late frames are left out instead of slowing down.
    EXPECT_GE(clock.elapsed(), 900);
    EXPECT_LE(clock.elapsed(), 2500);
    run("play -state off; play -forward false");
    EXPECT_EQ(runInt("play -q -forward"), 0);
    const double turned = now();
    EXPECT_TRUE(uitest::waitFor([&] { return now() < turned; }));
    type({Qt::Key_Escape});
    EXPECT_EQ(runInt("play -q -state"), 0) << "Escape stops";
    MAnimControl::playForward();
    EXPECT_TRUE(host::Playback::instance().isPlaying());
    MAnimControl::stop();
    EXPECT_FALSE(host::Playback::instance().isPlaying());
}

TEST_F(TimeSliderTest, ShowsTheTimeAndTheRange) {
    slider().setRange(host::TimeSlider::Range{20, 30});
    run("currentTime 10");
    uitest::settle();
    const QImage image = slider().grab().toImage();
    const double scale = image.devicePixelRatio();
    const auto at = [&](double frame) {
        return image.pixelColor(int(slider().xOf(frame) * scale), image.height() - 4);
    };
    const QColor empty = at(5.5), current = at(10.5), range = at(25.5);
    EXPECT_NE(current, empty);
    EXPECT_NE(range, empty);
    EXPECT_NE(range, current);
    EXPECT_GT(range.red(), range.blue());
    EXPECT_EQ(at(11.5), empty);
    EXPECT_EQ(at(35.5), empty);
    host::TimeSlider::Range none{5, 5};
    slider().setRange(none);
    EXPECT_FALSE(slider().rangeVisible()) << "an empty range is none";
}

TEST_F(TimeSliderTest, ShiftDoubleClickHighlightsEverything) {
    moveTo(slider(), onFrame(10));
    key(Qt::Key_Shift, true);
    for (int i = 0; i < 2; ++i) {
        press();
        release();
    }
    key(Qt::Key_Shift, false);
    EXPECT_THAT(range(), ElementsAre(1, 49));
}
