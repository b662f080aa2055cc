// A region lifted out of a frame, floating over it, merged back.
#include "document/Drawing.h"
#include "support/FrameChanges.h"
#include "support/Seed.h"
#include "support/Sure.h"
#include "tools/raster/StrokeImage.h"

#include <gtest/gtest.h>

using support::sure;

namespace vellum {
namespace {

using namespace drawing;

const QString kCamera = QStringLiteral("persp");
const QRect kRegion(QPoint(100, 60), QPoint(139, 79)); // 40 x 20

class Region : public testing::Test {
protected:
    void SetUp() override {
        manager.addLayer(kCamera, 0, QString());
        manager.addFrameAt(kCamera, 1);
        goTo(manager, 1);
        setPicture(scribble(7));
    }

    void setPicture(const QImage& image) { test::putPicture(manager, kCamera, image); }
    QImage picture() { return withoutFringe(sure(manager.currentFrame(kCamera)).image()); }
    QImage shown() { return withoutFringe(sure(manager.compositeCamera(kCamera))); }

    Stroke* lift(const RegionTransform& state) { return manager.beginTransform(kCamera, state); }

    // As the tool does after a drag.
    void change(Stroke* stroke, const RegionTransform& state) {
        stroke->region = state;
        stroke->dirty = true;
    }

    QImage merge() {
        EXPECT_TRUE(manager.commitStroke(kCamera, undo));
        return picture();
    }

    static RegionTransform of(const QRect& region) {
        RegionTransform state;
        state.region = region;
        state.setUp = true;
        return state;
    }

    CleanScene scene;
    LayerManager manager;
    QByteArray undo;
};

// The first pixel in which two pictures differ, and how.
testing::AssertionResult same(const QImage& a, const QImage& b) {
    if (a.size() != b.size())
        return testing::AssertionFailure() << a.width() << " and " << b.width() << " wide";
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor one = a.pixelColor(x, y);
            const QColor other = b.pixelColor(x, y);
            if (one != other) {
                return testing::AssertionFailure()
                       << "at " << x << ", " << y << ": " << qPrintable(one.name(QColor::HexArgb))
                       << " and " << qPrintable(other.name(QColor::HexArgb));
            }
        }
    }
    return testing::AssertionSuccess();
}

// One opaque pixel of its own at (x, y) of an otherwise empty canvas.
QImage dot(int x, int y) {
    QImage image = blankCanvas();
    image.setPixelColor(x, y, Qt::red);
    return image;
}

TEST_F(Region, MovesExactlyAndLeavesAHole) {
    const QImage before = picture();
    RegionTransform state = of(kRegion);
    Stroke* stroke = lift(state);
    ASSERT_NE(stroke, nullptr);
    EXPECT_TRUE(same(shown(), before)); // floats where it was: nothing to see, to the last bit
    EXPECT_TRUE(same(picture(), before));

    state.offset = {300, 500};
    change(stroke, state);
    QImage expected = before;
    for (int y = kRegion.top(); y <= kRegion.bottom(); ++y) {
        for (int x = kRegion.left(); x <= kRegion.right(); ++x)
            expected.setPixelColor(x, y, Qt::transparent);
    }
    const QImage moving = shown();
    EXPECT_TRUE(same(picture(), before)); // the frame itself waits
    // Outside the hole and the place it went to nothing changed.
    const QRect target = kRegion.translated(state.offset);
    for (const QRect& part : {QRect(0, 0, 1024, 60), QRect(0, 80, 400, 944), kRegion})
        EXPECT_TRUE(same(moving.copy(part), expected.copy(part))) << part.top();
    EXPECT_NE(moving.copy(target), expected.copy(target));
    EXPECT_TRUE(same(merge(), moving)); // merging changes no pixel on the screen
    EXPECT_TRUE(same(shown(), moving));

    QByteArray bytes = undo;
    ASSERT_TRUE(manager.replaceActiveImage(kCamera, bytes));
    EXPECT_TRUE(same(picture(), before));
}

TEST_F(Region, MapsPixelsToWhereTheyBelong) {
    const QPoint at(103, 62); // three columns and two rows into the region
    const struct {
        const char* what;
        float rotation, scaleX, scaleY;
        QPoint where; // of the pixel's middle
    } cases[] = {
        {"flip across", 0, -1, 1, {136, 62}},
        {"flip down", 0, 1, -1, {103, 77}},
        {"half turn", 180, 1, 1, {136, 77}},
        {"quarter turn clockwise", 90, 1, 1, {127, 53}},
        {"quarter turn back", -90, 1, 1, {112, 86}},
        {"full turn", 360, 1, 1, {103, 62}},
    };
    for (const auto& c : cases) {
        setPicture(dot(at.x(), at.y()));
        RegionTransform state = of(kRegion);
        Stroke* stroke = lift(state);
        state.rotation = c.rotation;
        state.scaleX = c.scaleX;
        state.scaleY = c.scaleY;
        change(stroke, state);
        const QImage merged = merge();
        EXPECT_GT(qAlpha(merged.pixel(c.where)), 200) << c.what;
        EXPECT_EQ(qRed(merged.pixel(c.where)), 255) << c.what;
        EXPECT_EQ(qAlpha(merged.pixel(c.where + QPoint(2, 0))), 0) << c.what;
        EXPECT_EQ(qAlpha(merged.pixel(c.where + QPoint(0, 2))), 0) << c.what;
    }
    // Twice as wide around the middle of the region: the dot covers two columns.
    setPicture(dot(at.x(), at.y()));
    RegionTransform state = of(kRegion);
    Stroke* stroke = lift(state);
    state.scaleX = 2;
    change(stroke, state);
    const QImage merged = merge();
    EXPECT_GT(qAlpha(merged.pixel(86, 62)), 100);
    EXPECT_GT(qAlpha(merged.pixel(87, 62)), 100);
    EXPECT_EQ(qAlpha(merged.pixel(84, 62)), 0);
    EXPECT_EQ(qAlpha(merged.pixel(at)), 0);
}

TEST_F(Region, CutCopyAndPaste) {
    const QImage before = picture();
    RegionTransform state = of(kRegion);
    state.cut = state.copy = true;
    ASSERT_NE(lift(state), nullptr);
    EXPECT_EQ(withoutFringe(manager.clipboardImage()), before.copy(kRegion));
    const QImage hole = merge();
    EXPECT_TRUE(same(hole.copy(kRegion), blankCanvas().copy(kRegion)));
    EXPECT_TRUE(same(hole.copy(0, 80, 1024, 944), before.copy(0, 80, 1024, 944)));

    // Back where it was: whole again, bit for bit.
    state = of(kRegion);
    state.paste = state.plain = true;
    state.rotation = 30; // not looked at before the first drag
    ASSERT_NE(lift(state), nullptr);
    EXPECT_TRUE(same(merge(), before));

    // A copy floats over its source.
    state = of(kRegion);
    state.copy = true;
    Stroke* stroke = lift(state);
    state.offset = {0, 400};
    change(stroke, state);
    const QImage twice = merge();
    EXPECT_TRUE(same(twice.copy(kRegion), before.copy(kRegion)));
    EXPECT_NE(twice.copy(kRegion.translated(0, 400)), before.copy(kRegion.translated(0, 400)));
}

TEST_F(Region, AtTheEdgesAndBeyond) {
    const QImage before = picture();
    // Half outside, then dragged out altogether: what left the canvas is gone.
    RegionTransform state = of(QRect(QPoint(-20, -10), QPoint(19, 9)));
    Stroke* stroke = lift(state);
    EXPECT_TRUE(same(shown(), before));
    state.offset = {-2000, 5000};
    change(stroke, state);
    QImage expected = before;
    for (int i = 0; i < 200; ++i)
        expected.setPixelColor(i % 20, i / 20, Qt::transparent);
    EXPECT_TRUE(same(shown(), expected));
    manager.discardStroke();
    EXPECT_TRUE(same(shown(), before));

    // A selection without extent the wrong way round hides the layer, and only while it lasts.
    ASSERT_NE(lift(of(QRect(QPoint(10, 10), QPoint(5, 20)))), nullptr);
    EXPECT_TRUE(same(shown(), blankCanvas()));
    manager.discardStroke();
    EXPECT_TRUE(same(shown(), before));
    EXPECT_TRUE(same(picture(), before));
}

TEST_F(Region, BelongsToItsFrame) {
    manager.addFrameAt(kCamera, 5);
    RegionTransform state = of(kRegion);
    Stroke* stroke = lift(state);
    state.offset = {50, 50};
    change(stroke, state);
    // Another picture of the same frame, by undo for instance: lifted out of that one.
    setPicture(dot(kRegion.left(), kRegion.top()));
    const QImage other = shown();
    EXPECT_TRUE(same(other, dot(kRegion.left() + 50, kRegion.top() + 50)));
    // On another frame it is neither shown nor merged; back on its own it is there again.
    goTo(manager, 5);
    EXPECT_TRUE(same(shown(), blankCanvas()));
    EXPECT_FALSE(manager.commitStroke(kCamera, undo));
    EXPECT_TRUE(same(picture(), blankCanvas()));
    goTo(manager, 1);
    EXPECT_TRUE(same(shown(), other));
    EXPECT_TRUE(same(merge(), other));

    manager.setLayerState(kCamera, 0, LayerState::Locked);
    EXPECT_EQ(lift(of(kRegion)), nullptr);
    manager.setLayerState(kCamera, 0, LayerState::Animated);
    goTo(manager, 0);
    EXPECT_EQ(lift(of(kRegion)), nullptr); // no frame there
}

// What is repainted piece by piece is what a full repaint gives.
TEST_F(Region, EveryStepLooksLikeTheLastAlone) {
    std::mt19937 random(support::seed());
    const auto between = [&](int low, int high) {
        return low + static_cast<int>(random() % unsigned(high - low + 1));
    };
    auto upper = std::make_unique<Layer>();
    upper->addFrameAt(1);
    manager.insertLayer(kCamera, 1, std::move(upper));
    RegionTransform state = of(QRect(QPoint(200, 300), QPoint(520, 610)));
    Stroke* stroke = lift(state);
    for (int step = 0; step < 12; ++step) {
        state.offset = {between(-700, 900), between(-900, 700)};
        state.rotation = static_cast<float>(between(-3, 3) * 15);
        state.scaleX = static_cast<float>(between(1, 20) * (step % 3 == 0 ? -1 : 1)) / 8.0F;
        state.scaleY = static_cast<float>(between(1, 20)) / 8.0F;
        change(stroke, state);
        const QImage partly = shown();
        manager.markCameraModified(kCamera);
        EXPECT_TRUE(same(shown(), partly)) << step;
        LayerManager fresh;
        fresh.addLayer(kCamera, 0, QString());
        fresh.addFrameAt(kCamera, 1);
        test::putPicture(fresh, kCamera, picture());
        ASSERT_NE(fresh.beginTransform(kCamera, state), nullptr);
        EXPECT_EQ(withoutFringe(*fresh.compositeCamera(kCamera)), partly) << step;
    }
}

} // namespace
} // namespace vellum
