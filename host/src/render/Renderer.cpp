#include "render/Renderer.h"

#include "render/View.h"
#include "render/Views.h"

namespace host {

namespace {
Renderer& current() {
    static Renderer renderer = Renderer::Viewport2;
    return renderer;
}
} // namespace

Renderer defaultRenderer() {
    return current();
}

void setDefaultRenderer(Renderer renderer) {
    current() = renderer;
    for (View* view : Views::instance().all())
        view->setRenderer(renderer);
}

std::string rendererName(Renderer renderer) {
    return renderer == Renderer::Viewport2 ? "vp2Renderer" : "base_OpenGL_Renderer";
}

bool rendererFromName(const std::string& name, Renderer& renderer) {
    if (name == "vp2Renderer" || name == "vp2")
        renderer = Renderer::Viewport2;
    else if (name == "base_OpenGL_Renderer" || name == "legacy")
        renderer = Renderer::Legacy;
    else
        return false;
    return true;
}

} // namespace host
