// The edits of frames, as commands ask for them. They work on the layer that is the camera's active
// one at the first execution.
#pragma once

#include "document/FrameRange.h"

#include <QString>

#include <memory>

namespace vellum {

class Edit;
class FrameClipboard;

namespace frame_edit {

/// A blank frame wherever the range has none. A camera without layers gets its first one.
std::unique_ptr<Edit> insert(const QString& camera, const FrameRange& range);

/// A copy, at the current time, of the last drawing before it.
std::unique_ptr<Edit> duplicate(const QString& camera);

std::unique_ptr<Edit> remove(const QString& camera, const FrameRange& range);

using Clipboard = std::shared_ptr<FrameClipboard>;
std::unique_ptr<Edit> cut(const QString& camera, const FrameRange& range, Clipboard clipboard);

/// Replaces the clipboard. Not undoable.
std::unique_ptr<Edit> copy(const QString& camera, const FrameRange& range, Clipboard clipboard);

/// The clipboard from this frame on, over what is there.
std::unique_ptr<Edit> paste(const QString& camera, int start, Clipboard clipboard);

/// Drawings become blank frames.
std::unique_ptr<Edit> clear(const QString& camera, const FrameRange& range);

// The scene's time goes to the next or previous frame of the current camera, around the ends.
std::unique_ptr<Edit> stepForward(); ///< fails silently where there is no other frame
std::unique_ptr<Edit> stepBack();    ///< succeeds even so

/// Moves the frames of [first, last] by `offset` frames. Refused when any frame of the layer, moved
/// or not, stands where one would go.
std::unique_ptr<Edit> move(const QString& camera, int offset, int first, int last);

/// Changes the gaps behind the frames of the range, in the current camera, to `count` frames or,
/// `relative`, by `count` frames; all later frames follow. The range is first widened to the frame
/// shown at its start and the frame after its end. Then shows the frame at its start, or with
/// `moveToNext` the one after that.
std::unique_ptr<Edit> retime(const FrameRange& range, int count, bool relative, bool moveToNext);

} // namespace frame_edit

} // namespace vellum
