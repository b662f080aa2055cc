// When the time slider shows the frames of the active layer.
#pragma once

#include <cstdint>

namespace vellum {

enum class TimelineDisplay : std::int32_t {
    Always = 0,
    WhileInUse = 1, ///< a node is selected or a tool context is active
    Never = 2,
};

inline constexpr int kTimelineDisplayCount = 3;

/// As files and scripts have it.
constexpr int numberOf(TimelineDisplay mode) {
    return static_cast<int>(mode);
}

} // namespace vellum
