// Between the pixels of a view and the pixels of the drawing.
//
// View pixels are device pixels, origin at the bottom left, y up. Image pixels have their origin at
// the top left of the canvas, y down.
#pragma once

#include <QPoint>
#include <QPointF>

namespace vellum {

/// Where the square drawing lies in a view.
struct ViewMapping {
    int width = 0; ///< of the view
    int height = 0;
    double panX = 0.0; ///< view centre minus centre of the square, view pixels
    double panY = 0.0;
    double side = 0.0; ///< of the square on which the canvas is displayed, view pixels

    bool operator==(const ViewMapping& other) const {
        return width == other.width && height == other.height && panX == other.panX &&
               panY == other.panY && side == other.side;
    }
    bool operator!=(const ViewMapping& other) const { return !(*this == other); }
};

/// Nearest image pixel, halves upward (also below zero). Points off the square give pixels outside
/// the canvas. A square without extent shows nothing: every point is then far outside.
QPoint viewToImage(QPointF viewPoint, const ViewMapping& mapping);

/// The same, not rounded.
QPointF viewToImagePoint(QPointF viewPoint, const ViewMapping& mapping);

/// The view point that shows the given image point; the exact inverse, not rounded.
QPointF imageToView(QPointF imagePoint, const ViewMapping& mapping);

/// View pixels for one image pixel.
double viewPixelsPerImagePixel(const ViewMapping& mapping);

} // namespace vellum
