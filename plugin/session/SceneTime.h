// The scene's current time, and handing a new one on. Main thread only.
#pragma once

namespace vellum {

/// Current time in whole frames of the current unit (document/IntTime.h).
int currentFrame();

/// Hands the current frame to the overlay, to every node's document and to the transform tool.
void propagateCurrentTime();

} // namespace vellum
