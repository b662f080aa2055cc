// Drawing calls whose arguments differ between Maya releases.
#pragma once

#include <maya/MTextureManager.h>
#include <maya/MUIDrawManager.h>

namespace vellum {

namespace detail {

template <typename Manager>
auto setUncutTexture(Manager& manager, MHWRender::MTexture* texture, int)
    -> decltype(manager.setTexture(texture, {}, 0.0F), void()) {
    manager.setTexture(texture, {}, 0.0F);
}

template <typename Manager>
void setUncutTexture(Manager& manager, MHWRender::MTexture* texture, long) {
    manager.setTexture(texture);
}

} // namespace detail

/// Sets the texture of what follows. Recent releases discard pixels whose alpha lies under a
/// threshold (0.05 unless told), which would cut off faint strokes: it is 0 here.
inline void setUncutTexture(MHWRender::MUIDrawManager& manager, MHWRender::MTexture* texture) {
    detail::setUncutTexture(manager, texture, 0);
}

} // namespace vellum
