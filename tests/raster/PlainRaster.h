// The freehand rules written down plainly: one table, one loop per dab, no skipping, no tiles.
// Slow, and the yardstick for the real rasteriser, which must give the same bytes.
#pragma once

#include "plugin/base/Tool.h"
#include "tools/raster/StrokePoint.h"

#include <QImage>

#include <vector>

namespace plain {

/// Table of a dab, addressed [column][row]; `center` is the cell on the point.
struct Table {
    int cells[104][104] = {};
    int center = 0;
};
Table hardTable(float radius, float opacity);
Table softTable(float radius, float opacity);

void drawFreehand(QImage& image, const std::vector<vellum::StrokePoint>& points, int from,
                  vellum::Tool tool);

} // namespace plain
