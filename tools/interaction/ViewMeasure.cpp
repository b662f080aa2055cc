#include "tools/interaction/ViewMeasure.h"

#include "node/CameraFit.h"

#include <maya/M3dView.h>

namespace vellum {

bool activeView(M3dView& view) {
    MStatus status;
    const M3dView active = M3dView::active3dView(&status);
    if (status != MS::kSuccess)
        return false;
    view = active;
    return true;
}

bool viewMapping(M3dView& view, ViewMapping& mapping) {
    GateFit fit;
    if (!fitForView(view, fit))
        return false;
    mapping = viewMappingOf(fit);
    return true;
}

bool activeViewMapping(ViewMapping& mapping) {
    M3dView view;
    return activeView(view) && viewMapping(view, mapping);
}

QSize activeViewSize() {
    M3dView view;
    return activeView(view) ? QSize(view.portWidth(), view.portHeight()) : QSize(0, 0);
}

bool isActiveViewViewport2() {
    M3dView view;
    return activeView(view) && view.getRendererName() == M3dView::kViewport2Renderer;
}

} // namespace vellum
