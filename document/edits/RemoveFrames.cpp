#include "document/edits/RemoveFrames.h"

namespace vellum {

QString RemoveFrames::lockedMessage() const {
    return QStringLiteral("Cannot remove frames from a locked layer");
}

bool RemoveFrames::plan(const Layer& layer) {
    for (const Frame* frame : framesIn(layer, range_))
        take(*frame);
    return true;
}

} // namespace vellum
