// The rectangle of the transform tool: how it is shown.
#include "node/BaseNode.h"
#include "plugin/session/Cameras.h"
#include "tools/interaction/TransformContext.h"
#include "tools/interaction/ViewMeasure.h"

#include <maya/M3dView.h>
#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MUIDrawManager.h>

namespace vellum {

// The same place of the drawing, in the pixels of the active view as it is now: its size may have
// changed, the camera's 2D pan and zoom, or it is another view of the camera.
void TransformContext::followView() {
    ViewMapping now;
    if (!camera_.isEmpty() && currentCamera() == camera_ && activeViewMapping(now))
        gesture_.follow(now);
}

// The legacy renderer gets a line of its own only while the rectangle is dragged: everything else
// draws the view anew, and with it whatever lies straight on the screen goes.
void TransformContext::showOutline() {
    followView();
    const RegionGesture::Corners corners = gesture_.outline();
    const bool dragged = gesture_.isSelecting();
    if (dragged && !isActiveViewViewport2()) {
        QPolygonF line;
        for (const QPoint& corner : corners)
            line << corner;
        legacyOutline_.draw(line);
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
    if (!worked || gesture_.view().side <= 0.0)
        return;
    if (!dragged && !isTransforming() && gesture_.selectedSize().isNull()) {
        worked->clearTransformDisplay(); // a click selects the whole image
        return;
    }
    TransformDisplay display{camera_, std::nullopt, gesture_.outlineOnImage()};
    if (isTransforming())
        display.frame = frame_;
    worked->setTransformDisplay(display);
    worked->forceRedraw();
}

void TransformContext::eraseOutline() {
    legacyOutline_.erase();
}

// No outline in any view. At once: what is drawn next may go straight to the screen.
void TransformContext::forgetOutline() {
    BaseNode* worked = node();
    const bool shown = worked && (legacyOutline_.isDrawn() || worked->transformDisplay());
    eraseOutline();
    if (!shown)
        return;
    worked->clearTransformDisplay();
    worked->forceRedraw();
    M3dView view;
    if (activeView(view) && !isActiveViewViewport2())
        view.refresh(false, true);
}

} // namespace vellum
