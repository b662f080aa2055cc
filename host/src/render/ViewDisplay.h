#pragma once

#include <maya/M3dView.h>

#include <set>
#include <string>

namespace host {

/// How one view shows the scene.
struct ViewDisplay {
    M3dView::DisplayStyle style = M3dView::kGouraudShaded;
    std::string lights = "default"; ///< any others light nothing, as the scene has no lights
    bool wireframeOnShaded = false; ///< lines over shaded faces
    bool xray = false;              ///< shaded faces let through what is behind
    bool backfaceCulling = false;
    bool twoSidedLighting = true;
    bool selectionHighlight = true;
    bool smoothLines = false;
    bool ignorePanZoom = false; ///< the camera's 2D pan and zoom
    double lineWidth = 1;       ///< device pixels

    /// Kinds of objects that are not drawn, by the names scripts have for them ("polymeshes").
    std::set<std::string> hidden;
    bool shows(const std::string& kind) const { return hidden.count(kind) == 0; }
};

} // namespace host
