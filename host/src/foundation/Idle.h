// Work that runs when the event loop is idle, or in batch when the script engine returns to the
// top. Main thread only.
#pragma once

#include <functional>

namespace host::idle {

void post(std::function<void()> work);

/// Runs what is queued now; what that posts is left for the next call. False when there was
/// nothing.
bool drain();

/// Drains until nothing is left, at most `rounds` times: work that always posts itself again must
/// not hang the caller.
void drainAll(int rounds = 1000);

bool pending();

/// Drops what is queued.
void clear();

/// Called whenever work is posted to an empty queue.
void setWakeUp(std::function<void()> wakeUp);

} // namespace host::idle
