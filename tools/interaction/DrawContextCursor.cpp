// Size and opacity drags of the drawing tool, with what they show.
#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "tools/gestures/AdjustMarker.h"
#include "tools/interaction/DrawContext.h"
#include "tools/interaction/DrawManagerScope.h"
#include "tools/interaction/ViewMeasure.h"
#include "tools/raster/Stroke.h"

#include <maya/M3dView.h>
#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MQtUtil.h>

namespace vellum {

namespace {

const MColor kLight(1.0F, 1.0F, 1.0F);
const MColor kDark(0.0F, 0.0F, 0.0F);
const MColor kBehindNumber(0.0F, 0.0F, 0.0F, 0.8F);

// Light beside dark: one of them is seen over whatever lies below, and neither covers the other.
void drawMarker(MHWRender::MUIDrawManager& manager, const AdjustMarker& marker) {
    const MPoint centre(marker.centre.x(), marker.centre.y());
    const int boxSize[] = {static_cast<int>(marker.box.width()),
                           static_cast<int>(marker.box.height())};
    manager.beginDrawable();
    manager.setLineWidth(static_cast<float>(marker.lineWidth));
    manager.setColor(kDark);
    manager.circle2d(centre, marker.outerRadius());
    manager.setColor(kLight);
    manager.circle2d(centre, marker.radius);
    manager.setFontSize(static_cast<unsigned>(marker.fontSize));
    manager.text2d(MPoint(marker.box.center().x(), marker.box.top()), toMaya(marker.number),
                   MHWRender::MUIDrawManager::kCenter, boxSize, &kBehindNumber);
    manager.endDrawable();
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
    cursorRadius_ = sizeCursorRadius();
    drawSizeCursor();
}

// The draw manager starts anew with each event; only what lies straight on the screen is taken
// back.
void DrawContext::eraseSizeCursor() {
    if (drawManager_)
        legacyCursor_.forget();
    else
        legacyCursor_.erase();
}

void DrawContext::drawSizeCursor() {
    const int value = adjusting_.option() == AdjustDrag::Option::Opacity
                          ? toolOpacity(adjustedTool_)
                          : toolSize(adjustedTool_);
    const AdjustMarker marker =
        adjustMarker(adjusting_, value, cursorRadius_, activeViewSize(), MQtUtil::dpiScale(1.0F));
    if (drawManager_)
        drawMarker(*drawManager_, marker);
    else
        legacyCursor_.draw(marker);
}

} // namespace vellum
