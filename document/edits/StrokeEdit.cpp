#include "document/edits/StrokeEdit.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/edits/TimeMoves.h"
#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {

bool isText(const Stroke* stroke) {
    return stroke && kindOf(stroke->tool) == ToolKind::Text;
}

} // namespace

StrokeEdit::StrokeEdit(const QString& camera, int addedLayer, bool frameAdded)
    : camera_(camera), addedLayer_(addedLayer), frameAdded_(frameAdded), added_(camera) {
}

void StrokeEdit::adoptAdditions(const LayerManager& document) {
    added_ = TargetAdditions(camera_);
    if (addedLayer_ >= 0) {
        added_.adoptLayer(document, addedLayer_);
        const QString& previous = document.previousCamera();
        if (document.cameraLayerCount(camera_) == 1 && !previous.isEmpty() && previous != camera_) {
            previousCamera_ = previous;
            previousLayerIndex_ = document.activeLayerIndex(previous);
        }
    }
    // The frame made for the stroke is the one it was begun on, wherever the time is now.
    const auto begunOn = document.strokePlace(camera_);
    if (frameAdded_ && begunOn)
        added_.adoptFrame(document, begunOn->layer, begunOn->frame->time());
}

bool StrokeEdit::doExecute(LayerManager& document) {
    if (frameAdded_ && !document.activeLayer(camera_))
        return false;
    adoptAdditions(document);
    return commit(document);
}

bool StrokeEdit::commit(LayerManager& document) {
    const auto begunOn = document.strokePlace(camera_);
    const Frame* shown = document.currentFrame(camera_);
    // A text is typed for a while; the time may have gone to where there is no frame.
    const bool unseenText = !shown && isText(document.currentStroke());
    const bool elsewhere = (settings().undoReturnsToFrame || unseenText) && begunOn &&
                           begunOn->layer == document.activeLayerIndex(camera_) &&
                           begunOn->frame != shown;
    if (elsewhere)
        document.timeChanged(begunOn->frame->intTime());
    const Frame* frame = document.currentFrame(camera_);
    const bool done = document.commitStroke(camera_, png_);
    if (done) {
        drawn_.layer = LayerAddress(camera_);
        drawn_.layer.bindToActive(document);
        drawn_.frame = frame->time();
        drawn_.seenAt = elsewhere ? frame->time() : MAnimControl::currentTime();
        drawn_.unseen = unseenText;
    }
    if (elsewhere)
        document.timeChanged(currentIntTime());
    return done;
}

bool StrokeEdit::exchange(LayerManager& document) {
    if (png_.isEmpty()) {
        return false; // the picture before could not be packed: there is nothing to go back to
    }
    return settings().undoReturnsToFrame || drawn_.unseen
               ? exchangeDrawn(document)
               : document.replaceActiveImage(camera_, png_);
}

bool StrokeEdit::exchangeDrawn(LayerManager& document) {
    const int index = drawn_.layer.index(document);
    const Layer* layer = document.layer(camera_, index);
    const Frame* frame = layer ? layer->frameAtMoment(drawn_.frame) : nullptr;
    if (!frame) {
        report::error(QStringLiteral("The frames of the layer have changed since."));
        return false;
    }
    const MTime before = MAnimControl::currentTime();
    // A static drawing is seen at many times, one is as good as another.
    if (layer->state() != LayerState::Static || layer->currentFrame() != frame)
        goTo(document, drawn_.seenAt);
    if (layer->currentFrame() != frame)
        goTo(document, drawn_.frame);
    if (document.replaceImage(camera_, index, png_))
        return true;
    goTo(document, before);
    return false;
}

bool StrokeEdit::doUndo(LayerManager& document) {
    if (!added_.isThere(document) || !exchange(document))
        return false;
    added_.takeBack(document);
    if (added_.hasLayer() && previousLayerIndex_ >= 0)
        document.setActiveLayer(previousCamera_, previousLayerIndex_, true);
    return true;
}

bool StrokeEdit::doRedo(LayerManager& document) {
    LayerAddress active(camera_);
    active.bindToActive(document);
    if (!added_.putAgain(document))
        return false;
    if (!exchange(document)) {
        added_.takeBack(document); // else a second redo would find it in its way
        if (active.index(document) >= 0)
            document.setActiveLayer(camera_, active.index(document), false);
        return false;
    }
    if (added_.hasLayer())
        document.setCurrentCamera(camera_);
    return true;
}

} // namespace vellum
