// The picture as a textured quad over the legacy viewport, in plain OpenGL 2.
#pragma once

#include "node/GateFit.h"

#include <QImage>

class M3dView;

namespace vellum {

/// Owns one OpenGL texture, made at the first draw and used in every view (their contexts share).
/// Main thread only.
class LegacyDraw {
public:
    /// `image`: 1024 x 1024 RGBA8888, straight alpha.
    void draw(M3dView& view, const GateFit& fit, const QImage& image, float opacity);

private:
    void createTexture();

    bool created_ = false;
    unsigned texture_ = 0;
};

} // namespace vellum
