// What the tests of the rasteriser share: points, and a look at single pixels.
#pragma once

#include "tools/raster/StrokePoint.h"

#include <QImage>

namespace pixels {

inline vellum::StrokePoint point(int x, int y, int width, float opacity = 1.0F) {
    return {width, opacity, 1.0F, x, y};
}

inline int alpha(const QImage& image, int x, int y) {
    return image.constScanLine(y)[4 * x + 3];
}

} // namespace pixels
