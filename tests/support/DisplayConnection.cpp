#include "support/DisplayConnection.h"

#include <X11/Xlib.h>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace support {

DisplayConnection::DisplayConnection() {
    if (!std::getenv("DISPLAY"))
        return;
    constexpr int kAttempts = 100;
    constexpr auto kPause = std::chrono::milliseconds(50);
    for (int i = 0; i < kAttempts; ++i) {
        display_ = XOpenDisplay(nullptr);
        if (display_)
            return;
        std::this_thread::sleep_for(kPause);
    }
}

DisplayConnection::~DisplayConnection() {
    if (display_)
        XCloseDisplay(static_cast<Display*>(display_));
}

} // namespace support
