#include "commands/Arguments.h"

#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/TimeSlider.h"

#include <maya/MAnimControl.h>
#include <maya/MTime.h>

#include <algorithm>
#include <limits>
#include <string>

namespace vellum {

namespace {

/// As a call writes the flag: with a dash, whether or not it is registered with one.
std::string written(const char* flag) {
    return flag[0] == '-' ? std::string(flag) : '-' + std::string(flag);
}

template <typename Value>
Value argument(const MArgDatabase& args, const char* flag, unsigned position) {
    Value value{};
    if (isSet(args, flag))
        args.getFlagArgument(written(flag).c_str(), position, value);
    return value;
}

} // namespace

MStatus refuse(const QString& message, MStatus::MStatusCode code) {
    report::error(message);
    return code;
}

bool isSet(const MArgDatabase& args, const char* flag) {
    return args.isFlagSet(written(flag).c_str());
}

unsigned unsignedArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    return argument<unsigned>(args, flag, position);
}

int intArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    return argument<int>(args, flag, position);
}

bool boolArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    return argument<bool>(args, flag, position);
}

double doubleArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    return argument<double>(args, flag, position);
}

QString stringArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    return fromMaya(argument<MString>(args, flag, position));
}

int indexArgument(const MArgDatabase& args, const char* flag, unsigned position) {
    constexpr auto largest = static_cast<unsigned>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(unsignedArgument(args, flag, position), largest));
}

std::optional<LayerState> newStateArgument(const MArgDatabase& args, const char* flag) {
    if (!isSet(args, flag))
        return std::nullopt;
    return layerStateOf(indexArgument(args, flag, 0)).value_or(LayerState::Animated);
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
