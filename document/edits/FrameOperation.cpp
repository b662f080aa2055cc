#include "document/edits/FrameOperation.h"

#include <cassert>

namespace vellum {

bool FrameOperation::execute(LayerManager& document, FrameClipboard& clipboard) {
    assert(!done_);
    done_ = apply(document, clipboard);
    return done_;
}

bool FrameOperation::undo(LayerManager& document) {
    assert(done_ && isUndoable());
    done_ = !revert(document);
    return !done_;
}

} // namespace vellum
