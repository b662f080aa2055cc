// Where the square drawing lies in a view: fitted to the camera's film gate, following its 2D pan
// and zoom. Pure arithmetic; CameraFit.h feeds it from Maya.
//
// Space: view pixels (device pixels), origin at the bottom left.
#pragma once

#include "tools/raster/ViewToImage.h"

namespace vellum {

/// Numbers of MFnCamera::FilmFit.
enum class FilmFit { Fill = 0, Horizontal = 1, Vertical = 2, Overscan = 3 };

struct GateFitInput {
    FilmFit filmFit = FilmFit::Fill;
    bool orthographic = false;
    double overscan = 1.0;
    double cameraAspect = 1.0; ///< MFnCamera::aspectRatio
    double renderAspect = 1.0; ///< render resolution, width / height
    int portWidth = 1024;
    int portHeight = 1024;
    bool panZoom = false; ///< 2D pan/zoom enabled at the camera and not ignored by preference
    double zoom = 1.0;    ///< 0 or less counts as 0.001
};

struct GateFit {
    int portWidth = 1024;
    int portHeight = 1024;
    int size = 1024;       ///< S: side of the gate square before zoom, whole pixels
    float halfSize = 1.0F; ///< h: half extent of the square on screen
    double originX = 0.0;  ///< centre of the square on screen
    double originY = 0.0;
    bool pan = false;        ///< pan compensation applies
    float quadSize = 1.0F;   ///< q: side of the square on screen, after zoom
    double panOffsetX = 0.0; ///< view centre minus centre of the square
    double panOffsetY = 0.0;
};

/// Everything but the pan compensation. A port without height gives a square of no size.
GateFit fitToGate(const GateFitInput& input);

/// Moves the square so that its centre is (x, y), the panned camera centre projected to the view.
/// Does nothing when the fit has no pan.
void compensatePan(GateFit& fit, double x, double y);

/// Lower left corner of the square.
struct QuadCorner {
    float x = 0.0F;
    float y = 0.0F;
};
QuadCorner lowerLeftCorner(const GateFit& fit);

/// The same place as the tools map to the pixels of the drawing.
ViewMapping viewMappingOf(const GateFit& fit);

} // namespace vellum
