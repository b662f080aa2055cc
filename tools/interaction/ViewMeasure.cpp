#include "tools/interaction/ViewMeasure.h"

#include "node/CameraFit.h"

#include <maya/M3dView.h>

namespace vellum {

bool viewMapping(M3dView& view, ViewMapping& mapping) {
    GateFit fit;
    if (!fitForView(view, fit))
        return false;
    mapping = viewMappingOf(fit);
    return true;
}

bool activeViewMapping(ViewMapping& mapping) {
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    return status == MS::kSuccess && viewMapping(view, mapping);
}

int activeViewHeight() {
    MStatus status;
    const M3dView view = M3dView::active3dView(&status);
    return status == MS::kSuccess ? view.portHeight() : 0;
}

bool isActiveViewViewport2() {
    MStatus status;
    const M3dView view = M3dView::active3dView(&status);
    return status == MS::kSuccess && view.getRendererName() == M3dView::kViewport2Renderer;
}

} // namespace vellum
