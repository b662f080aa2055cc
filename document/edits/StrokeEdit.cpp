#include "document/edits/StrokeEdit.h"

#include "document/LayerManager.h"
#include "plugin/base/Settings.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {

/// Where the frame made for a stroke lies: the one now drawn on, which also holds when the scene's
/// time has moved since the press.
MTime addedFrameTime(const Layer& layer) {
    if (layer.state() == LayerState::Static)
        return {static_cast<double>(settings().defaultStaticFrameTime), MTime::uiUnit()};
    const Frame* frame = layer.currentFrame();
    return frame ? frame->time() : MAnimControl::currentTime();
}

} // namespace

StrokeEdit::StrokeEdit(const QString& camera, int addedLayer, bool frameAdded)
    : camera_(camera), addedLayer_(addedLayer), frameAdded_(frameAdded), added_(camera) {
}

bool StrokeEdit::doExecute(LayerManager& document) {
    added_ = TargetAdditions(camera_);
    if (addedLayer_ >= 0) {
        added_.adoptLayer(document, addedLayer_);
        const QString previous = document.previousCamera();
        if (document.cameraLayerCount(camera_) == 1 && !previous.isEmpty() && previous != camera_) {
            previousCamera_ = previous;
            previousLayerIndex_ = document.activeLayerIndex(previous);
        }
    }
    if (frameAdded_) {
        const Layer* layer = document.activeLayer(camera_);
        if (!layer)
            return false;
        added_.adoptFrame(addedFrameTime(*layer));
    }
    return document.commitStroke(camera_, png_);
}

bool StrokeEdit::doUndo(LayerManager& document) {
    if (!document.replaceActiveImage(camera_, png_))
        return false;
    takeAdditionsBack(document);
    return true;
}

void StrokeEdit::takeAdditionsBack(LayerManager& document) {
    added_.takeBack(document);
    if (added_.hasLayer() && previousLayerIndex_ >= 0)
        document.setActiveLayer(previousCamera_, previousLayerIndex_, true);
}

bool StrokeEdit::doRedo(LayerManager& document) {
    if (!added_.putAgain(document))
        return false;
    if (added_.hasLayer())
        document.setCurrentCamera(camera_);
    if (!document.replaceActiveImage(camera_, png_)) {
        takeAdditionsBack(document); // else a second redo would find them in its way
        return false;
    }
    return true;
}

} // namespace vellum
