#pragma once

#include "render/DrawManager.h"
#include "render/Frame.h"
#include "render/PrimitiveMesh.h"
#include "render/View.h"

#include <maya/MDagPath.h>
#include <maya/MSelectionList.h>

#include <memory>
#include <string>
#include <vector>

class MPxLocatorNode;

namespace host {

/// Draws the scene of one refresh: background, grid, shapes, plug-in objects.
class ScenePainter {
public:
    ScenePainter(View& view, std::shared_ptr<const Frame> frame);

    /// Into the bound framebuffer of the current context. Returns the UI drawables of the draw
    /// overrides, to be drawn over it.
    DrawList paint();

private:
    struct Locator {
        MDagPath path;
        MPxLocatorNode* node;
    };

    void background() const;
    void grid() const;
    void filmGate() const;
    void shape(const MDagPath& path);
    void mesh(const MDagPath& path, bool selected) const;
    void meshFaces(const PrimitiveMesh& faces) const;
    void cross(const MDagPath& path, bool selected) const;
    void pluginLocators();
    void drawLocator(const Locator& locator);
    bool selected(const MDagPath& path) const;

    View& view_;
    std::shared_ptr<const Frame> frame_;
    MSelectionList selection_;
    std::vector<Locator> locators_; ///< Those the legacy renderer asks to draw themselves.
    DrawList drawables_;
};

/// Whether views have the two-coloured background (the default) or a plain grey one.
bool gradientShown();
void setGradientShown(bool shown);

} // namespace host
