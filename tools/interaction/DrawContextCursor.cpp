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

#include <cmath>
#include <maya/M3dView.h>

#ifdef __APPLE__
#include <OpenGL/gl.h>
#else
#ifdef _WIN32
#include <windows.h>
#endif
#include <GL/gl.h>
#endif

namespace vellum {

namespace {

constexpr int kDragPerStep = 10; // view pixels of a drag for one unit
constexpr int kCircleVertices = 360;
constexpr double kRadiansPerVertex = 0.017453292;

// Drawn a second time with the same values, the circle is gone.
void drawXorCircle(M3dView& view, double x, double y, double radius) {
    view.beginXorDrawing();
    glBegin(GL_LINE_LOOP);
    for (int i = 0; i < kCircleVertices; ++i) {
        const double angle = i * kRadiansPerVertex;
        glVertex2d(x + radius * std::cos(angle), y + radius * std::sin(angle));
    }
    glEnd();
    view.endXorDrawing();
}

} // namespace

MStatus DrawContext::doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                             const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    doPress(event);
    return MS::kSuccess;
}

MStatus DrawContext::doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                               const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    doRelease(event);
    return MS::kSuccess;
}

MStatus DrawContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                            const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    doDrag(event);
    return MS::kSuccess;
}

// What a tool shows lasts until its next event, and a press is held before it is dragged.
MStatus DrawContext::doHold(MEvent&, MHWRender::MUIDrawManager& drawManager,
                            const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    if (adjusting_ != Adjusting::Nothing)
        drawSizeCursor(cursorRadius_);
    return MS::kSuccess;
}

void DrawContext::beginAdjusting(Adjusting what, const MEvent& event) {
    adjustedTool_ = settings().activeTool;
    if (!activeNode() || !isTool(adjustedTool_))
        return;
    holdActiveView();
    adjusting_ = what;
    startValue_ = what == Adjusting::Size ? toolSize(adjustedTool_) : toolOpacity(adjustedTool_);
    anchor_ = positionOf(event);
    eraseSizeCursor();
    toggleSizeCursor(sizeCursorRadius());
}

void DrawContext::adjust(const MEvent& event) {
    const int value = (positionOf(event).x - anchor_.x) / kDragPerStep + startValue_;
    if (adjusting_ == Adjusting::Size)
        setToolSize(adjustedTool_, value);
    else
        setToolOpacity(adjustedTool_, value);
    eraseSizeCursor();
    toggleSizeCursor(sizeCursorRadius());
    tell(Change::ToolOptions);
}

// Ends without a release. The cursor goes with the next picture of the view.
void DrawContext::forgetAdjusting() {
    if (adjusting_ == Adjusting::Nothing)
        return;
    adjusting_ = Adjusting::Nothing;
    cursorDrawn_ = false;
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status == MS::kSuccess)
        view.refresh();
}

// View pixels.
double DrawContext::sizeCursorRadius() const {
    ViewMapping mapping;
    if (!activeNode() || !activeViewMapping(mapping))
        return 1.0;
    return toolSize(adjustedTool_) * 0.5 * viewPixelsPerImagePixel(mapping);
}

void DrawContext::toggleSizeCursor(double radius) {
    drawSizeCursor(radius);
    cursorDrawn_ = !cursorDrawn_;
    cursorRadius_ = radius;
}

// Only what was drawn by exclusive-or has to be taken back; the draw manager starts anew each time.
void DrawContext::eraseSizeCursor() {
    if (!cursorDrawn_)
        return;
    if (drawManager_)
        cursorDrawn_ = false;
    else
        toggleSizeCursor(cursorRadius_);
}

void DrawContext::drawSizeCursor(double radius) const {
    if (drawManager_) {
        const MPoint anchor(anchor_.x, anchor_.y);
        const int value =
            adjusting_ == Adjusting::Opacity ? toolOpacity(adjustedTool_) : toolSize(adjustedTool_);
        drawManager_->beginDrawable();
        drawManager_->setLineWidth(1.0F);
        drawManager_->circle2d(anchor, radius);
        drawManager_->text2d(anchor, toMaya(QString::number(value)));
        drawManager_->endDrawable();
        return;
    }
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status == MS::kSuccess)
        drawXorCircle(view, anchor_.x, anchor_.y, radius);
}

} // namespace vellum
