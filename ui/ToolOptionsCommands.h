// What the controls of the tool options issue: all options of the tool, one of them changed.
// Nothing for a value that is set already, and for what is no tool to choose.
#pragma once

#include "plugin/base/Tool.h"
#include "ui/PanelCommand.h"

namespace vellum {
struct Settings;
}

namespace vellum::tool_options {

PanelCommands setSize(const Settings& current, Tool tool, int size);
PanelCommands setOpacity(const Settings& current, Tool tool, int percent);
/// Nothing for tools that know no pressure.
PanelCommands setTabletEnabled(const Settings& current, Tool tool, bool enabled);
/// Nothing for tools without a font and for an empty name.
PanelCommands setFontFamily(const Settings& current, Tool tool, const QString& family);

} // namespace vellum::tool_options
