// What the layer and the frame command share: arguments out of a parsed command line, refusals.
#pragma once

#include <QString>
#include <maya/MArgDatabase.h>
#include <maya/MStatus.h>

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

} // namespace vellum
