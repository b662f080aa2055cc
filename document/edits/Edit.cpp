#include "document/edits/Edit.h"

#include "document/Changes.h"

#include <cassert>

namespace vellum {

Edit::~Edit() = default;

bool Edit::execute(LayerManager& document) {
    assert(state_ == State::New);
    const ChangeGroup group;
    if (!doExecute(document))
        return false;
    state_ = State::Done;
    return true;
}

bool Edit::undo(LayerManager& document) {
    assert(state_ == State::Done && isUndoable());
    const ChangeGroup group;
    if (!doUndo(document))
        return false;
    state_ = State::Undone;
    return true;
}

bool Edit::redo(LayerManager& document) {
    assert(state_ == State::Undone);
    const ChangeGroup group;
    if (!doRedo(document))
        return false;
    state_ = State::Done;
    return true;
}

} // namespace vellum
