// Copies the drawings of a range to the clipboard. No step to undo.
#pragma once

#include "document/Frame.h"
#include "document/FrameRange.h"
#include "document/LayerAddress.h"
#include "document/edits/Edit.h"

#include <memory>
#include <optional>
#include <vector>

namespace vellum {

class FrameClipboard;
class Layer;

class CopyFrames : public Edit {
public:
    CopyFrames(const QString& camera, const FrameRange& range,
               std::shared_ptr<FrameClipboard> clipboard);

    bool isUndoable() const override { return false; }

private:
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager&) override { return false; }

    LayerAddress address_;
    FrameRange range_;
    std::shared_ptr<FrameClipboard> clipboard_;
};

/// Packed copies whose times count from the start of the range. Empty after reporting when those
/// times do not fit.
std::optional<std::vector<std::unique_ptr<Frame>>> copyFrames(const Layer& layer,
                                                              const FrameRange& range);

} // namespace vellum
