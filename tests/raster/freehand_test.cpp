// The freehand rasteriser against its plain form and against maps checked by hand.
#include "PlainRaster.h"
#include "raster/Pixels.h"
#include "support/Seed.h"
#include "tools/raster/BrushStamp.h"
#include "tools/raster/FreehandRaster.h"
#include "tools/raster/SoftWalk.h"
#include "tools/raster/Stroke.h"

#include <QImage>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace vellum;
using pixels::alpha;
using pixels::point;

namespace {

QImage canvas(int side = kCanvasSize, int alpha = 0) {
    QImage image(side, side, QImage::Format_RGBA8888);
    image.fill(QColor(10, 200, 30, alpha));
    return image;
}

// Bounding rectangle of the pixels in which two images differ.
QRect difference(const QImage& a, const QImage& b) {
    QRect found;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y) || alpha(a, x, y) != alpha(b, x, y))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

// Rows of hexadecimal alpha values, "." for zero.
std::vector<std::string> map(const QImage& image, QRect area) {
    std::vector<std::string> rows;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        std::string row;
        for (int x = area.left(); x <= area.right(); ++x) {
            const int a = alpha(image, x, y);
            row += a == 0 ? " ." : QString(" %1").arg(a, 0, 16).toStdString();
        }
        rows.push_back(row);
    }
    return rows;
}

using Rows = std::vector<std::string>;

} // namespace

TEST(Freehand, EqualsThePlainRulesOnRandomStrokes) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto within = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    constexpr int kSide = 160;
    for (int round = 0; round < 160; ++round) {
        const auto tool = static_cast<Tool>(round % 3);
        const int width = round % 4 == 0 ? within(1, 3) : within(1, within(4, 100));
        const bool pressure = within(0, 1) == 1;
        const auto opacity = [&] { return static_cast<float>(within(0, 255)) / 255.0F; };
        const float constant = opacity();
        std::vector<StrokePoint> points;
        for (int i = within(2, 5); i > 0; --i)
            points.push_back(point(within(-60, kSide + 60), within(-60, kSide + 60), width,
                                   pressure ? opacity() : constant));
        if (within(0, 3) == 0) // a click: two samples side by side
            points = {point(points[0].x - 1, points[0].y, width, constant), points[0]};

        QImage fast = canvas(kSide, tool == Tool::Eraser ? 255 : within(0, 1) * 90);
        QImage slow = fast.copy();
        const QImage before = fast.copy();
        const QRect touched = drawFreehandSegments(fast, points, 0, tool);
        plain::drawFreehand(slow, points, 0, tool);
        ASSERT_EQ(difference(fast, slow), QRect())
            << "round " << round << ", tool " << numberOf(tool) << ", width " << width;
        const QRect changed = difference(before, fast);
        ASSERT_TRUE(changed.isEmpty() || touched.contains(changed)) << "round " << round;
        ASSERT_TRUE(touched.isEmpty() || fast.rect().contains(touched));
    }
}

TEST(Freehand, LongLinesInEveryDirectionEqualThePlainRules) {
    for (const QPoint direction : {QPoint(300, 0), QPoint(-300, 1), QPoint(0, 300),
                                   QPoint(211, -213), QPoint(-90, 300), QPoint(300, 70)}) {
        for (const int width : {6, 19, 20, 37, 100}) {
            const std::vector<StrokePoint> points = {
                point(200, 200, width, 0.3F),
                point(200 + direction.x(), 200 + direction.y(), width, 0.9F),
                point(200 + direction.x(), 200 - direction.y(), width, 0.9F)};
            QImage fast = canvas(520), slow = canvas(520);
            drawFreehandSegments(fast, points, 0, Tool::Brush);
            plain::drawFreehand(slow, points, 0, Tool::Brush);
            ASSERT_EQ(difference(fast, slow), QRect())
                << width << " towards " << direction.x() << ", " << direction.y();
        }
    }
}

// Every way a line of one opacity is taken: weights with and without exact integers (coordinates
// below and above 128), dabs on whole pixels, all widths, faint strokes, every border, over paint.
TEST(Freehand, LinesOfOneOpacityEqualThePlainRules) {
    constexpr int kSide = 200;
    const QPoint ways[] = {{40, 0},  {0, 40}, {-33, 33}, {37, 36},  {41, 7},
                           {-9, 43}, {64, 1}, {-17, -5}, {2, -30},  {1, 0},
                           {0, -1},  {0, 0},  {260, 3},  {-4, 270}, {250, 240}};
    const QPoint starts[] = {{60, 70}, {150, 140}, {-20, 5}, {5, 210}, {190, -8}, {199, 199}};
    const float opacities[] = {1.0F, 0.5F, 0.07F, 0.003F, 0.0F};
    int round = 0;
    for (int width = 2; width <= 100; width += width < 24 ? 1 : 7) {
        for (const QPoint way : ways) {
            const QPoint start = starts[round % 6];
            const float opacity = opacities[round / 2 % 5];
            const std::vector<StrokePoint> points = {
                point(start.x(), start.y(), width, opacity),
                point(start.x() + way.x(), start.y() + way.y(), width, opacity),
                point(start.x() + way.y(), start.y() + way.x(), width, opacity)};
            QImage fast = canvas(kSide, round % 3 * 60);
            QImage slow = fast.copy();
            drawFreehandSegments(fast, points, round % 2, Tool::Brush);
            plain::drawFreehand(slow, points, round % 2, Tool::Brush);
            ASSERT_EQ(difference(fast, slow), QRect())
                << width << " from " << start.x() << ", " << start.y() << " by " << way.x() << ", "
                << way.y() << " at " << opacity;
            ++round;
        }
    }
}

TEST(Freehand, DrawnPieceByPieceEqualsDrawnAtOnce) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(-20, 320);
    for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Eraser}) {
        std::vector<StrokePoint> points;
        for (int i = 0; i < 9; ++i)
            points.push_back(point(place(random), place(random), 23, 0.2F + 0.07F * float(i)));
        QImage whole = canvas(300, tool == Tool::Eraser ? 200 : 0);
        QImage pieces = whole.copy();
        drawFreehandSegments(whole, points, 0, tool);
        for (std::size_t count = 1; count <= points.size(); ++count) {
            const std::vector<StrokePoint> sofar(points.begin(),
                                                 points.begin() + std::ptrdiff_t(count));
            drawFreehandSegments(pieces, sofar, std::max(int(count) - 2, 0), tool);
        }
        EXPECT_EQ(difference(whole, pieces), QRect()) << "tool " << numberOf(tool);
    }
}

TEST(Freehand, HardDabByHand) {
    // Width 2: the block of four, the point at its lower right.
    QImage two = canvas(16);
    drawFreehandSegments(two, {point(8, 8, 2), point(8, 8, 2)}, 0, Tool::Pencil);
    EXPECT_EQ(map(two, QRect(6, 6, 4, 4)),
              (Rows{" . . . .", " . ff ff .", " . ff ff .", " . . . ."}));
    // Width 3, radius 1.5: i = 0 reaches 1 and covers half of the next cell (0x7f); i = 1 reaches
    // sqrt(1.25) = 1.118, so the diagonal's neighbours get 0.118 x 255 = 30 (0x1e).
    QImage three = canvas(16);
    drawFreehandSegments(three, {point(8, 8, 3), point(8, 8, 3)}, 0, Tool::Pencil);
    EXPECT_EQ(map(three, QRect(6, 6, 5, 5)),
              (Rows{" . 1e 7f 1e .", " 1e ff ff ff 1e", " 7f ff ff ff 7f", " 1e ff ff ff 1e",
                    " . 1e 7f 1e ."}));
}

TEST(Freehand, SoftDabByHand) {
    // Width 4: stamps of radius 3 at 0.4, covering 2 to either side. First a whole one, then twice
    // by half at the ends of a line without length: 102 in the centre, just below 68 beside it and
    // 34 two away, so 67 and 33, and in the corners 1 - sqrt(8) / 3 = 0.057 of 102.
    QImage image = canvas(16);
    drawFreehandSegments(image, {point(8, 8, 4), point(8, 8, 4)}, 0, Tool::Brush);
    EXPECT_EQ(alpha(image, 8, 8), 204);
    EXPECT_EQ(alpha(image, 9, 8), alpha(image, 8, 7));
    EXPECT_EQ(alpha(image, 9, 8), 67 + 33 + 33);
    EXPECT_EQ(alpha(image, 10, 8), 33 + 16 + 16);
    EXPECT_EQ(alpha(image, 10, 10), 5 + 2 + 2);
    EXPECT_EQ(alpha(image, 11, 8), 0);
    EXPECT_EQ(image.pixelColor(8, 8).green(), 200); // colour stays
}

// Its weight is its opacity: 0.5 of 127 is 63, then half of it twice at the ends of the line, and
// nothing is drawn beyond the ceiling.
TEST(Freehand, ABrushStrokeBeginsWithAFullDab) {
    QImage image = canvas(64);
    const StrokePoint here = point(32, 32, 20, 0.5F);
    drawFreehandSegments(image, {here, here}, 0, Tool::Brush);
    EXPECT_EQ(alpha(image, 32, 32), 127);
    EXPECT_EQ(alpha(image, 41, 32), 6 + 6 + 6); // 1 - 9/10 of 127 is 12
    EXPECT_EQ(alpha(image, 42, 32), 0);
    QImage border = canvas(64);
    drawFreehandSegments(border, {point(-9, 40, 20), point(-9, 40, 20)}, 0, Tool::Brush);
    // Four rows up the column 9 away is sqrt(97) off: 3 of 255, and 1 twice; three rows up 13.
    EXPECT_EQ(map(border, QRect(0, 35, 2, 3)), (Rows{" . .", " 5 .", " 19 ."}));
}

// The same ink at both ends but for the one dab more at the start, and nowhere beside the line.
TEST(Freehand, ABrushLineBeginsWithoutABlot) {
    for (int width = 2; width <= 100; ++width) {
        QImage image = canvas(512);
        drawFreehandSegments(image, {point(100, 100, width), point(400, 100, width)}, 0,
                             Tool::Brush);
        const bool thin = width < 20;
        const double radius = width / 2.0 + (thin ? 1.0 : 0.0);
        for (int across = -60; across <= 60; ++across) {
            const int y = 100 + across;
            for (int before = 0; before <= 60; ++before) {
                const double dab = 1.0 - std::hypot(before, across) / radius;
                // Dabs of odd width lie half a pixel aside, so that the ends are no mirror images.
                if (width % 2 == 0) {
                    ASSERT_LE(alpha(image, 100 - before, y),
                              alpha(image, 400 + before, y) + 0.5 +
                                  std::max(dab, 0.0) * (thin ? 102 : 255))
                        << "width " << width << ", " << before << " before, " << across;
                }
                ASSERT_TRUE(alpha(image, 100 - before, y) == 0 || alpha(image, 250, y) > 0)
                    << "width " << width << " is wider at its start";
            }
        }
    }
}

TEST(Freehand, ASlopingLineEndsOnAWholePixel) {
    for (int length = 1; length <= 400; ++length) {
        for (int rise = -length; rise <= length; rise += 1 + length / 40) {
            const SoftWalk walk(point(7, 9, 8), point(7 + length, 9 + rise, 8));
            for (const int end : {0, walk.count() - 1}) {
                const SoftStep step = walk.step(end);
                ASSERT_EQ(step.near, 0.5F) << length << ", " << rise;
                ASSERT_EQ(step.far, 0.0F) << length << ", " << rise;
                ASSERT_EQ(step.minor, end == 0 ? 9 : 9 + rise);
            }
        }
    }
}

TEST(Freehand, WhatIsNoNumberDrawsNothing) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    for (const int width : {1, 8, 40}) {
        for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Eraser}) {
            QImage image = canvas(64, tool == Tool::Eraser && width > 1 ? 200 : 0);
            const QImage before = image.copy();
            drawFreehandSegments(image, {point(20, 20, width, none), point(40, 30, width, none)}, 0,
                                 tool);
            EXPECT_EQ(difference(before, image), QRect()) << width << ", tool " << numberOf(tool);
        }
    }
}

TEST(Freehand, ThinLineByHand) {
    // From (2, 2) to (6, 3): quarter steps down; half weight at the ends, the first pixel whole.
    QImage image = canvas(12);
    drawFreehandSegments(image, {point(2, 2, 1), point(6, 3, 1)}, 0, Tool::Brush);
    const Rows expected = {" . . . . . . .", " . ff bf 7f 3f . .", " . . 3f 7f bf 7f .",
                           " . . . . . . ."};
    EXPECT_EQ(map(image, QRect(1, 1, 7, 4)), expected);
    QImage growing = canvas(12); // a segment has the width of where it begins
    drawFreehandSegments(growing, {point(2, 2, 1), point(6, 3, 9)}, 0, Tool::Brush);
    EXPECT_EQ(map(growing, QRect(1, 1, 7, 4)), expected);
}

TEST(Freehand, SingleColumnMarginOfWidthOne) {
    for (const Tool tool : {Tool::Pencil, Tool::Eraser}) {
        SCOPED_TRACE("tool " + std::to_string(numberOf(tool)));
        QImage image = canvas(64, tool == Tool::Eraser ? 255 : 0);
        const QImage before = image.copy();
        drawFreehandSegments(image, {point(0, 5, 1), point(0, 50, 1)}, 0, tool);
        EXPECT_EQ(difference(before, image), QRect());
        drawFreehandSegments(image, {point(0, 0, 1), point(9, 0, 1)}, 0, tool);
        EXPECT_EQ(difference(before, image), QRect(1, 0, 9, 1));
    }
    QImage wide = canvas(64); // dabs do reach the first column
    drawFreehandSegments(wide, {point(0, 5, 4), point(0, 50, 4)}, 0, Tool::Pencil);
    EXPECT_EQ(alpha(wide, 0, 20), 255);
}

TEST(Freehand, SpacingAndOpacityAlongAPencilLine) {
    // Width 30: a dab every 3 pixels, starting at the first. Opacity 0 to 1 over 60 pixels: the
    // last dab lies at 60, the one before at 57 with 57/60 of 255.
    QImage image = canvas(160);
    drawFreehandSegments(image, {point(50, 80, 30, 0.0F), point(110, 80, 30, 1.0F)}, 0,
                         Tool::Pencil);
    EXPECT_GE(alpha(image, 124, 80), 254); // 110 + 14; sixty additions may fall just short of 1
    EXPECT_EQ(alpha(image, 94, 80), 242);  // last reached by the dab at 107: 107 - 13
    EXPECT_EQ(alpha(image, 34, 80), 0);
}

TEST(Freehand, CeilingHoldsAndEraserIsNotGraded) {
    QImage image = canvas(200);
    std::vector<StrokePoint> there;
    for (int i = 0; i < 20; ++i)
        there.push_back(point(i % 2 == 0 ? 40 : 160, 100, 40, 0.5F));
    drawFreehandSegments(image, there, 0, Tool::Brush);
    EXPECT_EQ(alpha(image, 100, 100), 127);
    drawFreehandSegments(image, {point(40, 100, 40, 0.2F), point(160, 100, 40, 0.2F)}, 0,
                         Tool::Brush);
    EXPECT_EQ(alpha(image, 100, 100), 127); // a weaker pass darkens nothing
    drawFreehandSegments(image, {point(40, 100, 10, 0.5F), point(160, 100, 10, 0.5F)}, 0,
                         Tool::Eraser);
    EXPECT_EQ(alpha(image, 100, 100), 0);
    EXPECT_EQ(alpha(image, 100, 110), 127);
}

TEST(Freehand, NothingToDrawTouchesNothing) {
    QImage image = canvas(64);
    const std::vector<StrokePoint> two = {point(5, 5, 8), point(9, 9, 8)};
    EXPECT_EQ(drawFreehandSegments(image, {}, 0, Tool::Brush), QRect());
    EXPECT_EQ(drawFreehandSegments(image, {two[0]}, 0, Tool::Brush), QRect());
    EXPECT_EQ(drawFreehandSegments(image, two, 1, Tool::Brush), QRect());
    EXPECT_EQ(drawFreehandSegments(image, two, 0, Tool::Line), QRect());
    const int far = 1 << 30;
    EXPECT_EQ(
        drawFreehandSegments(image, {point(far, far, 8), point(far, far - 9, 8)}, 0, Tool::Pencil),
        QRect());
    EXPECT_EQ(difference(image, canvas(64)), QRect());
}

TEST(BrushStamp, EqualsThePlainTableForEveryWidth) {
    BrushStamp stamp;
    for (int width = 2; width <= 100; ++width) {
        for (const float opacity : {1.0F, 0.37F}) {
            const float radius = static_cast<float>(width) * 0.5F;
            for (const bool hard : {true, false}) {
                SCOPED_TRACE("width " + std::to_string(width) + ", opacity " +
                             std::to_string(opacity) + (hard ? ", hard" : ", soft"));
                stamp.build(hard ? BrushStamp::Mode::Hard : BrushStamp::Mode::Soft, radius,
                            opacity);
                const plain::Table table =
                    hard ? plain::hardTable(radius, opacity) : plain::softTable(radius, opacity);
                ASSERT_EQ(stamp.center(), table.center);
                for (int row = 0; row < BrushStamp::kSize; ++row) {
                    for (int column = 0; column < BrushStamp::kSize; ++column) {
                        ASSERT_EQ(stamp.at(column, row), table.cells[column][row])
                            << "at " << column << ", " << row;
                        ASSERT_TRUE(
                            table.cells[column][row] == 0 ||
                            (stamp.span(row).first <= column && stamp.span(row).last >= column));
                    }
                }
                BrushStamp turned;
                turned.build(hard ? BrushStamp::Mode::Hard : BrushStamp::Mode::Soft, radius,
                             opacity, true);
                ASSERT_EQ(turned.at(7, 3), stamp.at(3, 7));
            }
        }
    }
}

TEST(BrushStamp, ThinBrushesAreBuiltWiderAndFainter) {
    // The outermost cell inside the covered square tells the radius: 1 - 9/10.5 against 1 - 9/10.
    for (const auto& [width, expected] : {std::pair(19, 0.4F / 10.5F * 1.5F), {20, 0.1F}}) {
        QImage image = canvas(64);
        const int ends = 2; // half a dab each; without the dab that begins a stroke
        const StrokePoint here = point(32, 32, width);
        drawFreehandSegments(image, {here, here, here}, 1, Tool::Brush);
        const int once = static_cast<int>(expected * 255.0F);
        EXPECT_EQ(alpha(image, 32, 41), ends * (once / 2)) << width;
    }
}
