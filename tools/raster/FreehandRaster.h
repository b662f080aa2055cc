// Pencil, brush and eraser: points in, alpha out. Only the alpha byte of the stroke image is ever
// written; its colour was filled in when the stroke began. Main thread only (shared stamp).
#pragma once

#include "plugin/base/Tool.h"
#include "tools/raster/StrokePoint.h"

#include <QImage>
#include <QRect>

#include <vector>

namespace vellum {

/// Rasterises every segment between consecutive points from `fromIndex` to the end with the rule of
/// the tool. Pixels outside the image are dropped. Does nothing with
/// fewer than 2 points, with `fromIndex` at or past the last point, or with another tool.
///
/// `strokeImage`: Format_RGBA8888, at most kCanvasSize on a side. Returns a rectangle that holds
/// every pixel touched, clipped to the image; empty when none was.
QRect drawFreehandSegments(QImage& strokeImage, const std::vector<StrokePoint>& points,
                           int fromIndex, Tool tool);

} // namespace vellum
