#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

namespace host {

/// What a camera's picture depends on, read from its node. Lengths on film are inches.
struct CameraLens {
    bool orthographic = false;
    double orthographicWidth = 10; ///< Scene units.
    double focalLength = 35;       ///< Millimetres.
    double apertureWidth = 1.41732;
    double apertureHeight = 0.94488;
    double squeeze = 1;
    double scale = 1; ///< cameraScale.
    double nearClip = 0.1;
    double farClip = 10000;
    int filmFit = 0; ///< MFnCamera::FilmFit: 0 fill, 1 horizontal, 2 vertical, 3 overscan.
    double overscan = 1;
    double filmOffsetX = 0, filmOffsetY = 0;
    bool panZoom = false;
    double panX = 0, panY = 0; ///< Film inches.
    double zoom = 1;
};

/// The camera of a path to a camera shape or its transform; defaults for anything else.
CameraLens readLens(const MDagPath& camera);

/// Scene units at the near plane (perspective) or anywhere (orthographic) that one inch of film
/// takes.
double unitsPerFilmInch(const CameraLens& lens);

/// Sides of the view at the near plane (perspective) or anywhere (orthographic), scene units.
struct Frustum {
    double left = -1, right = 1, bottom = -1, top = 1;
};

/// The part of the camera's picture that a view of this aspect (width / height) shows: the film
/// fitted into the view by film fit, enlarged by overscan, then panned and zoomed. A zoom of zero
/// or less counts as 0.001.
Frustum viewFrustum(const CameraLens& lens, double aspect);

/// OpenGL clip space for row vectors.
MMatrix projectionMatrix(const CameraLens& lens, double aspect);

/// Inverse of the camera's world matrix, without its scale.
MMatrix viewMatrix(const MDagPath& camera);

} // namespace host
