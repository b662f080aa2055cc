// A stroke in progress: what the tools fill, what the document shows and merges. A plain value; its
// pixels live in a stroke image beside it (StrokeImage.h says how that image is prepared).
#pragma once

#include "plugin/base/Tool.h"
#include "tools/raster/RegionTransform.h"
#include "tools/raster/StrokePoint.h"

#include <QColor>
#include <QString>

#include <vector>

namespace vellum {

/// Side of every frame and stroke image: kCanvasSize x kCanvasSize, Format_RGBA8888, straight
/// alpha, pixel (0, 0) at the top left.
inline constexpr int kCanvasSize = 1024;

struct Stroke {
    Tool tool = Tool::Brush;
    QColor color; ///< flat colour of the whole stroke; its alpha is not used
    std::vector<StrokePoint> points;
    QString fontFamily;     ///< text only
    QString text;           ///< text only
    RegionTransform region; ///< region transform only; it has no points
    bool dirty = false;     ///< changed since the stroke image was last brought up to date

    /// Freehand: index of the last point already in the stroke image.
    int lastDrawnIndex = 0;
};

} // namespace vellum
