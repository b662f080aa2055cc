// Keeps a file whose drawings could not all be read from being written over unasked. Main thread
// only.
#pragma once

#include <maya/MCallbackIdArray.h>

namespace vellum {

/// From now on saving or exporting over a file that was opened or imported with losses needs a
/// clear yes: in the interface a question is asked; without it the first time is refused with a
/// message, the same once more goes through. Another file name is never asked about. The callbacks'
/// ids are appended to `ids`, and their removal ends it.
void installSaveGuard(MCallbackIdArray& ids);

} // namespace vellum
