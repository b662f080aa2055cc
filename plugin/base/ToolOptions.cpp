#include "plugin/base/ToolOptions.h"

#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"

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
const OptionFields* find(Tool tool) {
    const int number = numberOf(tool);
    if (number >= 0 && number < kDrawToolCount)
        return &kFields[static_cast<std::size_t>(number)];
    report::error(QStringLiteral("Unknown tool type: %1").arg(number));
    return nullptr;
}

const OptionFields& findOrPencil(Tool tool) {
    const OptionFields* fields = find(tool);
    return fields ? *fields : kFields[0];
}

} // namespace

bool isTool(Tool tool) {
    return find(tool) != nullptr;
}

int toolSize(Tool tool) {
    return settings().*findOrPencil(tool).size;
}

void setToolSize(Tool tool, int size) {
    if (const OptionFields* fields = find(tool))
        settings().*fields->size = std::clamp(size, 1, fields->maxSize);
}

int toolOpacity(Tool tool) {
    return settings().*findOrPencil(tool).opacity;
}

void setToolOpacity(Tool tool, int percent) {
    if (const OptionFields* fields = find(tool))
        settings().*fields->opacity = std::clamp(percent, 1, 100);
}

bool toolTabletEnabled(Tool tool) {
    const OptionFields& fields = findOrPencil(tool);
    return fields.tablet && settings().*fields.tablet;
}

void setToolTabletEnabled(Tool tool, bool enabled) {
    const OptionFields* fields = find(tool);
    if (fields && fields->tablet)
        settings().*fields->tablet = enabled;
}

int toolHardness(Tool tool) {
    const OptionFields& fields = findOrPencil(tool);
    return fields.hardness ? settings().*fields.hardness : 100;
}

void setToolHardness(Tool tool, int percent) {
    const OptionFields* fields = find(tool);
    if (fields && fields->hardness)
        settings().*fields->hardness =
            percent < 0 ? fields->negativeHardness : std::min(percent, 100);
}

} // namespace vellum
