// The colour of what cannot be seen. Where a picture is shown larger or smaller than it is, colours
// are mixed with those of neighbouring pixels, transparent ones included: black there would draw a
// dark line along every hard edge. So the transparent pixels around the visible ones get their
// colour. No pixel that can be seen changes.
#pragma once

#include <QImage>
#include <QRect>

namespace vellum {

/// How far from a visible pixel a transparent one still gets its colour, counted along rows and
/// columns. Pictures shown at a quarter of their size mix no further.
inline constexpr int kFringe = 8;

/// Brings the colours around up to date after `changed` was painted; a transparent pixel with
/// nothing visible near it becomes black. A pixel gets the colour of the nearest visible one, of
/// several the greatest as a number: that depends on the picture alone, so done in parts it is the
/// same as done at once. `image`: Format_RGBA8888.
///
/// Returns the rectangle in which pixels may have changed: `changed` and the fringe around it.
QRect colorFringe(QImage& image, const QRect& changed);

} // namespace vellum
