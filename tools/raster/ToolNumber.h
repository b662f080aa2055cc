// Tool numbers as the pixel rules know them; the same numbers stand in settings and scripts.
#pragma once

namespace vellum::tool {

inline constexpr int kPencil = 0;
inline constexpr int kBrush = 1;
inline constexpr int kEraser = 2;
inline constexpr int kText = 3;
inline constexpr int kLine = 4;
inline constexpr int kArrow = 5;
inline constexpr int kEllipse = 6;
inline constexpr int kRectangle = 7;
inline constexpr int kTransform = 8; ///< region transform: a kind of stroke, never an active tool

constexpr bool isFreehand(int tool) {
    return tool >= kPencil && tool <= kEraser;
}
constexpr bool isShape(int tool) {
    return tool >= kLine && tool <= kRectangle;
}

} // namespace vellum::tool
