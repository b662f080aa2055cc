#include "tools/interaction/TransformContext.h"

#include "document/DocumentEnvironment.h"
#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/DrawingTarget.h"
#include "plugin/session/SceneNodes.h"
#include "plugin/session/SceneTime.h"
#include "tools/interaction/ViewMeasure.h"

#include <maya/MCursor.h>

namespace vellum {

namespace {

constexpr char kSelectHelp[] = "Select region to transform and press Enter. "
                               "No selection will apply transform to entire image.";
constexpr char kTransformHelp[] = "Translate(LMB)  Rotate(Shift+LMB)  Scale(MMB)  "
                                  "Apply Changes(Enter)  Revert(Backspace)  Cancel(ESC)";

Qt::MouseButton buttonOf(const MEvent& event) {
    switch (event.mouseButton()) {
    case MEvent::kLeftMouse:
        return Qt::LeftButton;
    case MEvent::kMiddleMouse:
        return Qt::MiddleButton;
    }
    return Qt::NoButton;
}

} // namespace

TransformContext::TransformContext() : handler_(this) {
    setTitleString("Transform Context");
    setImage(":/icons/transform_context_01.png", MPxContext::kImage1);
    setCursor(MCursor::editCursor);
    listenTo(handler_);
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
    gesture_.reset();
    letGoOfView();
    forgetTarget();
    setHelpString(kSelectHelp);
}

MStatus TransformContext::helpStateHasChanged(MEvent&) {
    setHelpString(isTransforming() ? kTransformHelp : kSelectHelp);
    return MS::kSuccess;
}

Stroke* TransformContext::strokeInProgress() const {
    Stroke* stroke = document_ ? document_->currentStroke() : nullptr;
    return stroke && stroke->tool == Tool::Transform && document_->strokeCamera() == camera_
               ? stroke
               : nullptr;
}

// The camera may have got another name since the transform was begun; the stroke in progress knows.
void TransformContext::followCamera() {
    documentEnvironment().settleCameraNames();
    const Stroke* stroke = document_ ? document_->currentStroke() : nullptr;
    if (!stroke || stroke->tool != Tool::Transform)
        return;
    camera_ = document_->strokeCamera();
    layer_.setCamera(camera_);
    added_.setCamera(camera_);
}

bool TransformContext::begin(bool paste) {
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    if (!document)
        return false;
    nodeHandle_ = MObjectHandle(active->thisMObject());
    document_ = document;
    added_ = {};
    bool possible = true;
    frame_ = currentFrame();
    camera_ = currentCamera();
    if (paste) {
        DrawingTarget target = drawingTarget(*active, camera_);
        added_ = std::move(target.added);
        possible = bool(target);
    } else {
        possible = requireActiveLayer(*document, camera_);
    }
    const int layer = document->activeLayerIndex(camera_);
    layer_ = LayerAddress(camera_);
    layer_.bind(*document, layer);
    ViewMapping view;
    possible = possible && layer >= 0 && activeViewMapping(view);
    gesture_.begin(view, paste);
    if (!possible) {
        gesture_.invalidate();
        return false;
    }
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

// What floated over one frame goes into no other; the hand that let it float should know.
void TransformContext::reportLoss() const {
    if (!gesture_.hasWork() || !strokeInProgress() || !requireNode(document_.get(), camera_))
        return;
    QString what = QStringLiteral("frame");
    if (currentCamera() != camera_)
        what = QStringLiteral("camera");
    else if (currentFrame() == frame_)
        what = QStringLiteral("layer");
    report::warning(
        QStringLiteral("The transform is taken back: it was begun on another %1.").arg(what));
}

MStatus TransformContext::doPress(MEvent& event) {
    handler_.watchActiveView();
    if (!activeNode())
        return MS::kFailure;
    followCamera();
    holdActiveView();
    if (isTransforming()) {
        if (hasMoved())
            gesture_.invalidate();
        followView();
        gesture_.press(buttonOf(event), event.isModifierShift(), positionOf(event));
        return MS::kSuccess;
    }
    forgetOutline();
    if (!begin(false))
        return MS::kFailure;
    gesture_.press(buttonOf(event), event.isModifierShift(), positionOf(event));
    showOutline();
    return MS::kSuccess;
}

MStatus TransformContext::doDrag(MEvent& event) {
    if (gesture_.isInvalid() || !node())
        return MS::kFailure;
    if (isTransforming()) {
        if (gesture_.isDragging() && currentCamera() == camera_ &&
            gesture_.drag(positionOf(event), event.isModifierShift()))
            publish();
        return MS::kSuccess;
    }
    if (!gesture_.isSelecting())
        return MS::kFailure;
    eraseOutline();
    followView();
    gesture_.drag(positionOf(event), false);
    showOutline();
    return MS::kSuccess;
}

// Shows the selection where it is now.
void TransformContext::publish() {
    Stroke* stroke = strokeInProgress();
    BaseNode* worked = node();
    if (!stroke || !worked)
        return;
    stroke->region = gesture_.state();
    stroke->dirty = true;
    showOutline();
    worked->forceRedraw();
}

MStatus TransformContext::doRelease(MEvent&) {
    return endDrag();
}

void TransformContext::pointerLost() {
    endDrag();
}

MStatus TransformContext::endDrag() {
    letGoOfView();
    followCamera();
    switch (gesture_.release()) {
    case RegionGesture::Ended::Invalid:
        reportLoss();
        deleteAction();
        return MS::kFailure;
    case RegionGesture::Ended::Selecting:
        eraseOutline();
        showOutline();
        break;
    case RegionGesture::Ended::Nothing:
    case RegionGesture::Ended::Transforming:
        break;
    }
    return !isTransforming() || currentCamera() == camera_ ? MS::kSuccess : MS::kFailure;
}

// A rectangle that was dragged stays on its place of the drawing; the time may have moved since.
bool TransformContext::ensureBegun() {
    followView();
    const bool here = camera_.isEmpty() || camera_ == currentCamera();
    return here && begin(false);
}

bool TransformContext::beginTransform(bool copy, bool cut) {
    if (hasMoved() || !gesture_.chooseRegion(copy, cut, document_->clipboardImage().size()) ||
        !requireDrawing(*document_, camera_))
        return false;
    if (!document_->beginTransform(camera_, gesture_.state()))
        return false;
    eraseOutline();
    gesture_.lift();
    setHelpString(kTransformHelp);
    showOutline();
    node()->forceRedraw();
    return true;
}

void TransformContext::completeAction() {
    followCamera();
    if (isTransforming()) {
        apply();
        return;
    }
    if (!ensureBegun() || !beginTransform())
        deleteAction();
}

void TransformContext::apply() {
    const bool moved = hasMoved();
    if (moved)
        reportLoss();
    if (moved || !script::execute(command::commitStroke(camera_, added_.layerIndex(*document_),
                                                        added_.hasFrame()),
                                  true, true))
        cleanUp();
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
        followCamera();
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
    followCamera();
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
    if (!beginTransform(copy, cut)) {
        deleteAction();
        return false;
    }
    if (copy)
        clipboard_ = gesture_.selectedSize();
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
    const int bottom = activeViewSize().height() - clipboard_.height() - click.y();
    gesture_.select({click.x(), bottom},
                    {click.x() + clipboard_.width(), bottom + clipboard_.height()});
    if (!beginTransform())
        deleteAction();
    else if (!thenTransform)
        apply();
}

void TransformContext::flip(bool horizontally) {
    followCamera();
    if (!isTransforming() || hasMoved())
        return;
    gesture_.flip(horizontally);
    publish();
}

} // namespace vellum
