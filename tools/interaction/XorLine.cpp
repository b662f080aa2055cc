#include "tools/interaction/XorLine.h"

#include "tools/interaction/ViewMeasure.h"

#include <maya/M3dView.h>

#ifdef __APPLE__
#include <OpenGL/gl.h>
#else
#ifdef _WIN32
#include <windows.h>
#endif
#include <GL/gl.h>
#endif

namespace vellum {

void XorLine::draw(const QPolygonF& line) {
    erase();
    line_ = line;
    toggle();
}

void XorLine::erase() {
    if (drawn_)
        toggle();
}

void XorLine::toggle() {
    drawn_ = !drawn_;
    M3dView view;
    if (!activeView(view))
        return;
    view.beginXorDrawing();
    glBegin(GL_LINE_LOOP);
    for (const QPointF& point : line_)
        glVertex2d(point.x(), point.y());
    glEnd();
    view.endXorDrawing();
}

} // namespace vellum
