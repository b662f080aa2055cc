#include "tools/interaction/TimerPeriod.h"

#ifdef _WIN32
#include <windows.h>
// after windows.h
#include <timeapi.h>
#endif

namespace vellum {

#ifdef _WIN32

FineTimerPeriod::FineTimerPeriod() {
    TIMECAPS capabilities;
    if (timeGetDevCaps(&capabilities, sizeof(capabilities)) != MMSYSERR_NOERROR)
        return;
    period_ = capabilities.wPeriodMin;
    timeBeginPeriod(period_);
}

FineTimerPeriod::~FineTimerPeriod() {
    if (period_ != 0)
        timeEndPeriod(period_);
}

#else

FineTimerPeriod::FineTimerPeriod() = default;
FineTimerPeriod::~FineTimerPeriod() = default;

#endif

} // namespace vellum
