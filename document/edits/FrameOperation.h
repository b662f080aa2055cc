// Undoable operations on the frames of a camera's active layer. Whoever runs one keeps it for undo
// and redo; the two may alternate any number of times. Main thread only.
//
// An operation remembers its camera, its layer and its frames (by moment) and finds them each time.
// When the camera, the layer or the frames are gone it refuses, having changed nothing, and keeps
// what it holds: once they are back, it works again. Frames it keeps are packed.
#pragma once

#include "document/FrameRange.h"

#include <QString>
#include <memory>

namespace vellum {

class FrameClipboard;
class LayerManager;

class FrameOperation {
public:
    virtual ~FrameOperation() = default;

    /// Does the operation, the first time or after undo(). False, after reporting why, when it is
    /// refused; nothing has changed then.
    bool execute(LayerManager& document, FrameClipboard& clipboard);

    /// Takes it back; only after execute(). False as above.
    bool undo(LayerManager& document);

    virtual bool isUndoable() const { return true; }

    /// False for operations after which the drawing is what it was.
    virtual bool changesDrawing() const { return true; }

private:
    virtual bool apply(LayerManager& document, FrameClipboard& clipboard) = 0;
    virtual bool revert(LayerManager& document) = 0;

    bool done_ = false;
};

namespace frame_operation {

using Operation = std::unique_ptr<FrameOperation>;

/// A blank frame wherever the range has none. A camera without layers gets its first one.
Operation insert(const QString& camera, const FrameRange& range);

/// A copy, at the current time, of the last drawing before it.
Operation duplicate(const QString& camera);

Operation remove(const QString& camera, const FrameRange& range);
Operation cut(const QString& camera, const FrameRange& range);

/// Replaces the clipboard. Not undoable.
Operation copy(const QString& camera, const FrameRange& range);

/// The clipboard from this frame on, over what is there.
Operation paste(const QString& camera, int start);

/// Drawings become blank frames.
Operation clear(const QString& camera, const FrameRange& range);

// The scene's time goes to the next or previous frame of the current camera, around the ends.
Operation stepForward(); ///< fails silently where there is no other frame
Operation stepBack();    ///< succeeds even so

/// Moves the frames of [first, last] by `offset` frames. Refused when any frame of the layer, moved
/// or not, stands where one would go.
Operation move(const QString& camera, int offset, int first, int last);

/// Changes the gaps behind the frames of the range, in the current camera, to `count` frames or,
/// `relative`, by `count` frames; all later frames follow. The range is first widened to the frame
/// shown at its start and the frame after its end. Then shows the frame at its start, or with
/// `moveToNext` the one after that.
Operation retime(const FrameRange& range, int count, bool relative, bool moveToNext);

} // namespace frame_operation

} // namespace vellum
