// The colour of the transparent pixels around visible ones.
#include "raster/Pictures.h"
#include "tools/raster/ColorFringe.h"
#include "tools/raster/Simd.h"
#include "tools/raster/StrokeImage.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

using namespace vellum;

// By hand, and against a plain search for the nearest visible pixel.
TEST(ColorFringe, TransparentPixelsHaveTheColorOfTheNearestVisibleOne) {
    QImage image = blankCanvas();
    const QColor red(200, 10, 10), blue(10, 10, 201), faint(7, 90, 7, 1);
    image.setPixelColor(100, 100, red);
    image.setPixelColor(106, 100, blue);
    image.setPixelColor(0, 1023, faint);
    image.setPixelColor(104, 93, QColor(1, 2, 3, 0)); // left over from something gone
    EXPECT_EQ(colorFringe(image, QRect(90, 90, 30, 20)), QRect(82, 82, 46, 36));
    const auto at = [&](int x, int y) { return image.pixelColor(x, y).rgba(); };
    const QRgb besideRed = qRgba(200, 10, 10, 0), besideBlue = qRgba(10, 10, 201, 0);
    EXPECT_EQ(at(100, 100), red.rgba());
    EXPECT_EQ(at(106, 100), blue.rgba());
    for (const QPoint place : {QPoint(92, 100), {102, 100}, {100, 92}, {96, 104}})
        EXPECT_EQ(at(place.x(), place.y()), besideRed) << place.x() << ' ' << place.y();
    for (const QPoint place : {QPoint(114, 100), {104, 100}, {106, 108}, {109, 95}, {103, 100}})
        EXPECT_EQ(at(place.x(), place.y()), besideBlue) << place.x() << ' ' << place.y();
    for (const QPoint place : {QPoint(91, 100), {95, 96}, {100, 109}, {104, 92}})
        EXPECT_EQ(at(place.x(), place.y()), 0U) << place.x() << ' ' << place.y();
    EXPECT_EQ(at(1, 1023), 0U) << "not asked for";
    colorFringe(image, image.rect());
    EXPECT_EQ(at(1, 1023), qRgba(7, 90, 7, 0));
    EXPECT_EQ(at(0, 1015), qRgba(7, 90, 7, 0));
    image.setPixelColor(100, 100, Qt::transparent);
    colorFringe(image, QRect(100, 100, 1, 1));
    EXPECT_EQ(at(100, 100), besideBlue);
    EXPECT_EQ(at(97, 100), 0U);
    EXPECT_EQ(colorFringe(image, QRect(2000, 3, 9, 9)), QRect());

    const QImage pictures[] = {drawing::scribble(5), drawing::scribble(6)};
    std::mt19937 random(11);
    for (const QImage& before : pictures) {
        QImage after = before;
        colorFringe(after, after.rect());
        const simd::Target fastest = simd::inUse();
        for (const simd::Target target : simd::usable()) {
            simd::use(target);
            QImage other = before;
            colorFringe(other, other.rect());
            EXPECT_EQ(other, after) << simd::name(target);
        }
        simd::use(fastest);
        for (int i = 0; i < 4000; ++i) {
            const QPoint place(int(random() % 1024), int(random() % 1024));
            QRgb expected = before.pixelColor(place).rgba();
            int nearest = qAlpha(expected) > 0 ? 0 : kFringe + 1;
            for (int dy = -kFringe; dy <= kFringe && nearest > 0; ++dy) {
                for (int dx = -kFringe; dx <= kFringe; ++dx) {
                    const QPoint other = place + QPoint(dx, dy);
                    const int distance = std::abs(dx) + std::abs(dy);
                    if (!before.rect().contains(other) || distance > nearest)
                        continue;
                    const QRgb seen = before.pixelColor(other).rgba();
                    const auto number = [](QRgb c) { return qRgb(qBlue(c), qGreen(c), qRed(c)); };
                    if (qAlpha(seen) > 0 &&
                        (distance < nearest || number(seen) > number(expected))) {
                        nearest = distance;
                        expected = seen & 0xffffffU;
                    }
                }
            }
            if (nearest > kFringe)
                expected = 0;
            ASSERT_EQ(after.pixelColor(place).rgba(), expected) << place.x() << ' ' << place.y();
        }
    }
}
