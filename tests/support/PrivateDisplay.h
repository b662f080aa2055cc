// Test programs of windows inject pointer events and look at the picture, and a display has one
// pointer: two on the same display disturb each other. Each has its own, and several run at once.
#pragma once

#include <sys/types.h>

namespace support {

/// Starts a virtual display and makes it this process's, rendered by software whatever the machine
/// has; ends it when destroyed, and when this process ends in any other way. To watch the tests at
/// work, VELLUM_TEST_DISPLAY names a display to be used instead.
class PrivateDisplay {
public:
    PrivateDisplay();
    ~PrivateDisplay();
    PrivateDisplay(const PrivateDisplay&) = delete;
    PrivateDisplay& operator=(const PrivateDisplay&) = delete;

    /// False when there is none; why was printed.
    bool isReady() const { return ready_; }

private:
    bool start();

    pid_t server_ = -1;
    bool ready_ = false;
};

} // namespace support
