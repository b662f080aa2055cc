#include "plugins/CallStack.h"

#if __has_include(<execinfo.h>)
#include <cstddef>
#include <dlfcn.h>
#include <execinfo.h>
#include <vector>
#endif

namespace host {

#if __has_include(<execinfo.h>)

namespace {

/// Where the library that has an address begins; null when none has it.
const void* libraryOf(const void* address) {
    Dl_info info;
    return dladdr(address, &info) ? info.dli_fbase : nullptr;
}

/// The addresses to which the calls under way return.
std::vector<void*> returnAddresses() {
    std::vector<void*> addresses(256);
    for (;;) {
        const int count = backtrace(addresses.data(), int(addresses.size()));
        if (std::size_t(count) < addresses.size()) {
            addresses.resize(std::size_t(count));
            return addresses;
        }
        addresses.resize(2 * addresses.size());
    }
}

} // namespace

bool isOnCallStack(const void* address) {
    const void* library = libraryOf(address);
    if (!library)
        return false;
    for (const void* each : returnAddresses())
        if (libraryOf(each) == library)
            return true;
    return false;
}

#else

bool isOnCallStack(const void*) {
    return false;
}

#endif

} // namespace host
