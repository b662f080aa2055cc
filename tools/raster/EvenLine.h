// The soft line of one opacity throughout.
//
// Under one ceiling the order in which dabs are added does not matter, so a few neighbouring pixels
// are taken at a time and given the dabs that reach them, the strongest first, until they are at
// the ceiling: in the middle of a brush that is after two or three of a hundred.
#pragma once

#include "tools/raster/AlphaPlane.h"
#include "tools/raster/SoftWalk.h"

namespace vellum {

/// All steps of the walk; `width` is the brush's, 2 or more, `opacity` 0..1.
void drawEvenLine(const AlphaPlane& plane, const SoftWalk& walk, int width, float opacity);

} // namespace vellum
