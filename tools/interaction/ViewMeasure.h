// The active 3D view as the tools measure it. Main thread only.
#pragma once

#include "tools/raster/ViewToImage.h"

#include <QSize>

class M3dView;

namespace vellum {

/// False, leaving `view` alone, when no 3D view is active.
bool activeView(M3dView& view);

/// Where the drawing lies in the active view. False, leaving `mapping` alone, when no view shows a
/// camera.
bool activeViewMapping(ViewMapping& mapping);
bool viewMapping(M3dView& view, ViewMapping& mapping);

/// Device pixels; 0 without a view.
QSize activeViewSize();

/// Whether Viewport 2.0 draws the active view; the legacy renderer does otherwise.
bool isActiveViewViewport2();

} // namespace vellum
