#include "node/CameraFit.h"

#include "plugin/base/Settings.h"

#include <maya/M3dView.h>
#include <maya/MCommonRenderSettingsData.h>
#include <maya/MFnCamera.h>
#include <maya/MMatrix.h>
#include <maya/MRenderUtil.h>

namespace vellum {

namespace {

double renderAspect() {
    MCommonRenderSettingsData render;
    MRenderUtil::getCommonRenderSettings(render);
    return render.height > 0 ? static_cast<double>(render.width) / render.height : 1.0;
}

} // namespace

GateFit fitForCamera(const MDagPath& cameraPath, int portWidth, int portHeight) {
    MStatus status;
    const MFnCamera camera(cameraPath, &status);
    if (status != MS::kSuccess)
        return {};
    GateFitInput input;
    input.filmFit = static_cast<FilmFit>(camera.filmFit());
    input.orthographic = camera.isOrtho();
    input.overscan = camera.overscan();
    input.cameraAspect = camera.aspectRatio();
    input.renderAspect = renderAspect();
    input.portWidth = portWidth;
    input.portHeight = portHeight;
    input.panZoom = camera.panZoomEnabled() && !settings().ignore2dPanZoom;
    input.zoom = camera.zoom();
    return fitToGate(input);
}

MPoint pannedCentre(const MDagPath& cameraPath) {
    const MFnCamera camera(cameraPath);
    return MPoint(camera.horizontalPan(), camera.verticalPan(), camera.farClippingPlane(), 1.0) *
           cameraPath.inclusiveMatrix();
}

bool fitForView(M3dView& view, GateFit& fit) {
    MDagPath camera;
    if (view.getCamera(camera) != MS::kSuccess)
        return false;
    GateFit fitted = fitForCamera(camera, view.portWidth(), view.portHeight());
    if (fitted.pan) {
        short x = 0;
        short y = 0;
        view.worldToView(pannedCentre(camera), x, y);
        compensatePan(fitted, x, y);
    }
    fit = fitted;
    return true;
}

} // namespace vellum
