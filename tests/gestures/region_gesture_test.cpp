// The hand of the transform tool: what a drag selects, where what floats goes, and what happens
// when buttons come and go as they should not.
#include "support/Seed.h"
#include "tools/gestures/RegionGesture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace vellum {
namespace {

using Ended = RegionGesture::Ended;

// One view pixel an image pixel, then two, panned.
const ViewMapping kView{1024, 1024, 0.0, 0.0, 1024.0};
const ViewMapping kCloser{1600, 1200, 40.0, -25.0, 2048.0};
const QRect kRegion(QPoint(400, 300), QPoint(499, 349));

class Gesture : public testing::Test {
protected:
    Gesture() { gesture.begin(kView, false); }

    static QPoint onView(QPoint imagePixel, const ViewMapping& view = kView) {
        return imageToView(imagePixel, view).toPoint();
    }
    void select(QPoint from, QPoint to) { // image pixels
        gesture.press(Qt::LeftButton, false, onView(from));
        EXPECT_TRUE(gesture.drag(onView(to), false));
        EXPECT_EQ(gesture.release(), Ended::Selecting);
    }
    void lift(bool paste = false) {
        gesture.begin(kView, paste);
        gesture.select(onView(kRegion.topLeft()), onView(kRegion.bottomRight()));
        ASSERT_TRUE(gesture.chooseRegion(false, false, kRegion.size()));
        gesture.lift();
    }
    void drag(QPoint by, Qt::MouseButton button = Qt::LeftButton, bool shift = false) {
        const QPoint at(700, 600);
        gesture.press(button, shift, at);
        EXPECT_TRUE(gesture.drag(at + by, shift));
        EXPECT_EQ(gesture.release(), Ended::Transforming);
    }
    // The outline encloses what floats.
    void expectOutlined(double within) {
        QPolygonF outline;
        for (const QPointF& corner : gesture.outlineOnImage())
            outline << corner;
        const QRectF shown = outline.boundingRect();
        const QRectF floats = gesture.state().matrix().mapRect(QRectF(gesture.state().region));
        EXPECT_NEAR(shown.left(), floats.left(), within);
        EXPECT_NEAR(shown.top(), floats.top(), within);
        EXPECT_NEAR(shown.right(), floats.right(), within);
        EXPECT_NEAR(shown.bottom(), floats.bottom(), within);
    }

    RegionGesture gesture;
};

TEST_F(Gesture, SelectsTheSameWhicheverWayTheHandGoes) {
    const QPoint a = kRegion.topLeft(), c = kRegion.bottomRight();
    const QPoint b(c.x(), a.y()), d(a.x(), c.y());
    for (const auto& [from, to] : {std::pair(a, c), {c, a}, {b, d}, {d, b}}) {
        select(from, to);
        ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
        EXPECT_EQ(gesture.state().region, kRegion);
        // The outline goes around whole pixels.
        EXPECT_EQ(gesture.outline()[0], onView(a));
        EXPECT_EQ(gesture.outline()[2], onView(c + QPoint(1, 1)));
        EXPECT_EQ(gesture.selectedSize(), kRegion.size());
    }
}

TEST_F(Gesture, AClickIsTheWholeImageAndBesideItIsNothing) {
    gesture.press(Qt::LeftButton, false, {30, 40});
    EXPECT_EQ(gesture.release(), Ended::Selecting);
    EXPECT_TRUE(gesture.selectedSize().isNull());
    ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
    EXPECT_EQ(gesture.state().region, QRect(QPoint(0, 0), QPoint(1022, 1022)));

    select({-500, 10}, {20, 60});
    ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
    EXPECT_EQ(gesture.state().region, QRect(QPoint(0, 10), QPoint(20, 60))) << "partly beside";
    select({-500, 10}, {-20, 60});
    EXPECT_FALSE(gesture.chooseRegion(false, false, {}));
    // What is pasted may hang over any edge.
    gesture.begin(kView, true);
    gesture.select(onView({-500, 10}), onView({-20, 60}));
    ASSERT_TRUE(gesture.chooseRegion(false, false, QSize(700, 50)));
    EXPECT_EQ(gesture.state().region, QRect(-500, 10, 700, 50)) << "as large as the clipboard";
}

TEST_F(Gesture, StatesWhatTheTransformBeginsWith) {
    for (const bool copy : {false, true}) {
        for (const bool cut : {false, true}) {
            select({10, 10}, {50, 50});
            gesture.begin(kView, false);
            ASSERT_TRUE(gesture.chooseRegion(copy, cut, {}));
            EXPECT_EQ(gesture.state().copy, copy);
            EXPECT_EQ(gesture.state().cut, cut);
            EXPECT_TRUE(gesture.state().setUp);
            EXPECT_FALSE(gesture.state().plain || gesture.state().paste);
        }
    }
    // A paste lies pixel for pixel where it was put until it is touched.
    lift(true);
    EXPECT_TRUE(gesture.state().paste && gesture.state().plain && gesture.state().setUp);
    drag({0, 0});
    EXPECT_FALSE(gesture.state().plain);
}

TEST_F(Gesture, MovesRotatesAndScales) {
    lift();
    drag({30, 20});
    drag({-10, 5});
    EXPECT_EQ(gesture.state().offset, QPoint(20, -25)) << "upwards on the view";
    drag({90, 400}, Qt::LeftButton, true);
    drag({-30, 0}, Qt::LeftButton, true);
    EXPECT_FLOAT_EQ(gesture.state().rotation, 60.0F) << "a degree a pixel sideways";

    // Each event adds, the more the farther the pointer is.
    gesture.press(Qt::MiddleButton, false, {700, 600});
    gesture.drag({900, 500}, false);
    EXPECT_NEAR(gesture.state().scaleX, 1.0201, 1e-4);
    EXPECT_NEAR(gesture.state().scaleY, 0.9901, 1e-4);
    gesture.drag({900, 500}, false);
    EXPECT_NEAR(gesture.state().scaleX, 1.0402, 1e-4);
    EXPECT_NEAR(gesture.state().scaleY, 0.9802, 1e-4);
    gesture.drag({900, 500}, true);
    EXPECT_FLOAT_EQ(gesture.state().scaleY, gesture.state().scaleX) << "Shift: both alike";
    for (int i = 0; i < 100; ++i)
        gesture.drag({0, -2000}, false);
    EXPECT_FLOAT_EQ(gesture.state().scaleX, 0.1F);
    EXPECT_FLOAT_EQ(gesture.state().scaleY, 0.1F);
    gesture.release();

    gesture.flip(true);
    drag({100, 0}, Qt::MiddleButton);
    EXPECT_LT(gesture.state().scaleX, -0.1F) << "flipped and growing";
    gesture.flip(false);
    EXPECT_LT(gesture.state().scaleY, 0.0F);
    gesture.flip(true);
    gesture.flip(false);
    EXPECT_GT(gesture.state().scaleX, 0.1F);
    EXPECT_GT(gesture.state().scaleY, 0.0F);
}

TEST_F(Gesture, TheOutlineEnclosesWhatFloatsInEveryView) {
    std::mt19937 random(support::seed());
    const auto upTo = [&](int bound) {
        return std::uniform_int_distribution<int>(-bound, bound)(random);
    };
    lift();
    for (int i = 0; i < 200 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        switch (random() % 5) {
        case 0:
            drag({upTo(100), upTo(100)}, Qt::MiddleButton, random() % 2 == 0);
            break;
        case 1:
            drag({upTo(90), upTo(90)}, Qt::LeftButton, true);
            break;
        case 2:
            gesture.flip(random() % 2 == 0);
            break;
        case 3: {
            // Another view: what floats stays on its place of the drawing.
            const RegionTransform before = gesture.state();
            gesture.follow(gesture.view() == kView ? kCloser : kView);
            EXPECT_EQ(gesture.state().matrix(), before.matrix());
            break;
        }
        default:
            drag({upTo(200), upTo(200)});
        }
        expectOutlined(2.0);
    }
}

TEST_F(Gesture, AViewThatChangesUnderTheHandMovesNothingOnTheDrawing) {
    select(kRegion.topLeft(), kRegion.bottomRight());
    gesture.follow(kCloser);
    EXPECT_EQ(gesture.outline()[0], onView(kRegion.topLeft(), kCloser));
    // Also while it is being dragged.
    gesture.press(Qt::LeftButton, false, onView({100, 100}, kCloser));
    gesture.follow(kView);
    gesture.drag(onView({200, 180}), false);
    gesture.release();
    ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
    EXPECT_EQ(gesture.state().region, QRect(QPoint(100, 100), QPoint(200, 180)));

    lift();
    gesture.press(Qt::LeftButton, false, onView({450, 320}));
    gesture.drag(onView({470, 330}), false);
    gesture.follow(kCloser);
    EXPECT_EQ(gesture.state().offset, QPoint(20, 10));
    gesture.drag(onView({480, 340}, kCloser), false);
    EXPECT_EQ(gesture.state().offset, QPoint(30, 20));
    expectOutlined(2.0);
}

// --- Buttons that come and go as they should not -------------------------------------------------

TEST_F(Gesture, APressAfterAReleaseThatNeverCameBeginsAnew) {
    gesture.press(Qt::LeftButton, false, onView({10, 10}));
    gesture.drag(onView({60, 60}), false);
    select(kRegion.topLeft(), kRegion.bottomRight());
    ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
    EXPECT_EQ(gesture.state().region, kRegion);

    lift();
    gesture.press(Qt::LeftButton, false, {500, 500});
    gesture.drag({530, 500}, false);
    drag({5, 0}); // no jump to where the hand is now
    EXPECT_EQ(gesture.state().offset, QPoint(35, 0));
    EXPECT_EQ(gesture.release(), Ended::Nothing) << "the late release";
    EXPECT_FALSE(gesture.drag({900, 900}, false)) << "nothing is held";
    EXPECT_EQ(gesture.state().offset, QPoint(35, 0));
}

TEST_F(Gesture, AnotherButtonEndsWhatTheFirstWasDoing) {
    lift();
    gesture.press(Qt::LeftButton, false, {500, 500});
    gesture.drag({510, 500}, false);
    gesture.press(Qt::MiddleButton, false, {510, 500});
    gesture.drag({610, 500}, false);
    EXPECT_EQ(gesture.state().offset, QPoint(10, 0));
    EXPECT_GT(gesture.state().scaleX, 1.0F);
    EXPECT_EQ(gesture.release(), Ended::Transforming);
    EXPECT_EQ(gesture.release(), Ended::Nothing);
    gesture.press(Qt::RightButton, false, {500, 500});
    EXPECT_FALSE(gesture.isDragging());
    // Lifted by Enter in the middle of selecting: the button no longer selects.
    gesture.reset();
    gesture.begin(kView, false);
    gesture.press(Qt::LeftButton, false, onView(kRegion.topLeft()));
    gesture.drag(onView(kRegion.bottomRight()), false);
    ASSERT_TRUE(gesture.chooseRegion(false, false, {}));
    gesture.lift();
    EXPECT_FALSE(gesture.drag({0, 0}, false));
    EXPECT_EQ(gesture.release(), Ended::Nothing);
    EXPECT_EQ(gesture.state().region, kRegion);
}

TEST_F(Gesture, OnceInvalidItOnlyAsksToBeTakenBack) {
    lift();
    gesture.press(Qt::LeftButton, false, {500, 500});
    gesture.invalidate();
    EXPECT_FALSE(gesture.drag({600, 600}, false));
    EXPECT_EQ(gesture.state().offset, QPoint());
    EXPECT_EQ(gesture.release(), Ended::Invalid);
    gesture.press(Qt::LeftButton, true, {500, 500});
    EXPECT_EQ(gesture.release(), Ended::Invalid) << "until it is reset";
    gesture.reset();
    EXPECT_FALSE(gesture.isTransforming());
    EXPECT_EQ(gesture.release(), Ended::Nothing);
    gesture.begin(kView, false);
    select({10, 10}, {20, 20});
}

} // namespace
} // namespace vellum
