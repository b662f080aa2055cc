// Puts a blank frame wherever a range has none. A camera without layers gets its first one.
#pragma once

#include "document/edits/FrameExchange.h"
#include "document/edits/TargetAdditions.h"

namespace vellum {

class InsertFrames : public FrameExchange {
public:
    InsertFrames(const QString& camera, const FrameRange& range)
        : FrameExchange(camera), range_(range), added_(camera) {}

private:
    bool plan(const Layer& layer) override;
    QString lockedMessage() const override;
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;
    bool addFirstLayer(LayerManager& document);

    FrameRange range_;
    TargetAdditions added_; ///< the first layer, when it was made; with its frames while undone
};

} // namespace vellum
