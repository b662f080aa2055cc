// Faults on demand: a step of the host that is told to fail does so as if something were in its
// way, so that tests see what a plug-in makes of it. Nothing arms a fault but a test. Main thread
// only.
#pragma once

#include <string>

namespace host::faults {

/// The step fails each time it is due, after `passes` times that it does not, until cleared.
/// Steps: "MFnPlugin", "removeCallbacks", "setMPxData", "leaveToolsOf" (its tools, before a
/// plug-in is unloaded), the register and deregister functions of
/// MFnPlugin and MDrawRegistry with the name registered ("registerCommand polyCube"), and "command
/// NAME" for any script command.
void arm(const std::string& step, int passes = 0);

void clear();

/// Asked at the step itself; true: fail now.
bool due(const char* step, const std::string& name = {});

} // namespace host::faults
