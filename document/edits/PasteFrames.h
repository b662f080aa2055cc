// Puts copies of the clipboard's frames into a layer, from a frame on, over what is there.
#pragma once

#include "document/edits/FrameExchange.h"

namespace vellum {

class FrameClipboard;

class PasteFrames : public FrameExchange {
public:
    PasteFrames(const QString& camera, int start, std::shared_ptr<FrameClipboard> clipboard);

private:
    bool plan(const Layer& layer) override;
    QString lockedMessage() const override;

    int start_;
    std::shared_ptr<FrameClipboard> clipboard_;
};

} // namespace vellum
