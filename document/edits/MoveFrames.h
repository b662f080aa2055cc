// Moves the frames of a range by some frames. Refused when any frame of the layer, moved or not,
// stands where one would go.
#pragma once

#include "document/edits/FrameShift.h"

namespace vellum {

class MoveFrames : public FrameShift {
public:
    MoveFrames(const QString& camera, int offset, int first, int last)
        : FrameShift(camera), offset_(offset), first_(first), last_(last) {}

private:
    std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) override;
    QString lockedMessage() const override;

    int offset_;
    int first_;
    int last_;
};

} // namespace vellum
