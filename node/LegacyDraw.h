// The picture as a textured quad over the legacy viewport, in plain OpenGL 2.
#pragma once

#include "node/GateFit.h"

#include <QImage>
#include <QPoint>

#include <array>

class M3dView;

namespace vellum {

/// Owns one OpenGL texture, made at the first draw and used in every view (their contexts share).
/// Main thread only.
class LegacyDraw {
public:
    /// A closed line of view pixels.
    using Outline = std::array<QPoint, 4>;

    /// `image`: 1024 x 1024 RGBA8888, straight alpha. `outline` may be null.
    void draw(M3dView& view, const GateFit& fit, const QImage& image, float opacity,
              const Outline* outline = nullptr);

private:
    void createTexture();

    bool created_ = false;
    unsigned texture_ = 0;
};

} // namespace vellum
