#pragma once

#include "render/DrawManager.h"
#include "render/Frame.h"
#include "render/Renderer.h"
#include "render/ViewDisplay.h"

#include <QImage>
#include <QSize>

#include <maya/M3dView.h>
#include <maya/MDagPath.h>

#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace host {

/// A 3D view: a camera and a port to draw into. Registers itself with Views for its lifetime, and
/// becomes the active view when it is the first. Knows nothing of the widget that shows it but a
/// pointer and the functions given here.
class View {
public:
    /// What the widget of a view can be asked for. All may be empty (a view without a widget).
    struct Surface {
        QWidget* widget = nullptr; ///< Not owned.
        /// Makes the view's OpenGL context current, its framebuffer bound; false when it cannot.
        std::function<bool()> makeCurrent;
        std::function<void()> doneCurrent;
        /// now: paint before returning; otherwise when the event loop gets to it.
        std::function<void(bool now)> repaint;
        std::function<bool()> visible;
    };

    explicit View(std::string panelName = {});
    ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    int id() const { return id_; }
    const std::string& panelName() const { return panelName_; }
    void setPanelName(std::string name) { panelName_ = std::move(name); }

    void setSurface(Surface surface) { surface_ = std::move(surface); }
    const Surface& surface() const { return surface_; }

    /// Device pixels; at least 1 x 1 is kept.
    void setPortSize(int width, int height);
    int portWidth() const { return width_; }
    int portHeight() const { return height_; }

    /// The camera shape. When the camera is gone, the view falls back to persp, or to the first
    /// camera there is; an invalid path when the scene has none.
    MDagPath camera() const;
    /// A camera shape or a transform above one; false, and nothing changed, for anything else.
    bool setCamera(const MDagPath& camera);

    Renderer renderer() const { return renderer_; }
    void setRenderer(Renderer renderer);

    bool gridShown() const { return grid_; }
    void setGridShown(bool shown) { grid_ = shown; }
    /// Whether locators that let themselves be excluded are drawn.
    bool locatorsShown() const { return locators_; }
    void setLocatorsShown(bool shown) { locators_ = shown; }
    const ViewDisplay& display() const { return display_; }
    void setDisplay(ViewDisplay display) { display_ = std::move(display); }
    /// Film gate outline in the view.
    bool filmGateShown() const { return filmGate_; }
    void setFilmGateShown(bool shown) { filmGate_ = shown; }

    /// The frame a refresh at this moment would draw.
    std::shared_ptr<const Frame> frame() const;

    /// Draws everything into the bound framebuffer of the current compatibility context, the
    /// whole port. After direct drawing into the view (see beginDirect) one call keeps the picture
    /// instead, unless a refresh was asked for meanwhile; the surface must preserve its contents
    /// between paints (QOpenGLWidget::PartialUpdate).
    void paint();

    /// Asks the widget to paint; without a widget nothing happens.
    void refresh(bool now = false);

    /// Draws off screen at that size (device pixels) with a context of the program's own. The
    /// port has that size meanwhile. A null image when no OpenGL can be had.
    QImage renderToImage(const QSize& size);

    /// What a tool wants to see drawn over the scene, until replaced; drawn in viewport2 only.
    void setToolDrawables(DrawList drawables) { toolDrawables_ = std::move(drawables); }
    const DrawList& toolDrawables() const { return toolDrawables_; }
    /// Called at every refresh in viewport2, to draw what a tool shows all the time.
    void setFeedback(std::function<void(DrawManager&, const MHWRender::MFrameContext&)> feedback) {
        feedback_ = std::move(feedback);
    }

    /// Brackets drawing by a plug-in straight into the view. Inside a paint the context is already
    /// current and nothing is switched. False when no context can be made current.
    bool beginDirect();
    void endDirect();
    /// The picture that is shown is out of date: what was drawn directly may go.
    void invalidate() {
        keepPicture_ = false;
        isOutOfDate_ = true;
    }

    M3dView handle() const;
    /// Null for a handle whose view is gone.
    static View* fromHandle(const M3dView& handle);

private:
    void paintScene();

    int id_;
    std::string panelName_;
    Surface surface_;
    int width_ = 1;
    int height_ = 1;
    mutable MDagPath camera_;
    Renderer renderer_;
    bool grid_ = true;
    bool filmGate_ = false;
    bool locators_ = true;
    ViewDisplay display_;
    std::function<void(DrawManager&, const MHWRender::MFrameContext&)> feedback_;
    DrawList toolDrawables_;
    int painting_ = 0;         ///< Depth of paint calls: a context is current.
    int direct_ = 0;           ///< Depth of beginDirect.
    bool keepPicture_ = false; ///< The next paint shows what was drawn directly.
    bool isOutOfDate_ = true;  ///< The picture that is shown.
};

} // namespace host
