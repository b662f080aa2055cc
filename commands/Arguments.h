// What the commands share: arguments out of a parsed command line, the time range, refusals.
#pragma once

#include "document/FrameRange.h"

#include <QString>
#include <maya/MArgDatabase.h>
#include <maya/MStatus.h>
#include <optional>

namespace vellum {

/// Reports the message; the command fails.
MStatus refuse(const QString& message);

inline bool is(const char* flag, const char* name) {
    return QLatin1String(flag) == QLatin1String(name);
}

/// Unsigned script numbers as indexes: what does not fit is just out of range.
int indexArgument(const MArgDatabase& args, const char* flag, unsigned position);

int signedArgument(const MArgDatabase& args, const char* flag, unsigned position);

/// Empty when the flag is not set.
QString textArgument(const MArgDatabase& args, const char* flag);

/// The time slider's highlighted range; without a slider (batch mode) the current frame. Empty
/// after a report.
std::optional<FrameRange> sliderRange();

} // namespace vellum
