// Drawings in time: which frame is shown, found, refused, handed over; and whole frames when the
// time unit changes.
#include "document/Drawing.h"
#include "document/IntTime.h"
#include "support/Sure.h"

#include <maya/MAnimControl.h>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace vellum;
using drawing::CleanScene;
using support::sure;

namespace {

int shownMark(Layer& layer, int offset = 0) {
    const QImage image = layer.displayImage(offset);
    return image.isNull() ? -1 : drawing::markOf(image);
}

void setTime(Layer& layer, int time) {
    MAnimControl::setCurrentTime(fromIntTime(time));
    layer.updateCurrentIndex(time);
}

} // namespace

TEST(IntTime, TruncatesTowardZeroAndSaturates) {
    const CleanScene scene;
    const auto film = [](double value) { return toIntTime(MTime(value, MTime::kFilm)); };
    EXPECT_EQ(film(2.9), 2);
    EXPECT_EQ(film(-2.9), -2);
    EXPECT_EQ(film(-0.5), 0);
    EXPECT_EQ(film(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(film(-1e300), std::numeric_limits<int>::min());
    for (const int frame : {-2147483647 - 1, -999, -1, 0, 1, 24, 100000, 2147483647}) {
        EXPECT_EQ(toIntTime(fromIntTime(frame)), frame);
    }
}

TEST(IntTime, FollowsTheTimeUnitAndComesBack) {
    const CleanScene scene;
    Layer layer;
    for (const int time : {-12, 0, 10, 11, 24}) {
        layer.addFrameAt(time);
    }
    MTime::setUIUnit(MTime::kPALFrame);
    EXPECT_EQ(layer.frameTimes(), (QList<int>{-12, 0, 10, 11, 25}));
    MTime::setUIUnit(MTime::kNTSCFrame);
    EXPECT_EQ(layer.frameTimes(), (QList<int>{-15, 0, 12, 13, 30}));
    EXPECT_TRUE(layer.hasFrameAtIntTime(13));
    EXPECT_FALSE(layer.hasFrameAtIntTime(11));
    MTime::setUIUnit(MTime::kFilm);
    EXPECT_EQ(layer.frameTimes(), (QList<int>{-12, 0, 10, 11, 24}));
}

TEST(IntTime, FramesThatFallTogetherShowAndGiveTheLast) {
    const CleanScene scene;
    MTime::setUIUnit(MTime::kNTSCFrame);
    const auto layer = drawing::layerWith("A", {5, 6, 7}, 1); // 4, 4.8, 5.6 at film rate
    MTime::setUIUnit(MTime::kFilm);
    ASSERT_EQ(layer->frameTimes(), (QList<int>{4, 4, 5}));
    setTime(*layer, 4);
    EXPECT_EQ(shownMark(*layer), 2);
    const auto taken = layer->takeFrameAt(4);
    ASSERT_TRUE(taken);
    EXPECT_EQ(drawing::markOf(taken->image()), 2);
    EXPECT_EQ(shownMark(*layer), 1);
}

TEST(Layer, ShowsTheLastFrameAtOrBeforeTheTime) {
    const CleanScene scene;
    for (const LayerState state : {LayerState::Animated, LayerState::Static, LayerState::Locked}) {
        SCOPED_TRACE("state " + std::to_string(numberOf(state)));
        const auto layer = drawing::layerWith("A", {10, 20}, 1);
        layer->setState(state);
        const struct {
            int time, index, mark, before, after;
        } cases[] = {{9, -1, -1, -1, 1},
                     {10, 0, 1, -1, 2},
                     {19, 0, 1, -1, 2},
                     {20, 1, 2, 1, -1},
                     {999, 1, 2, 1, -1}};
        for (const auto& one : cases) {
            setTime(*layer, one.time);
            EXPECT_EQ(layer->currentIndex(), one.index) << one.time;
            EXPECT_EQ(shownMark(*layer), one.mark) << one.time;
            EXPECT_EQ(shownMark(*layer, -1), one.before) << one.time;
            EXPECT_EQ(shownMark(*layer, +1), one.after) << one.time;
        }
        layer->setVisible(false);
        EXPECT_EQ(shownMark(*layer), -1);
        EXPECT_EQ(shownMark(*layer, -1), -1);
    }
}

TEST(Layer, CanBeDrawnOn) {
    const CleanScene scene;
    const auto layer = drawing::layerWith("A", {1}, 1);
    setTime(*layer, 50);
    EXPECT_FALSE(layer->hasFrameAtCurrentTime());
    layer->setState(LayerState::Static);
    EXPECT_TRUE(layer->hasFrameAtCurrentTime());
    setTime(*layer, 0);
    EXPECT_FALSE(layer->hasFrameAtCurrentTime());
    layer->setState(LayerState::Animated);
    setTime(*layer, 1);
    EXPECT_TRUE(layer->hasFrameAtCurrentTime());
}

TEST(Layer, KeepsFramesSortedAndRefusesASecondOneAtATime) {
    const CleanScene scene;
    const auto layer = drawing::layerWith("A", {20, -5, 10, 1}, 1);
    EXPECT_EQ(layer->frameTimes(), (QList<int>{-5, 1, 10, 20}));
    EXPECT_EQ(layer->addFrame(drawing::frameWith(10, drawing::marked(9))), -1);
    EXPECT_EQ(layer->addFrame(nullptr), -1);
    EXPECT_EQ(drawing::markOf(sure(layer->frameAt(2)).image()), 3);
    EXPECT_EQ(layer->addFrameAt(11), 3);
    EXPECT_EQ(layer->frameAt(-1), nullptr);
    EXPECT_EQ(layer->frameAt(5), nullptr);
    EXPECT_EQ(layer->takeFrameAt(12), nullptr);

    setTime(*layer, 15);
    const auto taken = layer->takeFrameAt(-5);
    EXPECT_EQ(drawing::markOf(taken->image()), 2);
    EXPECT_EQ(layer->currentIndex(), -1) << "none at or before the time it was taken from";
    layer->updateCurrentIndex(15);
    EXPECT_EQ(sure(layer->currentFrame()).intTime(), 11);
    layer->clearFrames();
    EXPECT_EQ(layer->currentIndex(), -1);
}

TEST(Layer, StepsToNeighboursWithAndWithoutWrapping) {
    const CleanScene scene;
    const auto layer = drawing::layerWith("A", {10, 20, 30}, 1);
    const auto timeOf = [](const Frame* frame) { return frame ? frame->intTime() : -1; };
    const struct {
        int now, next, wrappedNext, previous, wrappedPrevious;
    } cases[] = {{5, 10, 10, -1, 30},
                 {10, 20, 20, -1, 30},
                 {15, 20, 20, 10, 10},
                 {30, -1, 10, 20, 20},
                 {31, -1, 10, 30, 30}};
    for (const auto& one : cases) {
        setTime(*layer, one.now);
        EXPECT_EQ(timeOf(layer->nextFrame(false)), one.next) << one.now;
        EXPECT_EQ(timeOf(layer->nextFrame(true)), one.wrappedNext) << one.now;
        EXPECT_EQ(timeOf(layer->previousFrame(false)), one.previous) << one.now;
        EXPECT_EQ(timeOf(layer->previousFrame(true)), one.wrappedPrevious) << one.now;
    }
    EXPECT_EQ(Layer().nextFrame(true), nullptr);
    EXPECT_EQ(Layer().previousFrame(true), nullptr);
}

TEST(Layer, RetimesInOrderAndOnlyAsFarAsTimesGo) {
    const CleanScene scene;
    const auto layer = drawing::layerWith("A", {1, 3, 7}, 1);
    layer->setFrameTimes({1, 4});
    EXPECT_EQ(layer->frameTimes(), (QList<int>{1, 4, 7}));
    layer->setFrameTimes({2, 5, 9, 100});
    EXPECT_EQ(layer->frameTimes(), (QList<int>{2, 5, 9}));
    setTime(*layer, 5);
    EXPECT_EQ(shownMark(*layer), 2);
    // Times in no order are the caller's mistake; nothing may be lost by it.
    layer->setFrameTimes({9, 2, 5});
    for (const int time : {2, 5, 9}) {
        EXPECT_TRUE(layer->hasFrameAtIntTime(time)) << time;
    }
}

TEST(Layer, IsDirtyExactlyWhenItsPictureMayHaveChanged) {
    const CleanScene scene;
    const auto layer = drawing::layerWith("A", {10, 20}, 1);
    setTime(*layer, 12);
    const auto dirtied = [&](auto change) {
        layer->displayImage();
        layer->takeUndisplayed();
        change();
        EXPECT_EQ(layer->isDirty(), !layer->undisplayed().isEmpty());
        return layer->isDirty();
    };
    EXPECT_FALSE(dirtied([&] { layer->updateCurrentIndex(19); }));
    EXPECT_TRUE(dirtied([&] { layer->updateCurrentIndex(20); }));
    EXPECT_FALSE(dirtied([&] { layer->setVisible(true); }));
    EXPECT_TRUE(dirtied([&] { layer->setVisible(false); }));
    EXPECT_TRUE(dirtied([&] { layer->setOpacity(0.5F); }));
    EXPECT_FALSE(dirtied([&] { layer->setOpacity(0.5F); }));
    EXPECT_FALSE(dirtied([&] { layer->setState(LayerState::Locked); }));
    EXPECT_FALSE(dirtied([&] { layer->setActive(true); }));
    EXPECT_TRUE(dirtied([&] { layer->addFrameAt(30); }));
    EXPECT_TRUE(dirtied([&] { layer->takeFrameAt(30); }));
    EXPECT_TRUE(dirtied([&] { layer->setCurrentImage(drawing::marked(5), QRect(1, 1, 9, 9)); }));
    EXPECT_EQ(layer->undisplayed(), QRect(1, 1, 9, 9));
    EXPECT_TRUE(dirtied([&] { layer->clearFrames(); }));
    EXPECT_FALSE(dirtied([&] { layer->setCurrentImage(drawing::marked(5)); }))
        << "there is no frame to change";
}

TEST(Layer, PullsOpacityIntoRange) {
    Layer layer;
    for (const auto& [asked, kept] :
         {std::pair{1.7F, 1.0F}, {-0.2F, 0.0F}, {0.25F, 0.25F}, {std::nanf(""), 0.25F}}) {
        layer.setOpacity(asked);
        EXPECT_EQ(layer.opacity(), kept) << "asked for " << asked;
    }
}
