// The outline of a region transform, for whoever draws the node.
#pragma once

#include "node/GateFit.h"

#include <QPoint>
#include <QPointF>
#include <QString>

#include <array>
#include <optional>

namespace vellum {

/// Kept in the space of the drawing, so that it follows the picture through every size, pan and
/// zoom of every view that shows it.
struct TransformDisplay {
    QString camera;                 ///< shown in its views only
    std::optional<int> frame;       ///< shown on this frame only; none: on every one
    std::array<QPointF, 4> corners; ///< image pixels

    bool isShown(const QString& viewCamera, int currentFrame) const {
        return camera == viewCamera && frame.value_or(currentFrame) == currentFrame;
    }

    /// The corners in a view: device pixels of the port, origin at the bottom left.
    std::array<QPoint, 4> cornersIn(const GateFit& fit) const;
};

} // namespace vellum
