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

QPoint viewToImage(QPointF viewPoint, const ViewMapping& m) {
    if (!(m.side > 0.0))
        return {nearest(-kFar), nearest(-kFar)};
    const double k = kCanvasSize / m.side;
    const double x = ((m.side - m.width) * 0.5 + (viewPoint.x() + m.panX)) * k;
    const double y = (m.height - (viewPoint.y() + m.panY) + (m.side - m.height) * 0.5) * k;
    return {nearest(x), nearest(y)};
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
