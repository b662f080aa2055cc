// The outline of a region transform, for whoever draws the node.
#pragma once

#include <QPoint>
#include <QString>
#include <array>

namespace vellum {

/// Shown in views of one camera and size.
struct TransformDisplay {
    QString camera;
    int portWidth = 0; ///< device pixels
    int portHeight = 0;
    std::array<QPoint, 4> corners; ///< device pixels of the port, origin at the bottom left

    bool isFor(const QString& shownCamera, int width, int height) const {
        return camera == shownCamera && portWidth == width && portHeight == height;
    }
};

} // namespace vellum
