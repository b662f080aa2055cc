// The rectangle of the transform tool: how it is kept and how it is shown.
#include "node/BaseNode.h"
#include "plugin/session/Cameras.h"
#include "tools/interaction/TransformContext.h"
#include "tools/interaction/ViewMeasure.h"

#include <QTransform>
#include <algorithm>
#include <maya/M3dView.h>
#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MUIDrawManager.h>
#include <utility>

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

void TransformContext::fitToRegion() {
    const QRect& region = state_.region;
    setSelection(imageToView(region.topLeft(), mapping_).toPoint(),
                 imageToView(region.bottomRight() + QPoint(1, 1), mapping_).toPoint());
}

// The same place of the drawing, in the pixels of the active view as it is now: its size may have
// changed, the camera's 2D pan and zoom, or it is another view of the camera.
void TransformContext::followView() {
    ViewMapping now;
    if (camera_.isEmpty() || currentCamera() != camera_ || !activeViewMapping(now) ||
        now == mapping_)
        return;
    const ViewMapping before = std::exchange(mapping_, now);
    if (isTransforming()) {
        fitToRegion();
        viewOffset_ =
            (QPointF(state_.offset.x(), -state_.offset.y()) * viewPixelsPerImagePixel(mapping_))
                .toPoint();
    } else {
        const auto moved = [&](const QPoint& corner) {
            return imageToView(viewToImagePoint(corner, before), now).toPoint();
        };
        setSelection(moved(corners_[0]), moved(corners_[2]));
    }
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

// The legacy renderer gets a line of its own only while the rectangle is dragged: everything else
// draws the view anew, and with it whatever lies straight on the screen goes.
void TransformContext::showOutline() {
    followView();
    const Corners corners = isTransforming() ? outline() : corners_;
    const bool dragged = dragging_ == Dragging::Select;
    if (dragged && !isActiveViewViewport2()) {
        toggleXorOutline(corners);
        return;
    }
    if (drawManager_) {
        drawManager_->beginDrawable();
        drawManager_->setLineWidth(1.0F);
        drawManager_->setColor(MColor(1.0F, 1.0F, 0.0F)); // that of the node's line
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const QPoint& from = corners[i];
            const QPoint& to = corners[(i + 1) % corners.size()];
            drawManager_->line2d(MPoint(from.x(), from.y()), MPoint(to.x(), to.y()));
        }
        drawManager_->endDrawable();
    }
    // The node shows it at every redraw, also when nothing happens to the tool.
    BaseNode* worked = node();
    if (!worked || mapping_.side <= 0.0)
        return;
    if (!dragged && !isTransforming() && corners[0] == corners[2]) {
        worked->clearTransformDisplay(); // a click selects the whole image
        return;
    }
    TransformDisplay display{camera_, std::nullopt, {}};
    if (isTransforming())
        display.frame = frame_;
    std::transform(corners.begin(), corners.end(), display.corners.begin(),
                   [this](const QPoint& corner) { return viewToImagePoint(corner, mapping_); });
    worked->setTransformDisplay(display);
    worked->forceRedraw();
}

void TransformContext::eraseOutline() {
    if (xorDrawn_)
        toggleXorOutline(xorCorners_);
}

// No outline in any view. At once: what is drawn next may go straight to the screen.
void TransformContext::forgetOutline() {
    BaseNode* worked = node();
    const bool shown = worked && (xorDrawn_ || worked->transformDisplay());
    eraseOutline();
    if (!shown)
        return;
    worked->clearTransformDisplay();
    worked->forceRedraw();
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status == MS::kSuccess && !isActiveViewViewport2())
        view.refresh(false, true);
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
