// What the controls of the toolbox issue.
#pragma once

#include "plugin/base/Tool.h"
#include "ui/PanelCommand.h"

namespace vellum {
struct Settings;
}

namespace vellum::toolbox {

PanelCommands chooseTool(Tool tool);

/// Switched to what it is not now; never toggled, so that the history says what came of it.
PanelCommands switchGhostPrevious(const Settings& current);
PanelCommands switchGhostNext(const Settings& current);
PanelCommands ghostPreviousCount(int count);
PanelCommands ghostNextCount(int count);
PanelCommands ghostingSettings();

/// Where there is no drawing, one with a first layer and frames is made once Maya is idle.
PanelCommands insertFrames(bool drawingExists);
/// `flag` of rvVellumFrame: "-duplicate", "-delete", ...
PanelCommands frames(const char* flag);

} // namespace vellum::toolbox
