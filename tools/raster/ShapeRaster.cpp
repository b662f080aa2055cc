#include "tools/raster/ShapeRaster.h"

#include "plugin/base/Owned.h"
#include "plugin/base/ToolTable.h"

#include <QFont>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

constexpr double kHeadAngle = 0.62831855; // a fifth of pi
constexpr double kHeadLength = 40.0;
constexpr double kFullHeadShaft = 200.0; // from this length on the head no longer grows
constexpr int kTextBoxPen = 2;

QPoint toPoint(const StrokePoint& point) {
    return {point.x, point.y};
}

int nearest(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

QRect around(const QPoint& a, const QPoint& b) {
    return QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                 QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
}

QPen shapePen(const Stroke& stroke) {
    const StrokePoint& first = stroke.points.front();
    QColor color = stroke.color;
    const float opacity = first.opacity > 0.0F ? std::min(first.opacity, 1.0F) : 0.0F; // or NaN
    color.setAlpha(static_cast<int>(opacity * 255.0F));
    QPen pen;
    pen.setWidth(std::clamp(first.width, 1, 100));
    pen.setColor(color);
    return pen;
}

QRect paintArrow(QPainter& painter, QPoint tail, QPoint tip) {
    const ArrowHead head = arrowHead(tail, tip);
    painter.drawLine(tail, tip);
    painter.drawLine(tip, head.left);
    painter.drawLine(tip, head.right);
    return around(tail, tip).united(around(head.left, head.right));
}

// Returns what was painted, pen widths included.
QRect paintText(QPainter& painter, const Stroke& stroke, QPen pen, bool showTextBox) {
    const StrokePoint& first = stroke.points.front();
    QFont font(owned(stroke.fontFamily)); // Qt keeps a cache of fonts
    font.setPointSize(std::clamp(first.width, 1, 100));
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font);
    // Not as the user interface runs: left stays left.
    painter.setLayoutDirection(Qt::LeftToRight);
    const QString text = stroke.text.isEmpty() ? QStringLiteral(" ") : stroke.text;
    QRect bounds;
    painter.drawText(QRect(first.x, first.y, kCanvasSize, kCanvasSize), Qt::AlignLeft, text,
                     &bounds);
    if (showTextBox) {
        constexpr int pw = kTextBoxPen;
        pen.setWidth(pw);
        painter.setPen(pen);
        painter.drawRect(bounds.x() - 2 * pw, bounds.y() - pw, bounds.width() + 4 * pw,
                         bounds.height() + 3 * pw);
    }
    // Slanted or swash glyphs reach beyond the box that the layout reports.
    const int overhang = QFontMetrics(font).height() + 4 * kTextBoxPen;
    return bounds.adjusted(-overhang, -overhang, overhang, overhang);
}

QPen rounded(QPen pen) {
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

QRect paintShape(QPainter& painter, const Stroke& stroke, const QPen& pen) {
    const QPoint from = toPoint(stroke.points[0]);
    const QPoint to = toPoint(stroke.points[1]);
    QRect bounds = around(from, to);
    switch (stroke.tool) {
    case Tool::Line:
        painter.setPen(rounded(pen));
        painter.drawLine(from, to);
        break;
    case Tool::Arrow:
        painter.setPen(rounded(pen));
        bounds = paintArrow(painter, from, to);
        break;
    case Tool::Ellipse:
        painter.drawEllipse(QRectF(from, to).normalized());
        break;
    case Tool::Rectangle:
        painter.drawRect(QRectF(from, to).normalized());
        break;
    case Tool::Pencil:
    case Tool::Brush:
    case Tool::Eraser:
    case Tool::Text:
    case Tool::Transform:
        return {}; // no shapes
    }
    const int margin = pen.width() + 2; // half the pen, its corners, antialiasing
    return bounds.adjusted(-margin, -margin, margin, margin);
}

} // namespace

ArrowHead arrowHead(QPoint tail, QPoint tip) {
    const double dx = tail.x() - tip.x();
    const double dy = tail.y() - tip.y();
    const double shaft = std::hypot(dx, dy);
    if (shaft == 0.0)
        return {tip, tip};
    const double length =
        shaft < kFullHeadShaft ? kHeadLength * (shaft / kFullHeadShaft) : kHeadLength;
    const auto end = [&](double angle) {
        const double ux = (dx * std::cos(angle) - dy * std::sin(angle)) / shaft;
        const double uy = (dx * std::sin(angle) + dy * std::cos(angle)) / shaft;
        return QPoint(nearest(tip.x() + ux * length), nearest(tip.y() + uy * length));
    };
    return {end(kHeadAngle), end(-kHeadAngle)};
}

QRect drawShape(QImage& strokeImage, const Stroke& stroke, bool showTextBox) {
    strokeImage.fill(Qt::transparent);
    const bool isText = kindOf(stroke.tool) == ToolKind::Text;
    const std::size_t needed = isText ? 1 : 2;
    if (stroke.points.size() < needed)
        return {};
    QPainter painter(&strokeImage);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const QPen pen = shapePen(stroke);
    painter.setPen(pen);
    const QRect painted =
        isText ? paintText(painter, stroke, pen, showTextBox) : paintShape(painter, stroke, pen);
    return painted.intersected(strokeImage.rect());
}

} // namespace vellum
