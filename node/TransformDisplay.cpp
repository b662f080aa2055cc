#include "node/TransformDisplay.h"

#include <algorithm>

namespace vellum {

std::array<QPoint, 4> TransformDisplay::cornersIn(const GateFit& fit) const {
    const ViewMapping mapping = viewMappingOf(fit);
    std::array<QPoint, 4> result;
    // Line ends are counted from one, the tools' pixels from zero.
    std::transform(corners.begin(), corners.end(), result.begin(), [&](const QPointF& corner) {
        return imageToView(corner, mapping).toPoint() + QPoint(1, 1);
    });
    return result;
}

} // namespace vellum
