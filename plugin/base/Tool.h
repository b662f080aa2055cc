// The tools, as settings, scripts, panels and strokes know them. What each is called, does and can
// be set to stands in ToolTable.h.
#pragma once

#include <cstdint>

namespace vellum {

enum class Tool : std::int32_t {
    Pencil = 0,
    Brush = 1,
    Eraser = 2,
    Text = 3,
    Line = 4,
    Arrow = 5,
    Ellipse = 6,
    Rectangle = 7,
    Transform = 8, ///< Region transform: a kind of stroke, never an active tool.
};

/// Tools an artist can choose, numbered from 0.
inline constexpr int kDrawToolCount = static_cast<int>(Tool::Transform);

/// As files and scripts have it.
constexpr int numberOf(Tool tool) {
    return static_cast<int>(tool);
}

} // namespace vellum
