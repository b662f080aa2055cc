// Takes the frames of a range out of a layer.
#pragma once

#include "document/edits/FrameExchange.h"

namespace vellum {

class RemoveFrames : public FrameExchange {
public:
    RemoveFrames(const QString& camera, const FrameRange& range)
        : FrameExchange(camera), range_(range) {}

protected:
    bool plan(const Layer& layer) override;
    QString lockedMessage() const override;

    const FrameRange& range() const { return range_; }

private:
    FrameRange range_;
};

} // namespace vellum
