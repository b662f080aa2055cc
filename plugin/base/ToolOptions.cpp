#include "plugin/base/ToolOptions.h"

#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

#include <algorithm>

namespace vellum {

namespace {

/// Null, after reporting, for what is no tool to choose.
const ToolInfo* find(Tool tool) {
    const ToolInfo* info = findTool(tool);
    if (!info)
        report::error(QStringLiteral("Unknown tool type: %1").arg(numberOf(tool)));
    return info;
}

const ToolInfo& findOrPencil(Tool tool) {
    const ToolInfo* info = find(tool);
    return info ? *info : *findTool(Tool::Pencil);
}

} // namespace

bool isTool(Tool tool) {
    return find(tool) != nullptr;
}

int toolSize(Tool tool) {
    return settings().of(findOrPencil(tool).tool).size;
}

void setToolSize(Tool tool, int size) {
    if (const ToolInfo* info = find(tool))
        settings().of(tool).size = std::clamp(size, 1, info->size.largest);
}

int toolOpacity(Tool tool) {
    return settings().of(findOrPencil(tool).tool).opacity;
}

void setToolOpacity(Tool tool, int percent) {
    if (find(tool))
        settings().of(tool).opacity = std::clamp(percent, 1, 100);
}

bool toolTabletEnabled(Tool tool) {
    return settings().of(findOrPencil(tool).tool).tabletEnabled;
}

void setToolTabletEnabled(Tool tool, bool enabled) {
    const ToolInfo* info = find(tool);
    if (info && info->tablet.keep != Keep::Nowhere)
        settings().of(tool).tabletEnabled = enabled;
}

int toolHardness(Tool tool) {
    return settings().of(findOrPencil(tool).tool).hardness;
}

void setToolHardness(Tool tool, int percent) {
    const ToolInfo* info = find(tool);
    if (info && info->hardness.keep != Keep::Nowhere)
        settings().of(tool).hardness =
            percent < 0 ? info->hardness.forNegative : std::min(percent, 100);
}

} // namespace vellum
