// Small pictures worked out on paper: what a wrong rounding, clipping or order would change.
#include "raster/Pixels.h"
#include "tools/raster/FreehandRaster.h"
#include "tools/raster/ShapeRaster.h"
#include "tools/raster/Stroke.h"

#include <QImage>

#include <algorithm>
#include <gtest/gtest.h>

using namespace vellum;
using pixels::alpha;
using pixels::point;

namespace {

using Rows = std::vector<std::string>;

QImage canvas(int alpha = 0) {
    QImage image(16, 16, QImage::Format_RGBA8888);
    image.fill(QColor(10, 200, 30, alpha));
    return image;
}

// Rows of hexadecimal alpha values, "." for zero.
Rows map(const QImage& image, QRect area) {
    Rows rows;
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

QImage pencil(StrokePoint from, StrokePoint to, Tool tool = Tool::Pencil, int below = 0) {
    QImage image = canvas(below);
    drawFreehandSegments(image, {from, to}, 0, tool);
    return image;
}

QImage shape(Tool tool, QPoint from, QPoint to, int width) {
    QImage image = canvas();
    Stroke stroke;
    stroke.tool = tool;
    stroke.color = Qt::red;
    stroke.points = {point(from.x(), from.y(), width), point(to.x(), to.y(), width)};
    drawShape(image, stroke, true);
    return image;
}

} // namespace

TEST(PixelMaps, LinesOfOnePixel) {
    const Rows flat = {" . . . . . . .", " . ff ff . . . .", " . . . ff ff . .",
                       " . . . . . ff ff"};
    EXPECT_EQ(map(pencil(point(2, 2, 1), point(7, 4, 1)), QRect(1, 1, 7, 4)), flat);
    EXPECT_EQ(map(pencil(point(7, 4, 1), point(2, 2, 1)), QRect(1, 1, 7, 4)), flat);
    EXPECT_EQ(map(pencil(point(2, 2, 1), point(4, 7, 1)), QRect(2, 2, 3, 6)),
              (Rows{" ff . .", " ff . .", " . ff .", " . ff .", " . . ff", " . . ff"}));
    // A line that leaves the canvas goes on outside and comes in again.
    EXPECT_EQ(map(pencil(point(13, -3, 1), point(17, 5, 1)), QRect(12, 0, 4, 3)),
              (Rows{" . . ff .", " . . . ff", " . . . ff"}));
}

// Eight steps along the axes from 0 to 1: an eighth for each, two where the line goes aslant. Cut,
// not rounded, and never darker than what is there already.
TEST(PixelMaps, OpacityMovesWithEveryStepAlongAnAxis) {
    const StrokePoint from = point(2, 2, 1, 0.0F);
    const StrokePoint to = point(8, 4, 1, 1.0F);
    EXPECT_EQ(map(pencil(from, to), QRect(2, 2, 7, 3)),
              (Rows{" . 1f . . . . .", " . . 5f 7f 9f . .", " . . . . . df ff"}));
    EXPECT_EQ(map(pencil(from, to, Tool::Pencil, 0x70), QRect(2, 2, 7, 3)),
              (Rows{" 70 70 70 70 70 70 70", " 70 70 70 7f 9f 70 70", " 70 70 70 70 70 df ff"}));
}

// Radius 2: the column beside the middle reaches sqrt(3) = 1.732, so 0.732 x 255 = 186 (0xba) of
// the cell beyond is covered.
TEST(PixelMaps, DabsAreCutOffAtTheBorders) {
    EXPECT_EQ(
        map(pencil(point(8, 8, 4), point(8, 8, 4)), QRect(5, 5, 7, 7)),
        (Rows{" . . . . . . .", " . . ba ff ba . .", " . ba ff ff ff ba .", " . ff ff ff ff ff .",
              " . ba ff ff ff ba .", " . . ba ff ba . .", " . . . . . . ."}));
    EXPECT_EQ(map(pencil(point(0, 0, 4), point(0, 0, 4)), QRect(0, 0, 4, 4)),
              (Rows{" ff ff ff .", " ff ff ba .", " ff ba . .", " . . . ."}));
    EXPECT_EQ(map(pencil(point(15, 15, 4), point(15, 15, 4)), QRect(12, 12, 4, 4)),
              (Rows{" . . . .", " . . ba ff", " . ba ff ff", " . ff ff ff"}));
    // Outside by two: the tip of the disc reaches in, one pixel.
    EXPECT_EQ(map(pencil(point(17, 8, 4), point(17, 8, 4)), QRect(13, 6, 3, 5)),
              (Rows{" . . .", " . . ba", " . . ff", " . . ba", " . . ."}));
}

TEST(PixelMaps, TheEraserTakesTheFaintRimAsWell) {
    EXPECT_EQ(
        map(pencil(point(8, 8, 3, 0.1F), point(8, 8, 3, 0.1F), Tool::Eraser, 255),
            QRect(5, 5, 7, 7)),
        (Rows{" ff ff ff ff ff ff ff", " ff ff . . . ff ff", " ff . . . . . ff", " ff . . . . . ff",
              " ff . . . . . ff", " ff ff . . . ff ff", " ff ff ff ff ff ff ff"}));
    EXPECT_EQ(map(pencil(point(3, 3, 1), point(5, 3, 1), Tool::Eraser, 255), QRect(2, 3, 5, 1)),
              (Rows{" ff . . . ff"}));
}

// The end the stroke begins at is whole, whichever way the line is walked.
TEST(PixelMaps, ThinBrushLinesInBothDirections) {
    EXPECT_EQ(map(pencil(point(6, 3, 1), point(2, 2, 1), Tool::Brush), QRect(1, 2, 7, 2)),
              (Rows{" . 7f bf 7f 3f . .", " . . 3f 7f bf ff ."}));
    EXPECT_EQ(map(pencil(point(2, 6, 1), point(3, 2, 1), Tool::Brush), QRect(2, 1, 3, 7)),
              (Rows{" . . .", " . 7f .", " 3f bf .", " 7f 7f .", " bf 3f .", " ff . .", " . . ."}));
    EXPECT_EQ(
        map(pencil(point(0, 0, 1, 0.5F), point(0, 3, 1, 0.5F), Tool::Brush), QRect(0, 0, 2, 5)),
        (Rows{" 7f .", " 7f .", " 7f .", " 3f .", " . ."}))
        << "no margin at the left for the brush";
}

TEST(PixelMaps, ShapesOfTwoPixelsStandOnTheirOutline) {
    const QImage box = shape(Tool::Rectangle, {4, 4}, {12, 10}, 2);
    const Rows rows = map(box, QRect(3, 3, 10, 8));
    for (const std::size_t y : {std::size_t(0), std::size_t(7)}) {
        for (int x = 4; x < 12; ++x)
            EXPECT_EQ(alpha(box, x, 3 + int(y)), 255) << x;
    }
    for (const int y : {5, 6, 7, 8})
        EXPECT_EQ(rows[std::size_t(y - 3)], " ff ff . . . . . . ff ff") << "row " << y;
    for (const QPoint corner : {QPoint(3, 3), {12, 3}, {3, 10}, {12, 10}})
        EXPECT_NEAR(alpha(box, corner.x(), corner.y()), 127, 2) << "bevelled";

    const QImage line = shape(Tool::Line, {4, 8}, {11, 8}, 2);
    EXPECT_EQ(map(line, QRect(4, 6, 7, 4)), (Rows{" . . . . . . .", " ff ff ff ff ff ff ff",
                                                  " ff ff ff ff ff ff ff", " . . . . . . ."}));
    for (const QPoint cap : {QPoint(3, 7), {3, 8}, {11, 7}, {11, 8}})
        EXPECT_NEAR(alpha(line, cap.x(), cap.y()), 255 * 0.785, 12)
            << "a quarter of a circle at " << cap.x() << ", " << cap.y();
    EXPECT_EQ(alpha(line, 12, 8), 0);

    const QImage ring = shape(Tool::Ellipse, {12, 3}, {4, 13}, 2); // corners in any order
    for (const QPoint on : {QPoint(8, 2), {8, 3}, {3, 8}, {4, 8}, {11, 8}, {12, 8}, {8, 13}})
        EXPECT_GT(alpha(ring, on.x(), on.y()), 200) << on.x() << ", " << on.y();
    for (const QPoint off : {QPoint(8, 8), {3, 3}, {12, 12}, {8, 5}, {6, 8}})
        EXPECT_EQ(alpha(ring, off.x(), off.y()), 0) << off.x() << ", " << off.y();
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x)
            EXPECT_NEAR(alpha(ring, x, y), alpha(ring, 15 - x, 15 - y), 3) << x << ", " << y;
    }
}
