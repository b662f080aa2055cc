#include "ui/ToolOptionsCommands.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

namespace vellum::tool_options {

namespace {

template <class Value>
PanelCommands set(const Settings& current, Tool tool, Value ToolOptions::*option,
                  const Value& value) {
    if (!findTool(tool) || current.of(tool).*option == value)
        return {};
    ToolOptions options = current.of(tool);
    options.*option = value;
    return {PanelCommand::echoed(command::setToolOptions(tool, options))};
}

} // namespace

PanelCommands setSize(const Settings& current, Tool tool, int size) {
    return set(current, tool, &ToolOptions::size, size);
}

PanelCommands setOpacity(const Settings& current, Tool tool, int percent) {
    return set(current, tool, &ToolOptions::opacity, percent);
}

PanelCommands setTabletEnabled(const Settings& current, Tool tool, bool enabled) {
    const ToolInfo* info = findTool(tool);
    if (!info || info->tablet.keep == Keep::Nowhere)
        return {};
    return set(current, tool, &ToolOptions::tabletEnabled, enabled);
}

PanelCommands setFontFamily(const Settings& current, Tool tool, const QString& family) {
    const ToolInfo* info = findTool(tool);
    if (!info || !info->factoryFont || family.isEmpty())
        return {};
    return set(current, tool, &ToolOptions::fontFamily, family);
}

} // namespace vellum::tool_options
