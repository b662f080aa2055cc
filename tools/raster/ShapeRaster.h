// Line, arrow, ellipse, rectangle and text, painted whole at every update.
#pragma once

#include "tools/raster/Stroke.h"

#include <QImage>
#include <QPoint>
#include <QRect>

namespace vellum {

/// Clears the stroke image to transparent and paints the stroke's shape or text.
/// `showTextBox` frames a text while it is being edited. A shape needs 2 points (press and current
/// position), text 1; with fewer the image is only cleared.
///
/// Returns a rectangle that holds everything painted, clipped to the image.
QRect drawShape(QImage& strokeImage, const Stroke& stroke, bool showTextBox);

/// End points of an arrow's two head strokes, which start at `tip`: 36 degrees to either side of
/// the shaft, 40 pixels long, or a fifth of the shaft when that is shorter than 200 pixels.
struct ArrowHead {
    QPoint left;
    QPoint right;
};
ArrowHead arrowHead(QPoint tail, QPoint tip);

} // namespace vellum
