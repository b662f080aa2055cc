// Shapes, text, PNG and the merge of a stroke into its frame.
#include "raster/Pixels.h"
#include "tools/raster/PngCodec.h"
#include "tools/raster/ShapeRaster.h"
#include "tools/raster/StrokeImage.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

#include <cmath>
#include <gtest/gtest.h>

using namespace vellum;
using pixels::alpha;

namespace {

Stroke shape(Tool tool, QPoint from, QPoint to, int width = 4, float opacity = 1.0F) {
    Stroke stroke;
    stroke.tool = tool;
    stroke.color = QColor(200, 40, 10);
    stroke.points = {{width, opacity, 1.0F, from.x(), from.y()},
                     {width, opacity, 1.0F, to.x(), to.y()}};
    return stroke;
}

Stroke text(const QString& string, int size = 30) {
    Stroke stroke;
    stroke.tool = Tool::Text;
    stroke.color = Qt::blue;
    stroke.fontFamily = QStringLiteral("DejaVu Sans");
    stroke.text = string;
    stroke.points = {{size, 1.0F, 1.0F, 100, 200}};
    return stroke;
}

// Pixels with any alpha.
QRect inked(const QImage& image) {
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            if (row[4 * x + 3] != 0)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

} // namespace

TEST(Shapes, ArrowHeadLengthAndAngle) {
    for (const auto& [shaft, length] : {std::pair(100, 20.0), {200, 40.0}, {300, 40.0}}) {
        SCOPED_TRACE("shaft " + std::to_string(shaft));
        const QPoint tip(500, 500);
        const ArrowHead head = arrowHead(QPoint(500 - shaft, 500), tip);
        for (const QPoint end : {head.left, head.right}) {
            const QPointF arm = QPointF(end - tip);
            EXPECT_NEAR(std::hypot(arm.x(), arm.y()), length, 0.8) << shaft;
            EXPECT_NEAR(std::abs(std::atan2(arm.y(), -arm.x())), 0.62831855, 0.03);
            EXPECT_LT(arm.x(), 0); // back along the shaft
        }
        EXPECT_NE(head.left, head.right);
    }
    const ArrowHead full = arrowHead(QPoint(0, 0), QPoint(300, 0)); // 40 by 32.36 and 23.51
    EXPECT_TRUE(QRect(268, -24, 1, 49).contains(full.left));
    EXPECT_EQ(std::abs(full.left.y()), 24);
    EXPECT_EQ(full.left.y(), -full.right.y());
    const ArrowHead smaller = arrowHead(QPoint(0, 175), QPoint(0, 0)); // 35: 28.32 and 20.57
    EXPECT_EQ(smaller.left.y(), 28);
    EXPECT_EQ(std::abs(smaller.right.x()), 21);
    const ArrowHead none = arrowHead(QPoint(3, 3), QPoint(3, 3));
    EXPECT_EQ(none.left, QPoint(3, 3));
}

TEST(Shapes, GeometryAndReportedRectangle) {
    const struct {
        Tool tool;
        QPoint inside; // painted
        QPoint outside;
    } cases[] = {
        {Tool::Line, {200, 200}, {200, 260}},
        {Tool::Arrow, {200, 200}, {100, 160}},
        {Tool::Ellipse, {200, 100}, {200, 200}},
        {Tool::Rectangle, {100, 150}, {200, 200}},
    };
    for (const auto& c : cases) {
        for (const bool swapped : {false, true}) {
            QImage image = blankCanvas();
            image.fill(Qt::red); // every update starts from nothing
            const QPoint a(100, 100), b(300, 300);
            const QRect painted =
                drawShape(image, swapped ? shape(c.tool, b, a) : shape(c.tool, a, b), true);
            EXPECT_GT(alpha(image, c.inside.x(), c.inside.y()), 200) << numberOf(c.tool);
            EXPECT_EQ(alpha(image, c.outside.x(), c.outside.y()), 0) << numberOf(c.tool);
            EXPECT_TRUE(painted.contains(inked(image))) << numberOf(c.tool);
        }
    }
}

TEST(Shapes, PenOpacityIsCutToAByte) {
    QImage image = blankCanvas();
    drawShape(image, shape(Tool::Line, {100, 500}, {900, 500}, 10, 0.5F), true);
    EXPECT_EQ(alpha(image, 500, 500), 127);
    EXPECT_NEAR(image.pixelColor(500, 500).red(), 200, 1); // painted premultiplied
}

TEST(Shapes, LinesAndArrowsEndRound) {
    for (const Tool tool : {Tool::Line, Tool::Arrow}) {
        QImage image = blankCanvas();
        drawShape(image, shape(tool, {100, 100}, {300, 100}, 20), true);
        EXPECT_EQ(alpha(image, 91, 100), 255) << numberOf(tool);
        EXPECT_EQ(alpha(image, 91, 91), 0)
            << numberOf(tool) << ": beyond the circle around the end";
    }
}

// The head of a long shaft: 40 at 36 degrees, so 32 back along the shaft and 24 to either side.
TEST(Shapes, AnArrowIsAShaftAndTwoStrokesFromItsTip) {
    for (const bool forward : {true, false}) {
        SCOPED_TRACE(forward ? "to the right" : "to the left");
        const int way = forward ? 1 : -1;
        const QPoint tip(500, 500), tail(500 - way * 300, 500);
        QImage image = blankCanvas();
        const QRect painted = drawShape(image, shape(Tool::Arrow, tail, tip), true);
        for (const int side : {-1, 1}) {
            SCOPED_TRACE("side " + std::to_string(side));
            EXPECT_GT(alpha(image, 500 - way * 31, 500 + side * 23), 200) << "its end";
            EXPECT_GT(alpha(image, 500 - way * 16, 500 + side * 12), 200) << "its middle";
            EXPECT_EQ(alpha(image, 500 - way * 150, 500 + side * 10), 0) << "none from the tail";
            EXPECT_EQ(alpha(image, 500 - way * 31, 500 + side * 12), 0) << "open";
        }
        EXPECT_TRUE(painted.contains(inked(image)));
    }
}

TEST(Shapes, TooFewPointsOnlyClear) {
    QImage image = blankCanvas();
    image.fill(Qt::red);
    Stroke one = shape(Tool::Ellipse, {5, 5}, {9, 9});
    one.points.resize(1);
    EXPECT_EQ(drawShape(image, one, true), QRect());
    EXPECT_EQ(inked(image), QRect());
}

TEST(Shapes, TextFrameStandsUnevenlyAroundTheText) {
    QImage framed = blankCanvas();
    const QRect painted = drawShape(framed, text(QStringLiteral("Hxg")), true);
    QImage bare = blankCanvas();
    drawShape(bare, text(QStringLiteral("Hxg")), false);
    ASSERT_FALSE(inked(bare).isEmpty());
    EXPECT_TRUE(painted.contains(inked(framed)));

    QPainter painter(&bare);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(30);
    painter.setFont(font);
    const QRect box = painter.boundingRect(QRect(100, 200, kCanvasSize, kCanvasSize), Qt::AlignLeft,
                                           QStringLiteral("Hxg"));
    painter.end();
    // Two pixels wide, centred on the outline.
    const QRect frame(box.x() - 4, box.y() - 2, box.width() + 8, box.height() + 6);
    EXPECT_EQ(inked(framed), frame.adjusted(-1, -1, 1, 1));
}

// The frame of a single blank: as wide as a blank advances and 8 more, as high as a line and 6
// more, its pen standing out by one on every side.
TEST(Shapes, AnEmptyTextIsFramedAsABlank) {
    QImage image = blankCanvas();
    drawShape(image, text(QString()), true);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(30);
    const QFontMetrics metrics(font, &image);
    const QRect frame = inked(image);
    EXPECT_EQ(frame.topLeft(), QPoint(100 - 4 - 1, 200 - 2 - 1));
    EXPECT_NEAR(frame.width(), metrics.horizontalAdvance(QLatin1Char(' ')) + 8 + 2, 1);
    EXPECT_NEAR(frame.height(), metrics.height() + 6 + 2, 1);
}

// A text's place is as large as the picture wherever it begins, and cut off where it ends.
TEST(Shapes, TextEndsAPictureAwayFromItsPoint) {
    const QString row(300, QLatin1Char('_'));
    const QString column = QStringLiteral("\u2588\n").repeated(60);
    for (const int begin : {-900, -300, 0, 700}) {
        const int end = std::min(begin + kCanvasSize, kCanvasSize) - 1;
        QImage image = blankCanvas();
        Stroke across = text(row);
        across.points[0].x = begin;
        drawShape(image, across, false);
        EXPECT_EQ(inked(image).right(), end) << begin;
        EXPECT_LT(inked(image).height(), 10) << "a line is never broken";
        across.text.replace(QLatin1String("__"), QLatin1String("_ "));
        drawShape(image, across, false);
        EXPECT_LT(inked(image).height(), 10) << "not even at blanks";
        Stroke down = text(column);
        down.points[0].y = begin;
        drawShape(image, down, false);
        EXPECT_EQ(inked(image).bottom(), end) << begin;
    }
}

TEST(Shapes, TabsAreBlanksAndLinesStayLines) {
    const auto drawn = [](const QString& string) {
        QImage image = blankCanvas();
        drawShape(image, text(string), false);
        return image;
    };
    EXPECT_EQ(drawn(QStringLiteral("a\tb")), drawn(QStringLiteral("a b")));
    EXPECT_NE(drawn(QStringLiteral("a\tb")), drawn(QStringLiteral("ab")));
    EXPECT_GT(inked(drawn(QStringLiteral("&H"))).width(),
              inked(drawn(QStringLiteral("H"))).width() + 10)
        << "an ampersand is a sign like any other";
    const QRect one = inked(drawn(QStringLiteral("H")));
    const QRect two = inked(drawn(QStringLiteral("H\nH")));
    EXPECT_EQ(two.width(), one.width());
    EXPECT_GT(two.height(), 2 * one.height());
}

TEST(Shapes, EmptyTextShowsOnlyItsFrameAndFamiliesDiffer) {
    QImage image = blankCanvas();
    drawShape(image, text(QString()), true);
    EXPECT_FALSE(inked(image).isEmpty());
    drawShape(image, text(QString()), false);
    EXPECT_TRUE(inked(image).isEmpty());

    Stroke wide = text(QStringLiteral("iii"));
    drawShape(image, wide, false);
    const QRect narrow = inked(image);
    wide.fontFamily = QStringLiteral("DejaVu Sans Mono");
    drawShape(image, wide, false);
    EXPECT_GT(inked(image).width(), narrow.width() + 10) << "another family";
}

// Neither the language of the user interface nor the resolution that a frame's file names.
TEST(Shapes, TextIsTheSameWhateverTheSurroundings) {
    QImage expected = blankCanvas();
    drawShape(expected, text(QStringLiteral("Hxg\nab")), false);
    ASSERT_FALSE(inked(expected).isEmpty());
    EXPECT_NEAR(inked(expected).left(), 100, 8);

    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    QImage mirrored = blankCanvas();
    drawShape(mirrored, text(QStringLiteral("Hxg\nab")), false);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(mirrored, expected);

    QImage frame = blankCanvas();
    frame.setDotsPerMeterX(12000);
    frame.setDotsPerMeterY(12000);
    QImage canvas;
    Stroke eraser = shape(Tool::Eraser, {10, 10}, {20, 20});
    prepareStrokeImage(canvas, eraser, frame);
    drawShape(canvas, eraser, false); // no longer shares the frame's pixels
    Stroke written = text(QStringLiteral("Hxg\nab"));
    prepareStrokeImage(canvas, written, frame);
    drawShape(canvas, written, false);
    EXPECT_EQ(inked(canvas), inked(expected));

    Stroke faint = shape(Tool::Line, {100, 500}, {900, 500});
    faint.points[0].opacity = std::nanf("");
    drawShape(canvas, faint, true);
    EXPECT_TRUE(inked(canvas).isEmpty());
}

TEST(StrokeImage, IsPreparedByTool) {
    QImage frame = blankCanvas();
    frame.fill(QColor(1, 2, 3, 200));
    Stroke stroke = shape(Tool::Brush, {10, 10}, {20, 20});
    stroke.lastDrawnIndex = 5;
    QImage image;
    prepareStrokeImage(image, stroke, frame);
    EXPECT_EQ(stroke.lastDrawnIndex, 0);
    const uchar expected[4] = {200, 40, 10, 0};
    EXPECT_TRUE(std::equal(expected, expected + 4, image.constScanLine(700)));
    stroke.tool = Tool::Eraser;
    prepareStrokeImage(image, stroke, frame);
    EXPECT_EQ(image, frame);
    EXPECT_TRUE(strokeReplacesFrame(stroke));
    stroke.tool = Tool::Transform;
    prepareStrokeImage(image, stroke, frame);
    EXPECT_EQ(image, blankCanvas());
    EXPECT_TRUE(strokeReplacesFrame(stroke));
    EXPECT_EQ(frame.pixelColor(5, 5), QColor(1, 2, 3, 200));
    stroke.tool = Tool::Eraser; // over a frame without a picture
    prepareStrokeImage(image, stroke, {});
    EXPECT_EQ(image, blankCanvas());
    for (const Tool tool : {Tool::Pencil, Tool::Brush, Tool::Text, Tool::Rectangle}) {
        stroke.tool = tool;
        EXPECT_FALSE(strokeReplacesFrame(stroke)) << numberOf(tool);
    }
}

TEST(StrokeImage, UpdatesOnlyWhatIsNew) {
    Stroke stroke = shape(Tool::Pencil, {100, 100}, {150, 100}, 8);
    QImage image;
    prepareStrokeImage(image, stroke, {});
    stroke.dirty = true;
    EXPECT_TRUE(updateStrokeImage(image, stroke).contains(QRect(96, 96, 50, 8)));
    EXPECT_FALSE(stroke.dirty);
    EXPECT_EQ(stroke.lastDrawnIndex, 1);
    EXPECT_EQ(updateStrokeImage(image, stroke), QRect());
    stroke.points.push_back({8, 1.0F, 1.0F, 600, 600});
    stroke.points.push_back({8, 1.0F, 1.0F, 605, 600});
    stroke.lastDrawnIndex = 2;
    EXPECT_FALSE(updateStrokeImage(image, stroke).intersects(QRect(90, 90, 60, 60)));

    stroke.points.clear();
    EXPECT_EQ(updateStrokeImage(image, stroke), QRect());
    EXPECT_EQ(stroke.lastDrawnIndex, 0);
    Stroke written = text(QString());
    prepareStrokeImage(image, written, {});
    EXPECT_FALSE(updateStrokeImage(image, written).isEmpty());
    EXPECT_FALSE(inked(image).isEmpty()) << "what is being typed shows its frame";
}

TEST(Png, RoundTripIsLosslessAlsoUnderAlphaZero) {
    QImage image = blankCanvas();
    for (int i = 0; i < 1000; ++i)
        image.setPixelColor((i * 37) % 1024, (i * 91) % 1024, QColor(i % 256, 7, 99, i % 256));
    QByteArray bytes("rubbish");
    imageToPng(image, bytes);
    QImage back;
    ASSERT_TRUE(pngToImage(bytes, back));
    EXPECT_EQ(back.format(), QImage::Format_RGBA8888);
    EXPECT_EQ(back, image);
    imageToPng(QImage(), bytes);
    EXPECT_TRUE(bytes.isEmpty());
}

TEST(Png, RefusesOtherSizesAndDamage) {
    QByteArray bytes;
    QImage small(64, 64, QImage::Format_RGBA8888);
    small.fill(Qt::red);
    imageToPng(small, bytes);
    EXPECT_EQ(pngHeaderSize(bytes), QSize(64, 64));
    QImage image = blankCanvas();
    EXPECT_FALSE(pngToImage(bytes, image));
    EXPECT_TRUE(image.isNull());

    imageToPng(blankCanvas(), bytes);
    QByteArray huge = bytes;
    huge.replace(16, 8, QByteArray("\0\0\xea\x60\0\0\xea\x60", 8)); // claims 60000 x 60000
    EXPECT_FALSE(pngToImage(huge, image));
    EXPECT_EQ(pngHeaderSize(QByteArray("\x89PNG")), QSize());
    EXPECT_EQ(pngHeaderSize(bytes.left(23)), QSize());
    EXPECT_FALSE(pngToImage({}, image));
}
