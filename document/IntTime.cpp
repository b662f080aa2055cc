#include "document/IntTime.h"

#include <maya/MAnimControl.h>

#include <cmath>
#include <limits>

namespace vellum {

int toIntTime(const MTime& time) {
    const double frames = time.asUnits(MTime::uiUnit());
    if (std::isnan(frames))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (frames <= lowest)
        return std::numeric_limits<int>::min();
    if (frames >= highest)
        return std::numeric_limits<int>::max();
    return static_cast<int>(frames);
}

MTime fromIntTime(int frame) {
    return MTime(static_cast<double>(frame), MTime::uiUnit());
}

int currentIntTime() {
    return toIntTime(MAnimControl::currentTime());
}

} // namespace vellum
