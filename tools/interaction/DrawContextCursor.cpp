// Size and opacity drags of the drawing tool, with the circle that shows the size.
#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "tools/interaction/DrawContext.h"
#include "tools/interaction/DrawManagerScope.h"
#include "tools/interaction/ViewMeasure.h"
#include "tools/raster/Stroke.h"

#include <maya/M3dView.h>

#include <cmath>

namespace vellum {

namespace {

constexpr int kCircleVertices = 360;
constexpr double kRadiansPerVertex = 0.017453292;

QPolygonF circle(QPointF centre, double radius) {
    QPolygonF line;
    line.reserve(kCircleVertices);
    for (int i = 0; i < kCircleVertices; ++i) {
        const double angle = i * kRadiansPerVertex;
        line << centre + radius * QPointF(std::cos(angle), std::sin(angle));
    }
    return line;
}

} // namespace

// What a tool shows lasts until its next event, and a press is held before it is dragged.
MStatus DrawContext::doHold(MEvent&, MHWRender::MUIDrawManager& drawManager,
                            const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    if (adjusting_.isOn())
        drawSizeCursor();
    return MS::kSuccess;
}

void DrawContext::beginAdjusting(AdjustDrag::Option option, const MEvent& event) {
    adjustedTool_ = settings().activeTool;
    if (!activeNode() || !isTool(adjustedTool_))
        return;
    holdActiveView();
    const bool size = option == AdjustDrag::Option::Size;
    adjusting_.begin(option, size ? toolSize(adjustedTool_) : toolOpacity(adjustedTool_),
                     positionOf(event));
    showSizeCursor();
}

void DrawContext::adjust(const MEvent& event) {
    const int value = adjusting_.valueAt(positionOf(event));
    if (adjusting_.option() == AdjustDrag::Option::Size)
        setToolSize(adjustedTool_, value);
    else
        setToolOpacity(adjustedTool_, value);
    showSizeCursor();
    tell(Change::ToolOptions);
}

// Ends without a release. The cursor goes with the next picture of the view.
void DrawContext::forgetAdjusting() {
    if (!adjusting_.end())
        return;
    legacyCursor_.forget();
    M3dView view;
    if (activeView(view))
        view.refresh();
}

// View pixels.
double DrawContext::sizeCursorRadius() const {
    ViewMapping mapping;
    if (!activeNode() || !activeViewMapping(mapping))
        return 1.0;
    return toolSize(adjustedTool_) * 0.5 * viewPixelsPerImagePixel(mapping);
}

void DrawContext::showSizeCursor() {
    eraseSizeCursor();
    cursorRadius_ = sizeCursorRadius();
    drawSizeCursor();
}

// The draw manager starts anew with each event; only what was drawn by exclusive-or is taken back.
void DrawContext::eraseSizeCursor() {
    if (drawManager_)
        legacyCursor_.forget();
    else
        legacyCursor_.erase();
}

void DrawContext::drawSizeCursor() {
    const QPoint anchor = adjusting_.anchor();
    if (!drawManager_) {
        legacyCursor_.draw(circle(anchor, cursorRadius_));
        return;
    }
    const MPoint at(anchor.x(), anchor.y());
    const int value = adjusting_.option() == AdjustDrag::Option::Opacity
                          ? toolOpacity(adjustedTool_)
                          : toolSize(adjustedTool_);
    drawManager_->beginDrawable();
    drawManager_->setLineWidth(1.0F);
    drawManager_->circle2d(at, cursorRadius_);
    drawManager_->text2d(at, toMaya(QString::number(value)));
    drawManager_->endDrawable();
}

} // namespace vellum
