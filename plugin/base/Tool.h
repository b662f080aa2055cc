// Numbers of the drawing tools, shared by settings, scripts, panels and strokes.
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

inline constexpr int kDrawToolCount = 8; ///< Tools an artist can choose, numbered from 0.

} // namespace vellum
