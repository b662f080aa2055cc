// What an adjusting drag shows at the place where it began: a ring of the tool's size, and the
// number that changes. View pixels, origin at the bottom left.
#pragma once

#include "tools/gestures/AdjustDrag.h"

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

namespace vellum {

struct AdjustMarker {
    QPointF centre;
    double radius = 0.0;    ///< of the light line; the dark one lies around it
    double lineWidth = 1.0; ///< of each of the two
    QString number;
    int fontSize = 0; ///< view pixels
    QRectF box;       ///< dark, behind the number; wholly in the view if it fits

    double outerRadius() const { return radius + lineWidth; }
};

/// `scale`: pixels of the view for one of an ordinary screen.
AdjustMarker adjustMarker(const AdjustDrag& drag, int value, double radius, QSize view,
                          double scale);

} // namespace vellum
