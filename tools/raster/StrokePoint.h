// One sample of a stroke.
#pragma once

namespace vellum {

struct StrokePoint {
    int width = 1;         ///< tool size, image pixels: 1..100, shapes 1..50
    float opacity = 1.0F;  ///< 0..1: the tool's opacity, times pressure where a tablet drives it
    float hardness = 1.0F; ///< 0..1: carried along, no pixel rule uses it
    int x = 0;             ///< image pixels from the left, may lie outside the canvas
    int y = 0;             ///< image pixels from the top
};

} // namespace vellum
