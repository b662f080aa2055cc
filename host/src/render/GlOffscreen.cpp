#include "render/GlOffscreen.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace host {

namespace {
std::unique_ptr<GlOffscreen>& holder() {
    static std::unique_ptr<GlOffscreen> offscreen;
    return offscreen;
}
} // namespace

QSurfaceFormat viewFormat() {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    return format;
}

GlOffscreen::GlOffscreen() {
    context_.setFormat(viewFormat());
    context_.setShareContext(QOpenGLContext::globalShareContext());
    if (!context_.create())
        return;
    surface_.setFormat(context_.format());
    surface_.create();
    usable_ = surface_.isValid();
}

GlOffscreen* GlOffscreen::instance() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return nullptr;
    if (!holder()) {
        holder().reset(new GlOffscreen);
        qAddPostRoutine([] { holder().reset(); });
    }
    return holder()->usable_ ? holder().get() : nullptr;
}

bool GlOffscreen::makeCurrent() {
    return context_.makeCurrent(&surface_);
}

void GlOffscreen::doneCurrent() {
    context_.doneCurrent();
}

CurrentContext::CurrentContext()
    : context_(QOpenGLContext::currentContext()),
      surface_(context_ ? context_->surface() : nullptr) {
}

CurrentContext::~CurrentContext() {
    if (context_)
        context_->makeCurrent(surface_);
    else if (QOpenGLContext* left = QOpenGLContext::currentContext())
        left->doneCurrent();
}

} // namespace host
