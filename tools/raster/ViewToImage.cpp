#include "tools/raster/ViewToImage.h"

#include "tools/raster/Stroke.h"

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

// Far outside every canvas, and far from where integer arithmetic on coordinates overflows.
constexpr double kFar = 1.0e6;

int nearest(double value) {
    if (!(value > -kFar))
        return static_cast<int>(-kFar);
    return static_cast<int>(std::floor(std::min(value, kFar) + 0.5));
}

} // namespace

QPointF viewToImagePoint(QPointF viewPoint, const ViewMapping& m) {
    if (!(m.side > 0.0))
        return {-kFar, -kFar};
    const double k = kCanvasSize / m.side;
    return {((m.side - m.width) * 0.5 + (viewPoint.x() + m.panX)) * k,
            (m.height - (viewPoint.y() + m.panY) + (m.side - m.height) * 0.5) * k};
}

QPoint viewToImage(QPointF viewPoint, const ViewMapping& mapping) {
    const QPointF point = viewToImagePoint(viewPoint, mapping);
    return {nearest(point.x()), nearest(point.y())};
}

QPointF imageToView(QPointF imagePoint, const ViewMapping& m) {
    const double scale = viewPixelsPerImagePixel(m);
    const double x = imagePoint.x() * scale - (m.side - m.width) * 0.5 - m.panX;
    const double y = m.height - m.panY + (m.side - m.height) * 0.5 - imagePoint.y() * scale;
    return {x, y};
}

double viewPixelsPerImagePixel(const ViewMapping& m) {
    return m.side / kCanvasSize;
}

} // namespace vellum
