// The system's timer resolution while a stroke is sampled.
#pragma once

namespace vellum {

/// Requests the finest timer period the system offers for as long as it lives. Does nothing where
/// timers are fine as they are.
class FineTimerPeriod {
public:
    FineTimerPeriod();
    ~FineTimerPeriod();
    FineTimerPeriod(const FineTimerPeriod&) = delete;
    FineTimerPeriod& operator=(const FineTimerPeriod&) = delete;

private:
    [[maybe_unused]] unsigned period_ = 0; ///< milliseconds, 0: nothing requested
};

} // namespace vellum
