// The menu script that is compiled into the plug-in: ":/scripts/Vellum.mel".
#pragma once

#include <QString>

namespace vellum {

/// The script with every placeholder replaced; empty when the resource cannot be read.
QString menuScript();

/// Runs the script, which defines the global procedures of the menu. False when it failed.
bool sourceMenuScript();

} // namespace vellum
