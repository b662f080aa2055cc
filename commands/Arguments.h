// What the commands share: arguments out of a parsed command line, the time range, refusals. Flags
// are asked for by the name they are registered with, some of which have no dash. Of a flag that is
// not set, or has no such argument, the answer is 0, false or empty.
#pragma once

#include "document/FrameRange.h"
#include "document/Layer.h"

#include <QString>

#include <maya/MArgDatabase.h>
#include <maya/MStatus.h>

#include <optional>

namespace vellum {

inline constexpr const char* kNodeNotFound = "Node not found";

/// Reports the message; the command fails.
MStatus refuse(const QString& message, MStatus::MStatusCode code = MStatus::kFailure);

bool isSet(const MArgDatabase& args, const char* flag);

unsigned unsignedArgument(const MArgDatabase& args, const char* flag, unsigned position);
int intArgument(const MArgDatabase& args, const char* flag, unsigned position);
bool boolArgument(const MArgDatabase& args, const char* flag, unsigned position);
double doubleArgument(const MArgDatabase& args, const char* flag, unsigned position);
QString stringArgument(const MArgDatabase& args, const char* flag, unsigned position);

/// Unsigned script numbers as indexes: what does not fit is just out of range.
int indexArgument(const MArgDatabase& args, const char* flag, unsigned position);

/// State of a new layer, as far as one was given; an unknown one is animated.
std::optional<LayerState> newStateArgument(const MArgDatabase& args, const char* flag);

/// The time slider's highlighted range; without a slider (batch mode) the current frame. Empty
/// after a report.
std::optional<FrameRange> sliderRange();

} // namespace vellum
