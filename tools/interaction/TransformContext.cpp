#include "tools/interaction/TransformContext.h"

#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/ActiveNode.h"
#include "tools/interaction/DrawManagerScope.h"
#include "tools/interaction/ViewMeasure.h"

#include <QPoint>
#include <algorithm>
#include <maya/MCursor.h>
#include <utility>

namespace vellum {

namespace {

constexpr float kScalePerPixel = 0.0001F; // and drag event: the farther the pointer, the faster
constexpr float kSmallestScale = 0.1F;
// Last column and row of "the whole image".
constexpr int kWholeImageBound = 1022;

constexpr char kSelectHelp[] = "Select region to transform and press Enter. "
                               "No selection will apply transform to entire image.";
constexpr char kTransformHelp[] = "Translate(LMB)  Rotate(Shift+LMB)  Scale(MMB)  "
                                  "Apply Changes(Enter)  Revert(Backspace)  Cancel(ESC)";

QPoint positionOf(const MEvent& event) {
    short x = 0;
    short y = 0;
    event.getPosition(x, y);
    return {x, y};
}

} // namespace

TransformContext::TransformContext() : handler_(this) {
    setTitleString("Transform Context");
    setImage(":/icons/transform_context_01.png", MPxContext::kImage1);
    setCursor(MCursor::editCursor);
}

TransformContext::~TransformContext() {
    if (pluginState().transformContext == this)
        pluginState().transformContext = nullptr;
    cleanUp();
}

void TransformContext::toolOnSetup(MEvent& event) {
    MPxContext::toolOnSetup(event);
    handler_.activate(true);
    pluginState().transformContext = this;
    cleanUp();
    startSelecting();
}

void TransformContext::toolOffCleanup() {
    pluginState().transformContext = nullptr;
    cleanUp();
    startSelecting();
    handler_.activate(false);
    MPxContext::toolOffCleanup();
}

// Nothing selected, nothing shown.
void TransformContext::startSelecting() {
    forgetOutline();
    mode_ = Mode::Selecting;
    dragging_ = Dragging::Nothing;
    invalid_ = false;
    camera_.clear();
    corners_ = {};
    state_ = {};
    document_.reset();
    nodeHandle_ = MObjectHandle();
    setHelpString(kSelectHelp);
}

MStatus TransformContext::helpStateHasChanged(MEvent&) {
    setHelpString(isTransforming() ? kTransformHelp : kSelectHelp);
    return MS::kSuccess;
}

BaseNode* TransformContext::node() const {
    return nodeHandle_.isValid() ? BaseNode::fromObject(nodeHandle_.object()) : nullptr;
}

Stroke* TransformContext::strokeInProgress() const {
    Stroke* stroke = document_ ? document_->currentStroke() : nullptr;
    return stroke && stroke->tool == tool::kTransform && document_->strokeCamera() == camera_
               ? stroke
               : nullptr;
}

bool TransformContext::begin(bool paste) {
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    if (!document)
        return false;
    nodeHandle_ = MObjectHandle(active->thisMObject());
    document_ = document;
    flipX_ = flipY_ = invalid_ = false;
    added_ = {};
    viewOffset_ = {};
    scaleX_ = scaleY_ = 1.0F;
    state_ = {};
    state_.paste = paste;
    frame_ = currentFrame();
    camera_ = currentCamera();
    if (paste) {
        DrawingTarget target = drawingTarget(*active, camera_);
        added_ = std::move(target.added);
        invalid_ = !target;
    }
    const int layer = document->activeLayerIndex(camera_);
    layer_ = LayerAddress(camera_);
    layer_.bind(*document, layer);
    invalid_ = invalid_ || layer < 0 || !activeViewMapping(mapping_);
    if (invalid_)
        return false;
    if (document->currentCamera() != camera_) {
        active->clearTransformDisplay();
        document->setActiveLayer(camera_, layer, true);
    }
    return true;
}

/// Whether the transform would no longer go where it was begun.
bool TransformContext::hasMoved() const {
    if (!document_ || !node())
        return true;
    const int layer = document_->activeLayerIndex(camera_);
    return layer < 0 || layer != layer_.index(*document_) || currentCamera() != camera_ ||
           currentFrame() != frame_ || (isTransforming() && !strokeInProgress());
}

MStatus TransformContext::doPress(MEvent& event) {
    handler_.watchActiveView();
    if (!activeNode())
        return MS::kFailure;
    const QPoint position = positionOf(event);
    if (isTransforming()) {
        beginPressed(event, position);
        return MS::kSuccess;
    }
    forgetOutline();
    if (!begin(false))
        return MS::kFailure;
    dragging_ = Dragging::Select;
    setSelection(position, position);
    showOutline();
    return MS::kSuccess;
}

void TransformContext::beginPressed(MEvent& event, QPoint position) {
    invalid_ = invalid_ || hasMoved();
    dragging_ = Dragging::Nothing;
    followView();
    switch (event.mouseButton()) {
    case MEvent::kLeftMouse:
        if (event.isModifierShift()) {
            dragging_ = Dragging::Rotate;
            rotateAnchor_ = static_cast<float>(position.x()) - state_.rotation;
        } else {
            dragging_ = Dragging::Translate;
            translateAnchor_ = position - viewOffset_;
        }
        break;
    case MEvent::kMiddleMouse:
        dragging_ = Dragging::Scale;
        scaleAnchorX_ = static_cast<float>(position.x()) - scaleX_;
        scaleAnchorY_ = static_cast<float>(position.y()) - scaleY_;
        break;
    }
}

MStatus TransformContext::doDrag(MEvent& event) {
    if (invalid_ || !node())
        return MS::kFailure;
    const QPoint position = positionOf(event);
    if (isTransforming()) {
        if (dragging_ != Dragging::Nothing && currentCamera() == camera_)
            drag(event, position);
        return MS::kSuccess;
    }
    if (dragging_ != Dragging::Select)
        return MS::kFailure;
    eraseOutline();
    followView();
    setSelection(corners_[0], position);
    showOutline();
    return MS::kSuccess;
}

void TransformContext::drag(MEvent& event, QPoint position) {
    switch (dragging_) {
    case Dragging::Translate:
        viewOffset_ = position - translateAnchor_;
        state_.offset = viewToImage(position, mapping_) - viewToImage(translateAnchor_, mapping_);
        break;
    case Dragging::Rotate:
        state_.rotation = static_cast<float>(position.x()) - rotateAnchor_;
        break;
    case Dragging::Scale:
        scale(event, position);
        break;
    case Dragging::Nothing:
    case Dragging::Select:
        return;
    }
    publish();
}

void TransformContext::scale(MEvent& event, QPoint position) {
    const auto grown = [](float scale, int at, float anchor) {
        return std::max(scale + (static_cast<float>(at) - anchor) * kScalePerPixel, kSmallestScale);
    };
    scaleX_ = grown(scaleX_, position.x(), scaleAnchorX_);
    scaleY_ = event.isModifierShift() ? scaleX_ : grown(scaleY_, position.y(), scaleAnchorY_);
}

// Shows the selection where it is now.
void TransformContext::publish() {
    Stroke* stroke = strokeInProgress();
    BaseNode* worked = node();
    if (!stroke || !worked)
        return;
    state_.plain = false;
    state_.scaleX = flipX_ ? -scaleX_ : scaleX_;
    state_.scaleY = flipY_ ? -scaleY_ : scaleY_;
    stroke->region = state_;
    stroke->dirty = true;
    showOutline();
    worked->forceRedraw();
}

MStatus TransformContext::doRelease(MEvent&) {
    const Dragging dragged = std::exchange(dragging_, Dragging::Nothing);
    if (invalid_) {
        deleteAction();
        return MS::kFailure;
    }
    if (isTransforming())
        return currentCamera() == camera_ ? MS::kSuccess : MS::kFailure;
    if (dragged != Dragging::Select)
        return MS::kSuccess;
    eraseOutline();
    normaliseSelection();
    showOutline();
    return MS::kSuccess;
}

// A rectangle that was dragged stays on its place of the drawing; the time may have moved since.
bool TransformContext::ensureBegun() {
    followView();
    const bool here = camera_.isEmpty() || camera_ == currentCamera();
    return here && begin(false);
}

// The selected pixels, and the outline that fits them exactly. False when the selection is beside
// the drawing.
bool TransformContext::selectRegion() {
    const QRect canvas(0, 0, kCanvasSize, kCanvasSize);
    if (state_.paste) {
        state_.region =
            QRect(viewToImage(corners_[0], mapping_), document_->clipboardImage().size());
    } else if (corners_[0] != corners_[2]) {
        state_.region =
            QRect(viewToImage(corners_[0], mapping_), viewToImage(corners_[2], mapping_)) & canvas;
    } else {
        state_.region = QRect(QPoint(0, 0), QPoint(kWholeImageBound, kWholeImageBound));
    }
    if (state_.region.isEmpty())
        return false;
    fitToRegion();
    return true;
}

bool TransformContext::beginTransform() {
    normaliseSelection();
    if (hasMoved() || !selectRegion())
        return false;
    state_.setUp = true;
    state_.plain = state_.paste;
    if (!document_->beginTransform(camera_, state_))
        return false;
    eraseOutline();
    dragging_ = Dragging::Nothing;
    mode_ = Mode::Transforming;
    setHelpString(kTransformHelp);
    showOutline();
    node()->forceRedraw();
    return true;
}

void TransformContext::completeAction() {
    if (isTransforming()) {
        apply();
        return;
    }
    if (!ensureBegun() || !beginTransform())
        deleteAction();
}

void TransformContext::apply() {
    if (hasMoved() || !script::execute(command::commitStroke(camera_, added_.layerIndex(*document_),
                                                             added_.hasFrame()),
                                       true, true)) {
        cleanUp();
    }
    added_ = {};
    startSelecting();
    script::execute(command::transformDeferred());
}

void TransformContext::deleteAction() {
    cleanUp();
    startSelecting();
    script::execute(command::transformDeferred());
}

void TransformContext::abortAction() {
    cleanUp();
    startSelecting();
    script::execute(command::drawDeferred());
}

// Puts everything back as it was before the transform was begun.
void TransformContext::cleanUp() {
    // The node may have been deleted: it comes back, with its document, when that is undone.
    if (const auto document = document_) {
        const ChangeGroup group;
        if (strokeInProgress())
            document->discardStroke();
        added_.takeBackUntouched(*document);
        if (BaseNode* worked = node())
            worked->forceRedraw();
    }
    added_ = {};
}

void TransformContext::timeChanged() {
    BaseNode* worked = node();
    if (!isTransforming() || !worked)
        return;
    if (hasMoved())
        worked->clearTransformDisplay();
    else
        showOutline();
}

// --- Actions of the context menu -----------------------------------------------------------------

bool TransformContext::canPaste() const {
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    return document && !document->clipboardImage().isNull() && !clipboard_.isEmpty();
}

// Begins the transform of what is selected; the clipboard gets it when it is copied.
bool TransformContext::lift(bool copy, bool cut) {
    if (isTransforming() || !ensureBegun())
        return false;
    state_.copy = copy;
    state_.cut = cut;
    if (!beginTransform()) {
        deleteAction();
        return false;
    }
    if (copy) {
        clipboard_ = QRect(corners_[0], QSize(corners_[2].x() - corners_[0].x(),
                                              corners_[0].y() - corners_[2].y()));
    }
    return true;
}

void TransformContext::transform(bool copy) {
    lift(copy, false);
}

void TransformContext::copy() {
    if (lift(true, false))
        deleteAction();
}

void TransformContext::cut() {
    if (lift(true, true))
        apply();
}

void TransformContext::paste(bool thenTransform) {
    if (isTransforming() || !canPaste())
        return;
    eraseOutline();
    if (!begin(true)) {
        cleanUp();
        startSelecting();
        return;
    }
    const QPoint click = handler_.menuPosition();
    const int bottom = activeViewHeight() - clipboard_.height() - click.y();
    setSelection({click.x(), bottom},
                 {click.x() + clipboard_.width(), bottom + clipboard_.height()});
    if (!beginTransform())
        deleteAction();
    else if (!thenTransform)
        apply();
}

void TransformContext::flip(bool horizontally) {
    if (!isTransforming() || hasMoved())
        return;
    bool& flipped = horizontally ? flipX_ : flipY_;
    flipped = !flipped;
    publish();
}

// --- Viewport 2.0: the same with a drawing interface ---------------------------------------------

MStatus TransformContext::doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                  const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doPress(event);
}

MStatus TransformContext::doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                    const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doRelease(event);
}

MStatus TransformContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                 const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doDrag(event);
}

} // namespace vellum
