// Drawings and cameras that come or go without any other event: a script deletes what is not
// selected, or makes one.
#pragma once

class MCallbackIdArray;

namespace vellum {

/// Ids go to `ids`. What came or went is told a moment later, once for all: within Maya's callback
/// the scene is in between. Nothing is told of a file that is being read.
void installNodeWatch(MCallbackIdArray& ids);

/// What is still to be told is not. The callbacks have been removed before.
void removeNodeWatch();

} // namespace vellum
