// Messages as the lines of the main window show them.
#pragma once

#include "foundation/Report.h"

#include <QString>

#include <string>

namespace host {

/// Error or warning.
bool isComplaint(report::Level level);

/// In one line.
QString messageText(report::Level level, const std::string& text);
QString messageStyle(report::Level level);

} // namespace host
