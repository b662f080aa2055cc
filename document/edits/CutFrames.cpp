#include "document/edits/CutFrames.h"

#include "document/edits/CopyFrames.h"
#include "document/edits/FrameClipboard.h"

#include <utility>

namespace vellum {

CutFrames::CutFrames(const QString& camera, const FrameRange& range,
                     std::shared_ptr<FrameClipboard> clipboard)
    : RemoveFrames(camera, range), clipboard_(std::move(clipboard)) {
}

QString CutFrames::lockedMessage() const {
    return QStringLiteral("Cannot cut frames from a locked layer");
}

bool CutFrames::plan(const Layer& layer) {
    auto copies = copyFrames(layer, range());
    if (!copies)
        return false;
    copies_ = std::move(*copies);
    return RemoveFrames::plan(layer);
}

bool CutFrames::doExecute(LayerManager& document) {
    if (!RemoveFrames::doExecute(document))
        return false;
    fillClipboard();
    return true;
}

bool CutFrames::doRedo(LayerManager& document) {
    if (!RemoveFrames::doRedo(document))
        return false;
    fillClipboard();
    return true;
}

/// Redo finds the frames again by moment, so it copies what was copied first.
void CutFrames::fillClipboard() {
    std::vector<std::unique_ptr<Frame>> copies;
    for (const auto& copied : copies_)
        copies.push_back(copied->copy());
    clipboard_->replace(std::move(copies));
}

} // namespace vellum
