// The brush's soft thick line.
//
// The line is walked pixel by pixel along its longer axis. At every step a soft dab is placed at
// the two pixels that straddle the ideal line, weighted by their nearness; the end points carry
// half weight, so that joined segments add up to one. A dab is additive with a ceiling: where it
// covers, alpha = min(ceiling, alpha + int(cell x weight)), and only when that is a rise; the
// ceiling is int(opacity x 255). The dab at pixel (x, y) covers the columns x - r to x + r, cut
// down to whole ones, and rows alike, r = width / 2. Opacity changes linearly with the distance
// from the start.
#pragma once

#include "tools/raster/AlphaPlane.h"
#include "tools/raster/StrokePoint.h"

namespace vellum {

/// Width and opacity are `from.width` (2 or more) and from.opacity to to.opacity. `startDab` puts a
/// full dab at the start point first, of the line's own soft stamp, with the opacity as weight.
void drawSoftLine(const AlphaPlane& plane, const StrokePoint& from, const StrokePoint& to,
                  bool startDab);

/// Radius and opacity a soft stamp is built with: brushes thinner than 20 pixels get a pixel more
/// and 0.4 of the opacity, which keeps them from looking heavier than wide ones.
struct SoftStampSize {
    float radius;
    float opacity;
};
SoftStampSize softStampSize(int width, float opacity);

} // namespace vellum
