#include "tools/raster/FreehandRaster.h"

#include "plugin/base/ToolTable.h"
#include "tools/raster/AlphaPlane.h"
#include "tools/raster/BrushStamp.h"
#include "tools/raster/SoftLine.h"
#include "tools/raster/Stroke.h"

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

constexpr int kLargestWidth = 100;
// A line is not walked further out than any view reaches.
constexpr int kFar = 1 << 20;

std::uint8_t toByte(float value) {
    return static_cast<std::uint8_t>(static_cast<int>(std::clamp(value, 0.0F, 1.0F) * 255.0F));
}

void placeHardDab(const AlphaPlane& plane, const BrushStamp& stamp, int x, int y, int half,
                  bool erase) {
    const int left = x - half - 1;
    const int top = y - half - 1;
    const int firstRow = std::max(top, 0);
    const int lastRow = std::min(y + half, plane.height() - 1);
    for (int row = firstRow; row <= lastRow; ++row) {
        const BrushStamp::Span span = stamp.span(row - top);
        const int first = std::max(left + span.first, 0);
        const int last = std::min({left + span.last, x + half, plane.width() - 1});
        const std::uint8_t* cells = stamp.row(row - top) - left;
        std::uint8_t* alpha = plane.row(row);
        for (int column = first; column <= last; ++column) {
            std::uint8_t& value = alpha[column * AlphaPlane::kStep];
            if (erase)
                value = cells[column] > 0 ? 0 : value;
            else
                value = std::max(value, cells[column]);
        }
    }
}

// The line of one pixel. The leftmost column stays free: drawings rely on that margin.
void placePixel(const AlphaPlane& plane, int x, int y, float opacity, bool erase) {
    if (x < 1 || !plane.contains(x, y))
        return;
    if (erase)
        plane.at(x, y) = 0;
    else
        plane.raise(x, y, toByte(opacity));
}

// Calls visit(x, y, opacity) at every pixel of Bresenham's line. The opacity moves by an equal
// share at every step along an axis, so twice on a diagonal step.
template <typename Visit>
void walkLine(const StrokePoint& from, const StrokePoint& to, const Visit& visit) {
    const int dx = std::abs(to.x - from.x);
    const int dy = std::abs(to.y - from.y);
    const int stepX = from.x < to.x ? 1 : -1;
    const int stepY = from.y < to.y ? 1 : -1;
    const float share =
        dx + dy > 0 ? (to.opacity - from.opacity) / static_cast<float>(dx + dy) : 0.0F;
    int error = (dx > dy ? dx : -dy) / 2;
    int x = from.x;
    int y = from.y;
    float opacity = from.opacity;
    for (;;) {
        visit(x, y, opacity);
        if (x == to.x && y == to.y)
            return;
        const int before = error;
        if (before > -dx) {
            error -= dy;
            x += stepX;
            opacity += share;
        }
        if (before < dy) {
            error += dx;
            y += stepY;
            opacity += share;
        }
    }
}

void drawSteppedLine(const AlphaPlane& plane, const StrokePoint& from, const StrokePoint& to,
                     bool erase) {
    const int width = from.width;
    if (width == 1) {
        walkLine(from, to,
                 [&](int x, int y, float opacity) { placePixel(plane, x, y, opacity, erase); });
        return;
    }
    static BrushStamp stamp;
    const int half = (width + 1) / 2;
    const float radius = static_cast<float>(width) * 0.5F;
    const int spacing = static_cast<int>(static_cast<float>(width) * 0.1F);
    int counter = spacing;
    walkLine(from, to, [&](int x, int y, float opacity) {
        if (++counter < spacing)
            return;
        counter = 0;
        if (x + half < 0 || y + half < 0 || x - half > plane.width() || y - half > plane.height())
            return;
        stamp.build(BrushStamp::Mode::Hard, radius, opacity);
        placeHardDab(plane, stamp, x, y, half, erase);
    });
}

// Xiaolin Wu's antialiased line.
void drawThinLine(const AlphaPlane& plane, const StrokePoint& from, const StrokePoint& to) {
    const float opacity = std::clamp(from.opacity, 0.0F, 1.0F);
    plane.raise(from.x, from.y, toByte(opacity));
    const bool steep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
    int major0 = steep ? from.y : from.x;
    int minor0 = steep ? from.x : from.y;
    int major1 = steep ? to.y : to.x;
    int minor1 = steep ? to.x : to.y;
    if (major0 > major1) {
        std::swap(major0, major1);
        std::swap(minor0, minor1);
    }
    const float gradient = major1 == major0 ? 0.0F
                                            : static_cast<float>(minor1 - minor0) /
                                                  static_cast<float>(major1 - major0);
    const auto plot = [&](int major, float across, float share) {
        const float below = std::floor(across);
        const float fraction = across - below;
        const int minor = static_cast<int>(below);
        const std::uint8_t near = toByte((1.0F - fraction) * share * opacity);
        const std::uint8_t far = toByte(fraction * share * opacity);
        plane.raise(steep ? minor : major, steep ? major : minor, near);
        plane.raise(steep ? minor + 1 : major, steep ? major : minor + 1, far);
    };
    constexpr float kEndGap = 0.5F; // end points are pixel centres
    plot(major0, static_cast<float>(minor0), kEndGap);
    plot(major1, static_cast<float>(minor1), kEndGap);
    for (int major = major0 + 1; major < major1; ++major)
        plot(major, static_cast<float>(minor0) + gradient * static_cast<float>(major - major0),
             1.0F);
}

StrokePoint bounded(StrokePoint point) {
    point.width = std::clamp(point.width, 1, kLargestWidth);
    // What is not a tool fails every comparison.
    point.opacity = point.opacity > 0.0F ? std::min(point.opacity, 1.0F) : 0.0F;
    point.x = std::clamp(point.x, -kFar, kFar);
    point.y = std::clamp(point.y, -kFar, kFar);
    return point;
}

// Segment `i` of a stroke.
void drawSegment(const AlphaPlane& plane, ToolKind kind, const StrokePoint& from,
                 const StrokePoint& to, int i) {
    switch (kind) {
    case ToolKind::Stepped:
    case ToolKind::Erasing:
        drawSteppedLine(plane, from, to, kind == ToolKind::Erasing);
        return;
    case ToolKind::Soft:
        if (from.width == 1)
            drawThinLine(plane, from, to);
        else
            drawSoftLine(plane, from, to, i == 0);
        return;
    case ToolKind::Shape:
    case ToolKind::Text:
    case ToolKind::Region:
        return; // not drawn by hand
    }
}

QRect reachOf(const StrokePoint& a, const StrokePoint& b) {
    const int reach = (a.width + 1) / 2 + 2;
    return QRect(QPoint(std::min(a.x, b.x) - reach, std::min(a.y, b.y) - reach),
                 QPoint(std::max(a.x, b.x) + reach, std::max(a.y, b.y) + reach));
}

} // namespace

QRect drawFreehandSegments(QImage& strokeImage, const std::vector<StrokePoint>& points,
                           int fromIndex, Tool tool) {
    const int count = static_cast<int>(points.size());
    const int first = std::max(fromIndex, 0);
    const ToolKind kind = kindOf(tool);
    if (count < 2 || first >= count - 1 || !isFreehand(kind))
        return {};
    if (strokeImage.width() > kCanvasSize || strokeImage.height() > kCanvasSize)
        return {};
    const AlphaPlane plane(strokeImage);
    const QRect canvas = strokeImage.rect();
    QRect touched;
    for (int i = first; i + 1 < count; ++i) {
        const StrokePoint from = bounded(points[static_cast<std::size_t>(i)]);
        const StrokePoint to = bounded(points[static_cast<std::size_t>(i) + 1]);
        const QRect reach = reachOf(from, to).intersected(canvas);
        if (reach.isEmpty())
            continue;
        touched |= reach;
        drawSegment(plane, kind, from, to, i);
    }
    return touched;
}

} // namespace vellum
