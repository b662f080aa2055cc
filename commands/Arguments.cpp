#include "commands/Arguments.h"

#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/TimeSlider.h"

#include <algorithm>
#include <limits>
#include <maya/MAnimControl.h>
#include <maya/MTime.h>

namespace vellum {

MStatus refuse(const QString& message) {
    report::error(message);
    return MS::kFailure;
}

int indexArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    unsigned value = 0;
    args.getFlagArgument(flag, position, value);
    constexpr auto largest = static_cast<unsigned>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(value, largest));
}

int signedArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    int value = 0;
    args.getFlagArgument(flag, position, value);
    return value;
}

QString textArgument(const MArgDatabase& args, const char* flag) {
    MString value;
    if (args.isFlagSet(flag))
        args.getFlagArgument(flag, 0, value);
    return fromMaya(value);
}

std::optional<FrameRange> sliderRange() {
    if (!pluginState().interactive) {
        const double now = MAnimControl::currentTime().asUnits(MTime::uiUnit());
        return frameRange(now, now + 1.0);
    }
    const auto range = timeRange();
    return range ? frameRange(range->first, range->second) : std::nullopt;
}

} // namespace vellum
