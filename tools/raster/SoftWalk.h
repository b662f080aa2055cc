// The walk of the brush's soft line: Wu's line along its longer axis, and the dabs of each step.
#pragma once

#include "tools/raster/StrokePoint.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace vellum {

/// One pair of dabs. `major` runs along the line's longer axis, `minor` across.
struct SoftStep {
    int major = 0;
    int minor = 0;        ///< of the first dab; the second lies at minor + 1
    float near = 0.0F;    ///< weight of the first dab
    float far = 0.0F;     ///< weight of the second dab
    float opacity = 1.0F; ///< of the stroke here
};

/// The line in coordinates along and across its longer axis, running forward.
struct SoftWalk {
    bool steep = false;
    bool reversed = false;
    int major0 = 0, minor0 = 0, major1 = 0, minor1 = 0;
    float gradient = 0.0F;

    SoftWalk(const StrokePoint& from, const StrokePoint& to) {
        steep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
        major0 = steep ? from.y : from.x;
        minor0 = steep ? from.x : from.y;
        major1 = steep ? to.y : to.x;
        minor1 = steep ? to.x : to.y;
        reversed = major0 > major1;
        if (reversed) {
            std::swap(major0, major1);
            std::swap(minor0, minor1);
        }
        if (major1 != major0)
            gradient = static_cast<float>(minor1 - minor0) / static_cast<float>(major1 - major0);
    }

    int length() const { return major1 - major0; }

    /// Pixels from the start after `along` steps.
    float distance(float along) const {
        const float across = gradient * along;
        return std::sqrt(along * along + across * across);
    }

    /// Steps are counted 0..count()-1; both ends have one even when they are the same pixel.
    int count() const { return std::max(length(), 1) + 1; }

    /// Place and weights of a step, without its opacity.
    SoftStep step(int number) const {
        const int i = std::min(number, length());
        const bool end = number == 0 || number == count() - 1;
        const float share = end ? 0.5F : 1.0F; // gap between a pixel's centre and its border
        // The last point is a pixel, which the sum of many rounded parts may just miss.
        const float across = i == length() && i > 0
                                 ? static_cast<float>(minor1)
                                 : static_cast<float>(minor0) + gradient * static_cast<float>(i);
        const float below = std::floor(across);
        SoftStep step;
        step.major = major0 + i;
        step.minor = static_cast<int>(below);
        step.near = (1.0F - (across - below)) * share;
        step.far = (across - below) * share;
        return step;
    }
};

} // namespace vellum
