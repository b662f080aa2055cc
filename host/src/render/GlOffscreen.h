#pragma once

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <memory>

namespace host {

/// The format every view's context has: OpenGL 2.1 with the fixed functions, depth, no alpha.
QSurfaceFormat viewFormat();

/// A context of the program's own for drawing without a window. Made at first use, given up
/// before the application object ends.
class GlOffscreen {
public:
    /// Null without a graphical application or without OpenGL.
    static GlOffscreen* instance();

    bool makeCurrent();
    void doneCurrent();

private:
    GlOffscreen();

    QOffscreenSurface surface_;
    QOpenGLContext context_;
    bool usable_ = false;
};

/// Keeps whichever context was current and makes it so again.
class CurrentContext {
public:
    CurrentContext();
    ~CurrentContext();
    CurrentContext(const CurrentContext&) = delete;
    CurrentContext& operator=(const CurrentContext&) = delete;

private:
    QOpenGLContext* context_;
    QSurface* surface_;
};

} // namespace host
