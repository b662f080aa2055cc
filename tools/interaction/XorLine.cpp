#include "tools/interaction/XorLine.h"

#include "tools/interaction/OpenGl.h"
#include "tools/interaction/ViewMeasure.h"

#include <maya/M3dView.h>

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
