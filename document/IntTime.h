// Whole frames: the key of every drawing and of every comparison between drawings and the current
// time.
#pragma once

#include <maya/MTime.h>

namespace vellum {

/// The time in the current unit of the interface, truncated toward zero. Times beyond 32 bits give
/// the nearest representable frame, a time that is no number gives 0.
int toIntTime(const MTime& time);

/// The start of a whole frame in the current unit of the interface.
MTime fromIntTime(int frame);

/// toIntTime() of the scene's current time.
int currentIntTime();

} // namespace vellum
