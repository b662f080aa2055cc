// The keys for size and opacity, held as a keyboard tells it, and the drags they begin.
#include "tools/gestures/AdjustDrag.h"
#include "tools/gestures/HeldKey.h"

#include <Qt>

#include <gtest/gtest.h>

namespace vellum {
namespace {

using Option = AdjustDrag::Option;

TEST(HeldKeys, AreHeldUntilTheirOwnReleaseThatIsNoRepeat) {
    HeldKey key(Qt::Key_B);
    EXPECT_FALSE(key.press(Qt::Key_M)) << "another key is for others";
    EXPECT_FALSE(key.isHeld());
    EXPECT_TRUE(key.press(Qt::Key_B));
    for (int repeat = 0; repeat < 3; ++repeat) {
        EXPECT_TRUE(key.release(Qt::Key_B, true));
        EXPECT_TRUE(key.isHeld());
        EXPECT_TRUE(key.press(Qt::Key_B));
    }
    EXPECT_FALSE(key.release(Qt::Key_M, false));
    EXPECT_TRUE(key.isHeld());
    EXPECT_TRUE(key.release(Qt::Key_B, false));
    EXPECT_FALSE(key.isHeld());
    // Let go while the window had no focus: a late repeat of the release holds nothing.
    key.press(Qt::Key_B);
    key.letGo();
    EXPECT_FALSE(key.isHeld());
    EXPECT_TRUE(key.release(Qt::Key_B, true)) << "still this key";
    EXPECT_FALSE(key.isHeld());
}

TEST(Adjusting, TheKeyAtThePressChoosesTheOption) {
    EXPECT_EQ(AdjustDrag::optionFor(false, false, false), Option::None);
    EXPECT_EQ(AdjustDrag::optionFor(true, false, false), Option::Size);
    EXPECT_EQ(AdjustDrag::optionFor(false, true, false), Option::Opacity);
    EXPECT_EQ(AdjustDrag::optionFor(true, true, false), Option::Size) << "one of both";
    EXPECT_EQ(AdjustDrag::optionFor(true, false, true), Option::Size);
    EXPECT_EQ(AdjustDrag::optionFor(false, true, true), Option::None) << "the eraser erases";
}

TEST(Adjusting, TenPixelsAreAUnitWhereverTheHandGoes) {
    AdjustDrag drag;
    drag.begin(Option::Size, 6, {200, 50});
    EXPECT_EQ(drag.valueAt({200, 50}), 6);
    // Towards zero on both sides of the press.
    EXPECT_EQ(drag.valueAt({209, 50}), 6);
    EXPECT_EQ(drag.valueAt({210, 900}), 7) << "up and down mean nothing";
    EXPECT_EQ(drag.valueAt({191, 50}), 6);
    EXPECT_EQ(drag.valueAt({190, -70}), 5);
    EXPECT_EQ(drag.valueAt({0, 50}), -14) << "the option keeps itself in its range";
    EXPECT_EQ(drag.valueAt({225, 50}), 8) << "from the press, not from the last drag";
}

TEST(Adjusting, APressAfterAReleaseThatNeverCameBeginsAnew) {
    AdjustDrag drag;
    EXPECT_FALSE(drag.end()) << "nothing was on";
    drag.begin(Option::Size, 6, {200, 50});
    EXPECT_EQ(drag.valueAt({300, 50}), 16);
    EXPECT_TRUE(drag.isOn());
    drag.begin(Option::Opacity, 50, {300, 50}); // another button, or the same once more
    EXPECT_EQ(drag.option(), Option::Opacity);
    EXPECT_EQ(drag.valueAt({310, 50}), 51);
    EXPECT_TRUE(drag.end());
    EXPECT_FALSE(drag.isOn());
    EXPECT_FALSE(drag.end()) << "the late release";
}

} // namespace
} // namespace vellum
