// Work that runs when the event loop is idle, or in batch when the script engine returns to the
// top. Main thread only.
#pragma once

#include <functional>

namespace host::idle {

void post(std::function<void()> work);

/// Runs what is queued now, oldest first; what that posts is left for the next call. False when
/// there was nothing. Work that runs an event loop, as a dialog does, may be called from within:
/// the rest then runs there, in the same order.
bool drain();

/// Drains until nothing is left, at most `rounds` times: work that always posts itself again must
/// not hang the caller.
void drainAll(int rounds = 1000);

bool pending();

/// Drops what is queued.
void clear();

/// Called when there is work and nobody has been called since the last drain.
void setWakeUp(std::function<void()> wakeUp);

} // namespace host::idle
