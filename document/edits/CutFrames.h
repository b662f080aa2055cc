// Takes the frames of a range out of a layer and puts copies of them on the clipboard.
#pragma once

#include "document/edits/RemoveFrames.h"

namespace vellum {

class FrameClipboard;

class CutFrames : public RemoveFrames {
public:
    CutFrames(const QString& camera, const FrameRange& range,
              std::shared_ptr<FrameClipboard> clipboard);

private:
    bool plan(const Layer& layer) override;
    QString lockedMessage() const override;
    bool doExecute(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;
    void fillClipboard();

    std::shared_ptr<FrameClipboard> clipboard_;
    std::vector<std::unique_ptr<Frame>> copies_; ///< share their bytes with the clipboard
};

} // namespace vellum
