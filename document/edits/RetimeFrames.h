// Changes the gaps between the frames of a range, in the current camera; all later frames follow.
// Then shows one of them.
#pragma once

#include "document/FrameRange.h"
#include "document/Retiming.h"
#include "document/edits/FrameShift.h"

namespace vellum {

class RetimeFrames : public FrameShift {
public:
    RetimeFrames(const FrameRange& range, int count, bool relative, bool moveToNext)
        : FrameShift({}), range_(range), gap_{count, relative}, moveToNext_(moveToNext) {}

private:
    std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) override;
    QString lockedMessage() const override;
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;
    void showTarget(LayerManager& document);

    FrameRange range_;
    RetimeGap gap_;
    bool moveToNext_;
    MTime target_;
    MTime before_;
};

} // namespace vellum
