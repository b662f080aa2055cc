#include "tools/gestures/AdjustMarker.h"

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

constexpr double kFontSize = 14.0;
constexpr double kLineWidth = 1.0;
constexpr double kGap = 4.0; ///< between the ring and the box
// Of the font's size. No digit or percent sign of a usual font is wider.
constexpr double kSignWidth = 0.7;
constexpr double kMargins = 0.6;
constexpr double kBoxHeight = 1.4;

/// Within the ring where there is room, else beside it.
QPointF boxCentre(const AdjustMarker& marker, QSizeF box, double gap, int viewWidth) {
    if (marker.radius >= std::hypot(box.width(), box.height()) / 2 + gap)
        return marker.centre;
    const double away = marker.outerRadius() + gap + box.width() / 2;
    const bool fits = marker.centre.x() + away + box.width() / 2 <= viewWidth;
    return marker.centre + QPointF(fits ? away : -away, 0.0);
}

double kept(double low, double length, double limit) {
    return std::max(0.0, std::min(low, limit - length));
}

} // namespace

AdjustMarker adjustMarker(const AdjustDrag& drag, int value, double radius, QSize view,
                          double scale) {
    AdjustMarker marker;
    marker.centre = drag.anchor();
    marker.radius = radius;
    marker.lineWidth = std::max(1.0, std::round(kLineWidth * scale));
    marker.number = QString::number(value);
    if (drag.option() == AdjustDrag::Option::Opacity)
        marker.number += QLatin1Char('%');
    marker.fontSize = std::max(1, static_cast<int>(std::lround(kFontSize * scale)));
    const auto signs = static_cast<double>(marker.number.size());
    const QSizeF box(std::ceil((signs * kSignWidth + kMargins) * marker.fontSize),
                     std::ceil(kBoxHeight * marker.fontSize));
    const QPointF middle = boxCentre(marker, box, kGap * scale, view.width());
    marker.box = QRectF(
        QPointF(std::round(kept(middle.x() - box.width() / 2, box.width(), view.width())),
                std::round(kept(middle.y() - box.height() / 2, box.height(), view.height()))),
        box);
    return marker;
}

} // namespace vellum
