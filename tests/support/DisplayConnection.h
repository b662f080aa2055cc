// An X server that no program is connected to any more starts anew, and turns away whoever comes
// in that moment: the next test.
#pragma once

namespace support {

/// Waits until the display can be had, five seconds at most, and keeps it from starting anew while
/// it lives. Nothing without a display.
class DisplayConnection {
public:
    DisplayConnection();
    ~DisplayConnection();
    DisplayConnection(const DisplayConnection&) = delete;
    DisplayConnection& operator=(const DisplayConnection&) = delete;

private:
    void* display_ = nullptr; ///< Display*; its header's macros stay out of here
};

} // namespace support
