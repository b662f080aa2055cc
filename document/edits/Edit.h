// One undoable step on a document: what a command keeps for undo and redo. Main thread only.
//
// An edit remembers cameras, layers and frames by what identifies them (document/LayerAddress.h,
// exact moments) and finds them each time. When they are gone it refuses, having changed nothing,
// and keeps what it holds: once they are back, it works again. Frames it keeps are packed.
#pragma once

namespace vellum {

class LayerManager;

class Edit {
public:
    virtual ~Edit();

    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    // Each verb is one group of changes, told once at its end. False, after reporting why where
    // the user has to know, when it is refused: nothing has changed then, and the same verb may be
    // called again.
    bool execute(LayerManager& document); ///< the first time
    bool undo(LayerManager& document);    ///< only of what is done
    bool redo(LayerManager& document);    ///< only of what is undone

    /// False for edits that need not, or cannot, be taken back.
    virtual bool isUndoable() const { return true; }

    /// Index that the command returns; -1 for none.
    int result() const { return result_; }

protected:
    Edit() = default;

    void setResult(int result) { result_ = result; }

private:
    virtual bool doExecute(LayerManager& document) = 0;
    virtual bool doUndo(LayerManager& document) = 0;
    virtual bool doRedo(LayerManager& document) { return doExecute(document); }

    enum class State { New, Done, Undone };
    State state_ = State::New;
    int result_ = -1;
};

} // namespace vellum
