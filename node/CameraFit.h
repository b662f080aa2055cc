// The gate fit of a real camera in a real view. Main thread only.
#pragma once

#include "node/GateFit.h"

#include <maya/MDagPath.h>
#include <maya/MPoint.h>

class M3dView;

namespace vellum {

/// Fit of a camera for a port of the given size in device pixels, without pan compensation. The
/// default fit when the path is no camera.
GateFit fitForCamera(const MDagPath& cameraPath, int portWidth, int portHeight);

/// The panned centre of the camera in world space, to be projected to the view for compensatePan().
MPoint pannedCentre(const MDagPath& cameraPath);

/// Fit of the view's camera, pan compensated through the view: where the square lies in this view
/// now. False when the view has no camera; `fit` is untouched then.
bool fitForView(M3dView& view, GateFit& fit);

} // namespace vellum
