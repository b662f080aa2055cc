// What the edits that move frames or the scene in time share.
#pragma once

#include <maya/MTime.h>

#include <limits>

namespace vellum {

class LayerManager;

/// Whether a time, in frames, has a whole frame.
template <typename Number> bool fitsFrames(Number time) {
    using Limits = std::numeric_limits<int>;
    return time > static_cast<Number>(Limits::min()) - 1 &&
           time < static_cast<Number>(Limits::max()) + 1;
}

/// Moves the scene's time. The document follows at once, whoever else listens to the scene's time.
void goTo(LayerManager& document, const MTime& time);

} // namespace vellum
