#include "document/edits/FrameEdits.h"

#include "document/edits/ClearFrames.h"
#include "document/edits/CopyFrames.h"
#include "document/edits/CutFrames.h"
#include "document/edits/DuplicateFrame.h"
#include "document/edits/InsertFrames.h"
#include "document/edits/MoveFrames.h"
#include "document/edits/PasteFrames.h"
#include "document/edits/RemoveFrames.h"
#include "document/edits/RetimeFrames.h"
#include "document/edits/StepToFrame.h"

#include <utility>

namespace vellum::frame_edit {

std::unique_ptr<Edit> insert(const QString& camera, const FrameRange& range) {
    return std::make_unique<InsertFrames>(camera, range);
}

std::unique_ptr<Edit> duplicate(const QString& camera) {
    return std::make_unique<DuplicateFrame>(camera);
}

std::unique_ptr<Edit> remove(const QString& camera, const FrameRange& range) {
    return std::make_unique<RemoveFrames>(camera, range);
}

std::unique_ptr<Edit> cut(const QString& camera, const FrameRange& range, Clipboard clipboard) {
    return std::make_unique<CutFrames>(camera, range, std::move(clipboard));
}

std::unique_ptr<Edit> copy(const QString& camera, const FrameRange& range, Clipboard clipboard) {
    return std::make_unique<CopyFrames>(camera, range, std::move(clipboard));
}

std::unique_ptr<Edit> paste(const QString& camera, int start, Clipboard clipboard) {
    return std::make_unique<PasteFrames>(camera, start, std::move(clipboard));
}

std::unique_ptr<Edit> clear(const QString& camera, const FrameRange& range) {
    return std::make_unique<ClearFrames>(camera, range);
}

std::unique_ptr<Edit> stepForward() {
    return std::make_unique<StepToFrame>(StepToFrame::Direction::Forward);
}

std::unique_ptr<Edit> stepBack() {
    return std::make_unique<StepToFrame>(StepToFrame::Direction::Back);
}

std::unique_ptr<Edit> move(const QString& camera, int offset, int first, int last) {
    return std::make_unique<MoveFrames>(camera, offset, first, last);
}

std::unique_ptr<Edit> retime(const FrameRange& range, int count, bool relative, bool moveToNext) {
    return std::make_unique<RetimeFrames>(range, count, relative, moveToNext);
}

} // namespace vellum::frame_edit
