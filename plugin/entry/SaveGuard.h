// Keeps a file whose drawings could not all be read from being written over unasked. Main thread
// only.
#pragma once

#include <maya/MCallbackIdArray.h>

namespace vellum {

/// From now on saving over the file that was opened with losses needs a clear yes: in the interface
/// a question is asked; without it the first save is refused with a message, the next one goes
/// through. Another file name is never asked about. The callbacks' ids are appended to `ids`, and
/// their removal ends it.
void installSaveGuard(MCallbackIdArray& ids);

} // namespace vellum
