#include "plugin/base/ToolOptions.h"

#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "plugin/base/Tool.h"

#include <algorithm>
#include <array>

namespace vellum {

namespace {

using IntField = int Settings::*;
using BoolField = bool Settings::*;

/// Where a tool keeps its options; null fields: the tool has no such option.
struct OptionFields {
    IntField size;
    int maxSize;
    IntField opacity;
    BoolField tablet;
    IntField hardness;
    int negativeHardness; ///< what a negative hardness becomes
};

constexpr std::array<OptionFields, kDrawToolCount> kFields{{
    {&Settings::pencilSize, 100, &Settings::pencilOpacity, &Settings::pencilTabletEnabled, nullptr,
     0},
    {&Settings::brushSize, 100, &Settings::brushOpacity, &Settings::brushTabletEnabled,
     &Settings::brushHardness, 10},
    {&Settings::eraserSize, 100, &Settings::eraserOpacity, &Settings::eraserTabletEnabled,
     &Settings::eraserHardness, 0},
    {&Settings::textSize, 100, &Settings::textOpacity, nullptr, nullptr, 0},
    {&Settings::lineSize, 50, &Settings::lineOpacity, nullptr, nullptr, 0},
    {&Settings::arrowSize, 50, &Settings::arrowOpacity, nullptr, nullptr, 0},
    {&Settings::ellipseSize, 50, &Settings::ellipseOpacity, nullptr, nullptr, 0},
    {&Settings::rectangleSize, 50, &Settings::rectangleOpacity, nullptr, nullptr, 0},
}};

/// Null, after reporting, for a number that is no tool.
const OptionFields* find(int tool) {
    if (tool >= 0 && tool < kDrawToolCount)
        return &kFields[static_cast<std::size_t>(tool)];
    report::error(QStringLiteral("Unknown tool type: %1").arg(tool));
    return nullptr;
}

const OptionFields& findOrPencil(int tool) {
    const OptionFields* fields = find(tool);
    return fields ? *fields : kFields[0];
}

} // namespace

bool isTool(int tool) {
    return find(tool) != nullptr;
}

int toolSize(int tool) {
    return settings().*findOrPencil(tool).size;
}

void setToolSize(int tool, int size) {
    if (const OptionFields* fields = find(tool))
        settings().*fields->size = std::clamp(size, 1, fields->maxSize);
}

int toolOpacity(int tool) {
    return settings().*findOrPencil(tool).opacity;
}

void setToolOpacity(int tool, int percent) {
    if (const OptionFields* fields = find(tool))
        settings().*fields->opacity = std::clamp(percent, 1, 100);
}

bool toolTabletEnabled(int tool) {
    const OptionFields& fields = findOrPencil(tool);
    return fields.tablet && settings().*fields.tablet;
}

void setToolTabletEnabled(int tool, bool enabled) {
    const OptionFields* fields = find(tool);
    if (fields && fields->tablet)
        settings().*fields->tablet = enabled;
}

int toolHardness(int tool) {
    const OptionFields& fields = findOrPencil(tool);
    return fields.hardness ? settings().*fields.hardness : 100;
}

void setToolHardness(int tool, int percent) {
    const OptionFields* fields = find(tool);
    if (fields && fields->hardness)
        settings().*fields->hardness =
            percent < 0 ? fields->negativeHardness : std::min(percent, 100);
}

} // namespace vellum
