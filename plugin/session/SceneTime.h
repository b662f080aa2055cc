// The scene's current time, and handing a new one on. Main thread only.
#pragma once

#include "document/Changes.h"

namespace vellum {

/// Current time in whole frames of the current unit (document/IntTime.h).
int currentFrame();

/// After a change of the scene's time: hands it to the overlay, to the document of every node and
/// to the transform tool. One look over the scene.
void propagateCurrentTime();

/// After a change of the time unit, in one look as well: hands the time on and warns of each layer
/// of which frames share a number now. In a finer unit each has its own again.
void timeUnitChanged();

/// Warns of each layer of which frames share a number. An import brings frames of a finer unit.
void warnOfCoincidingFrames();

/// After drawings may have come or gone, which may have been away while time went on: hands the
/// time to all, in the same look, then tells what has happened (Drawings, Stepped).
void drawingsChanged(Change happened);

} // namespace vellum
