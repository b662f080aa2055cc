// Whose code is being run right now.
#pragma once

namespace host {

/// Whether a call into the library that `address` lies in has not returned on this thread. False
/// where the system cannot tell.
bool isOnCallStack(const void* address);

} // namespace host
