#include "render/View.h"

#include "render/CameraFit.h"
#include "render/DrawOverrides.h"
#include "render/GlOffscreen.h"
#include "render/ScenePainter.h"
#include "render/TextureStore.h"
#include "render/Views.h"

#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <maya/MFn.h>
#include <maya/MItDag.h>
#include <maya/MObjectHandle.h>

#include <algorithm>

namespace host {

namespace {

int nextId() {
    static int last = 0;
    return ++last;
}

bool usable(const MDagPath& path) {
    return path.isValid() && MObjectHandle(path.node()).isValid();
}

/// persp when there is one, else the first camera.
MDagPath fallbackCamera() {
    MDagPath first;
    for (MItDag it(MItDag::kDepthFirst, MFn::kCamera); !it.isDone(); it.next()) {
        MDagPath path;
        if (!it.getPath(path))
            continue;
        if (path.partialPathName() == MString("perspShape"))
            return path;
        if (!first.isValid())
            first = path;
    }
    return first;
}

} // namespace

View::View(std::string panelName)
    : id_(nextId()), panelName_(std::move(panelName)), renderer_(defaultRenderer()) {
    Views::instance().add(this);
}

View::~View() {
    DrawOverrides::instance().forget(*this);
    Views::instance().remove(this);
}

void View::setPortSize(int width, int height) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    if (width == width_ && height == height_)
        return;
    width_ = width;
    height_ = height;
    invalidate();
}

MDagPath View::camera() const {
    if (!usable(camera_))
        camera_ = fallbackCamera();
    return camera_;
}

bool View::setCamera(const MDagPath& camera) {
    if (!usable(camera))
        return false;
    MDagPath path(camera);
    if (path.apiType() != MFn::kCamera)
        path.extendToShape();
    if (path.apiType() != MFn::kCamera)
        return false;
    camera_ = path;
    invalidate();
    return true;
}

void View::setRenderer(Renderer renderer) {
    renderer_ = renderer;
    invalidate();
}

std::shared_ptr<const Frame> View::frame() const {
    auto frame = std::make_shared<Frame>();
    frame->width = width_;
    frame->height = height_;
    frame->camera = camera();
    CameraLens lens = readLens(frame->camera);
    lens.panZoom = lens.panZoom && !display_.ignorePanZoom;
    frame->projection = projectionMatrix(lens, double(width_) / height_);
    if (frame->camera.isValid())
        frame->view = viewMatrix(frame->camera);
    return frame;
}

void View::paint() {
    if (keepPicture_) {
        keepPicture_ = false;
        return;
    }
    isOutOfDate_ = false;
    ++painting_;
    TextureStore::instance().collect();
    DrawOverrides::instance().sweep();
    const std::shared_ptr<const Frame> now = frame();
    DrawList drawables = ScenePainter(*this, now).paint();
    if (renderer_ == Renderer::Viewport2) {
        drawItems(drawables, *now);
        if (feedback_) {
            DrawManager manager("tool");
            feedback_(manager, *FrameAccess::context(now));
            drawItems(manager.take(), *now);
        }
        drawItems(toolDrawables_, *now);
    }
    --painting_;
}

void View::refresh(bool now) {
    // What changes while a view is drawn is in the picture already, or would ask without end.
    if (painting_ > 0)
        return;
    invalidate();
    if (surface_.repaint)
        surface_.repaint(now);
    // Qt may put off what should be painted now, while the window system is still busy with the
    // picture before.
    if (now && isOutOfDate_ && surface_.visible && surface_.visible() && beginDirect()) {
        paint();
        endDirect();
    }
}

QImage View::renderToImage(const QSize& size) {
    if (size.isEmpty())
        return {};
    const CurrentContext keeper;
    const bool ownContext = !(surface_.makeCurrent && surface_.makeCurrent());
    if (ownContext) {
        GlOffscreen* offscreen = GlOffscreen::instance();
        if (!offscreen || !offscreen->makeCurrent())
            return {};
    }
    QImage image;
    const int width = width_;
    const int height = height_;
    const bool keep = keepPicture_;
    const bool outOfDate = isOutOfDate_;
    {
        QOpenGLFramebufferObject target(size, QOpenGLFramebufferObject::CombinedDepthStencil);
        if (target.isValid() && target.bind()) {
            setPortSize(size.width(), size.height());
            invalidate();
            paint();
            target.release();
            // Alpha was never written: the picture is opaque.
            image = target.toImage();
            image.reinterpretAsFormat(QImage::Format_RGB32);
        }
    }
    width_ = width;
    height_ = height;
    keepPicture_ = keep;
    isOutOfDate_ = outOfDate;
    return image;
}

bool View::beginDirect() {
    if (direct_ == 0 && painting_ == 0) {
        if (!surface_.makeCurrent || !surface_.makeCurrent())
            return false;
        glViewport(0, 0, width_, height_);
    }
    ++direct_;
    return true;
}

void View::endDirect() {
    if (direct_ == 0 || --direct_ > 0 || painting_ > 0)
        return;
    glFlush();
    if (surface_.doneCurrent)
        surface_.doneCurrent();
    if (surface_.repaint)
        surface_.repaint(false);
    keepPicture_ = true;
}

M3dView View::handle() const {
    return M3dView(id_);
}

View* View::fromHandle(const M3dView& handle) {
    return Views::instance().byId(handle.id_);
}

} // namespace host
