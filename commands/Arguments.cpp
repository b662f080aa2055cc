#include "commands/Arguments.h"

#include "plugin/leaves/MayaStrings.h"
#include "plugin/leaves/Report.h"

#include <algorithm>
#include <limits>

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

} // namespace vellum
