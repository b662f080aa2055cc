// Everything that tells one tool from another, one row a tool. Settings, script flags, menus,
// panels and the pixel code read it here. A new tool is an enumerator in Tool.h, a row here, the
// pixels of its kind, and its slot in DrawContextInputHandler.
#pragma once

#include "plugin/base/Tool.h"

#include <array>
#include <cstddef>

namespace vellum {

/// How the pixels of a tool's stroke come about.
enum class ToolKind {
    Stepped, ///< freehand: hard dabs along the line
    Soft,    ///< freehand: dabs that fade towards their rim and add up
    Erasing, ///< freehand: takes away, so its stroke image stands for the whole frame
    Shape,   ///< spans from the press to the pointer
    Text,    ///< typed where the press was
    Region,  ///< Tool::Transform: pixels lifted out of the frame
};

/// How long an option's value is kept.
enum class Keep {
    Nowhere, ///< the tool has no such option
    Session, ///< until the plug-in goes: only scripts set it
    File,    ///< in the settings file: panels and keys offer it
};

struct FlagNames {
    const char* shortName;
    const char* longName;
};

struct IconInfo {
    const char* file;
    int padding; ///< pixels between the icon and its button's border, both sides together
};

struct SizeOption {
    int factory;
    int largest; ///< from 1 on
};

struct OpacityOption {
    Keep keep;
};

struct TabletOption {
    Keep keep;
    bool factory;
};

struct HardnessOption {
    Keep keep;       ///< never Keep::File
    int forNegative; ///< what a negative value becomes
};

/// A row. Sizes are image pixels, opacity and hardness percent.
struct ToolInfo {
    Tool tool;
    ToolKind kind;
    const char* name; ///< in menus and on panels; also inside the names of slots and menu items
    const char* key;  ///< begins the names of its keys in the settings file
    IconInfo icon;
    FlagNames toolFlag;    ///< of rvVellumUtil: makes it the active tool
    FlagNames optionsFlag; ///< of rvVellumUtil: sets size, opacity and what else the tool has
    SizeOption size;
    OpacityOption opacity;
    TabletOption tablet; ///< whether pressure drives the opacity
    HardnessOption hardness;
    const char* factoryFont; ///< null: the tool has no font
};

inline constexpr TabletOption kNoTablet{Keep::Nowhere, false};
inline constexpr HardnessOption kNoHardness{Keep::Nowhere, 100};

// clang-format off
inline constexpr std::array<ToolInfo, kDrawToolCount> kTools{{
    {Tool::Pencil, ToolKind::Stepped, "Pencil", "pencil", {":/icons/pencil.png", 12},
     {"-pt", "-pencilTool"}, {"-po", "-pencilOptions"},
     {6, 100}, {Keep::File}, {Keep::File, false}, kNoHardness, nullptr},
    {Tool::Brush, ToolKind::Soft, "Brush", "brush", {":/icons/brush.png", 12},
     {"-bt", "-brushTool"}, {"-bo", "-brushOptions"},
     {6, 100}, {Keep::File}, {Keep::File, true}, {Keep::Session, 10}, nullptr},
    {Tool::Eraser, ToolKind::Erasing, "Eraser", "eraser", {":/icons/eraser.png", 10},
     {"-et", "-eraserTool"}, {"-eo", "-eraserOptions"},
     {40, 100}, {Keep::Session}, {Keep::Session, false}, {Keep::Session, 0}, nullptr},
    {Tool::Text, ToolKind::Text, "Text", "text", {":/icons/text.png", 16},
     {"-tt", "-textTool"}, {"-txo", "-textOptions"},
     {20, 100}, {Keep::File}, kNoTablet, kNoHardness, "Arial"},
    {Tool::Line, ToolKind::Shape, "Line", "line", {":/icons/line.png", 16},
     {"-lt", "-lineTool"}, {"-lo", "-lineOptions"},
     {6, 50}, {Keep::File}, kNoTablet, kNoHardness, nullptr},
    {Tool::Arrow, ToolKind::Shape, "Arrow", "arrow", {":/icons/arrow.png", 18},
     {"-at", "-arrowTool"}, {"-ao", "-arrowOptions"},
     {6, 50}, {Keep::File}, kNoTablet, kNoHardness, nullptr},
    {Tool::Ellipse, ToolKind::Shape, "Ellipse", "ellipse", {":/icons/ellipse.png", 16},
     {"-elt", "-ellipseTool"}, {"-elo", "-ellipseOptions"},
     {6, 50}, {Keep::File}, kNoTablet, kNoHardness, nullptr},
    {Tool::Rectangle, ToolKind::Shape, "Rectangle", "rectangle", {":/icons/rectangle.png", 16},
     {"-rt", "-rectangleTool"}, {"-ro", "-rectangleOptions"},
     {6, 50}, {Keep::File}, kNoTablet, kNoHardness, nullptr},
}};
// clang-format on

/// Null for what is no tool to choose: Tool::Transform, and numbers from outside that name none.
constexpr const ToolInfo* findTool(Tool tool) {
    const int number = numberOf(tool);
    return number >= 0 && number < kDrawToolCount ? &kTools[static_cast<std::size_t>(number)]
                                                  : nullptr;
}

constexpr ToolKind kindOf(Tool tool) {
    const ToolInfo* info = findTool(tool);
    return info ? info->kind : ToolKind::Region;
}

constexpr bool isFreehand(ToolKind kind) {
    return kind == ToolKind::Stepped || kind == ToolKind::Soft || kind == ToolKind::Erasing;
}

constexpr bool rowsStandByNumber() {
    for (std::size_t i = 0; i < kTools.size(); ++i) {
        if (kTools[i].tool != static_cast<Tool>(i))
            return false;
    }
    return true;
}
static_assert(rowsStandByNumber(), "each tool to choose has its row, in the order of the numbers");

} // namespace vellum
