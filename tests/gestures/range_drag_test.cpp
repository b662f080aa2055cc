// A highlighted range dragged along the time slider: what moves at the end of it, and what does
// not.
#include "tools/gestures/RangeDrag.h"

#include <gtest/gtest.h>

namespace vellum {

using Range = RangeDrag::Range;

bool operator==(const RangeDrag::Move& a, const RangeDrag::Move& b) {
    return a.offset == b.offset && a.start == b.start && a.end == b.end;
}
std::ostream& operator<<(std::ostream& out, const RangeDrag::Move& move) {
    return out << move.start << " to " << move.end << " by " << move.offset;
}

namespace {

using Move = RangeDrag::Move;

// A slider with a highlighted range under the hand.
class RangeDragged : public testing::Test {
protected:
    RangeDragged() { drag.restart(highlighted); }

    void grab() { EXPECT_EQ(drag.press(highlighted), std::nullopt); }
    void dragTo(double start, double end) {
        drag.move();
        highlighted = Range{start, end};
        drag.follow(highlighted);
    }

    std::optional<Range> highlighted = Range{10, 20};
    RangeDrag drag;
};

TEST_F(RangeDragged, MovesWhatWasHighlightedByWhatTheRangeWent) {
    grab();
    EXPECT_FALSE(drag.isDragging());
    dragTo(12, 22);
    EXPECT_TRUE(drag.isDragging());
    EXPECT_EQ(drag.offset(), 2);
    EXPECT_EQ(drag.before(), (Range{10, 20})) << "the drawings are still there";
    dragTo(15, 25);
    EXPECT_EQ(drag.release(highlighted), (Move{5, 10, 19}));
    EXPECT_FALSE(drag.isDragging());
    // The next drag starts where this one ended.
    grab();
    dragTo(9, 19);
    EXPECT_EQ(drag.release(highlighted), (Move{-6, 15, 24}));
    // Whole frames on both sides of zero.
    drag.restart(Range{-3.5, 1.5});
    grab();
    dragTo(-5.5, -0.5);
    EXPECT_EQ(drag.release(highlighted), (Move{-2, -3, 0}));
}

TEST_F(RangeDragged, WhatIsNoMoveMovesNothing) {
    grab();
    EXPECT_EQ(drag.release(highlighted), std::nullopt) << "a click";
    grab();
    drag.move();
    EXPECT_EQ(drag.release(highlighted), std::nullopt) << "less than a frame";
    grab();
    dragTo(13, 23);
    dragTo(10, 20);
    EXPECT_EQ(drag.release(highlighted), (Move{0, 10, 19})) << "there and back: only to be shown";
    grab();
    dragTo(10, 25);
    EXPECT_EQ(drag.offset(), 0) << "made longer";
    EXPECT_EQ(drag.release(highlighted), (Move{0, 10, 19}));
    grab();
    dragTo(6, 25);
    EXPECT_EQ(drag.offset(), 0) << "made longer at its start";
    EXPECT_EQ(drag.release(highlighted), (Move{0, 10, 24}));
    grab();
    dragTo(17, 25);
    EXPECT_EQ(drag.offset(), 0) << "made shorter at its start";
    EXPECT_EQ(drag.release(highlighted), (Move{0, 6, 24}));
    // The time that changes by itself, as in playback.
    grab();
    drag.follow(Range{13, 28});
    EXPECT_EQ(drag.release(highlighted), std::nullopt);
    EXPECT_EQ(drag.release(highlighted), std::nullopt) << "nor a release without a press";
}

TEST_F(RangeDragged, ARangeThatComesOrGoesUnderTheHandIsNotDragged) {
    highlighted.reset();
    drag.restart(highlighted);
    grab();
    dragTo(4, 8);
    EXPECT_FALSE(drag.isDragging()) << "it is just being highlighted";
    EXPECT_EQ(drag.release(highlighted), std::nullopt);
    grab();
    dragTo(6, 10);
    drag.follow(std::nullopt);
    EXPECT_FALSE(drag.isDragging());
    dragTo(7, 11);
    EXPECT_EQ(drag.release(highlighted), std::nullopt) << "it was gone in between";
    grab();
    dragTo(9, 13);
    drag.forget(); // another tool
    EXPECT_EQ(drag.offset(), 0);
    EXPECT_EQ(drag.release(highlighted), std::nullopt);
}

// The slider has taken the range along, so the drawings follow, late as it is.
TEST_F(RangeDragged, ADragWhoseReleaseNeverCameEndsWithTheNextPress) {
    grab();
    dragTo(15, 25);
    EXPECT_EQ(drag.press(highlighted), (Move{5, 10, 19}));
    EXPECT_FALSE(drag.isDragging());
    dragTo(16, 26);
    EXPECT_EQ(drag.release(highlighted), (Move{1, 15, 24})) << "counted from there, once";
    grab();
    dragTo(20, 30);
    EXPECT_EQ(drag.press(std::nullopt), (Move{4, 16, 25})) << "also when nothing can be grabbed";
    dragTo(25, 35);
    EXPECT_EQ(drag.release(highlighted), std::nullopt);
}

} // namespace
} // namespace vellum
