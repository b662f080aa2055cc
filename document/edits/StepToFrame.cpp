#include "document/edits/StepToFrame.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/edits/TimeMoves.h"

#include <maya/MAnimControl.h>

namespace vellum {

bool StepToFrame::doExecute(LayerManager& document) {
    const bool forward = direction_ == Direction::Forward;
    const QString& camera = document.currentCamera();
    const Frame* frame =
        forward ? document.nextFrame(camera, true) : document.previousFrame(camera, true);
    if (frame && frame->intTime() != currentIntTime())
        target_ = frame->time();
    return (target_ || !forward) && doRedo(document);
}

bool StepToFrame::doRedo(LayerManager& document) {
    if (target_) {
        before_ = MAnimControl::currentTime();
        goTo(document, *target_);
    }
    return true;
}

bool StepToFrame::doUndo(LayerManager& document) {
    if (target_)
        goTo(document, before_);
    return true;
}

} // namespace vellum
