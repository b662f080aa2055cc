// Drawings copied from a stretch of time, to be pasted any number of times. One for each node,
// shared by all cameras and layers. Main thread only.
#pragma once

#include "document/Frame.h"

#include <memory>
#include <utility>
#include <vector>

namespace vellum {

class FrameClipboard {
public:
    /// Packed, ascending; their times count from the start of the stretch they were copied from.
    const std::vector<std::unique_ptr<Frame>>& frames() const { return frames_; }

    void replace(std::vector<std::unique_ptr<Frame>> frames) { frames_ = std::move(frames); }

private:
    std::vector<std::unique_ptr<Frame>> frames_;
};

} // namespace vellum
