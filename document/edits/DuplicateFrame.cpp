#include "document/edits/DuplicateFrame.h"

#include "document/IntTime.h"
#include "document/Layer.h"
#include "document/edits/TimeMoves.h"
#include "plugin/base/Report.h"

#include <maya/MAnimControl.h>

namespace vellum {

QString DuplicateFrame::lockedMessage() const {
    return QStringLiteral("Cannot duplicate frames on a locked layer");
}

QString DuplicateFrame::undoFailedMessage() const {
    return QStringLiteral("Failed to undo duplicate frame operation.");
}

bool DuplicateFrame::plan(const Layer& layer) {
    const MTime now = MAnimControl::currentTime();
    if (layer.isDrawableAt(toIntTime(now))) {
        report::error(QStringLiteral("A frame already exists at the current time."));
        return false;
    }
    const Frame* previous = layer.frameBefore(toIntTime(now));
    if (!previous)
        return false;
    if (!fitsFrames(now.asUnits(MTime::uiUnit()))) {
        report::error(QStringLiteral("The current time is out of bounds"));
        return false;
    }
    auto copy = previous->copy();
    copy->setTime(now);
    put(std::move(copy));
    return true;
}

} // namespace vellum
