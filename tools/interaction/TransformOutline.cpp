// The rectangle of the transform tool: how it is kept and how it is shown.
#include "node/BaseNode.h"
#include "tools/interaction/TransformContext.h"
#include "tools/interaction/ViewMeasure.h"

#include <QTransform>
#include <algorithm>
#include <maya/M3dView.h>
#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MUIDrawManager.h>

#ifdef __APPLE__
#include <OpenGL/gl.h>
#else
#ifdef _WIN32
#include <windows.h>
#endif
#include <GL/gl.h>
#endif

namespace vellum {

void TransformContext::setSelection(QPoint first, QPoint opposite) {
    corners_ = {first, QPoint(opposite.x(), first.y()), opposite, QPoint(first.x(), opposite.y())};
}

// The first corner becomes the upper left one.
void TransformContext::normaliseSelection() {
    const QPoint a = corners_[0];
    const QPoint b = corners_[2];
    setSelection({std::min(a.x(), b.x()), std::max(a.y(), b.y())},
                 {std::max(a.x(), b.x()), std::min(a.y(), b.y())});
}

TransformContext::Corners TransformContext::outline() const {
    const QPoint centre((corners_[0].x() + corners_[2].x()) / 2,
                        (corners_[0].y() + corners_[2].y()) / 2);
    QTransform matrix;
    matrix.translate(centre.x(), centre.y());
    matrix.rotate(-static_cast<double>(state_.rotation)); // y goes up
    matrix.scale(static_cast<double>(scaleX_), static_cast<double>(scaleY_));
    matrix.translate(-centre.x(), -centre.y());
    Corners result;
    std::transform(corners_.begin(), corners_.end(), result.begin(),
                   [&](const QPoint& corner) { return matrix.map(corner) + viewOffset_; });
    return result;
}

void TransformContext::showOutline() {
    const Corners corners = isTransforming() ? outline() : corners_;
    if (drawManager_) {
        drawManager_->beginDrawable();
        drawManager_->setLineWidth(1.0F);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const QPoint& from = corners[i];
            const QPoint& to = corners[(i + 1) % corners.size()];
            drawManager_->line2d(MPoint(from.x(), from.y()), MPoint(to.x(), to.y()));
        }
        drawManager_->endDrawable();
    }
    if (isActiveViewViewport2() || isTransforming()) {
        // The node shows it at every redraw, also when nothing happens to the tool.
        BaseNode* worked = node();
        ViewMapping mapping;
        if (!worked || !activeViewMapping(mapping))
            return;
        TransformDisplay display{camera_, mapping.width, mapping.height, {}};
        std::transform(corners.begin(), corners.end(), display.corners.begin(),
                       [](const QPoint& corner) { return corner + QPoint(1, 1); });
        worked->setTransformDisplay(display);
        worked->forceRedraw();
        return;
    }
    toggleXorOutline(corners);
}

void TransformContext::eraseOutline() {
    if (xorDrawn_)
        toggleXorOutline(xorCorners_);
}

// Drawn a second time with the same corners, it is gone.
void TransformContext::toggleXorOutline(const Corners& corners) {
    xorDrawn_ = !xorDrawn_;
    xorCorners_ = corners;
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status != MS::kSuccess)
        return;
    view.beginXorDrawing();
    glBegin(GL_LINE_LOOP);
    for (const QPoint& corner : corners)
        glVertex2i(corner.x(), corner.y());
    glEnd();
    view.endXorDrawing();
}

} // namespace vellum
