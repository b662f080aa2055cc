#include "tools/interaction/ScreenMarker.h"

#include "tools/gestures/AdjustMarker.h"
#include "tools/interaction/OpenGl.h"
#include "tools/interaction/ViewMeasure.h"

#include <QImage>
#include <QPainter>

#include <maya/M3dView.h>

#include <cmath>
#include <utility>

namespace vellum {

namespace {

QRectF ringArea(const AdjustMarker& marker, double radius) {
    return {marker.centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)};
}

/// What the marker covers of the view, in whole pixels.
QRect areaOf(const AdjustMarker& marker, QSize view) {
    const double reach = marker.outerRadius() + marker.lineWidth;
    return ringArea(marker, reach).united(marker.box).toAlignedRect() & QRect(QPoint(0, 0), view);
}

/// That part of the view, its first row at the bottom as OpenGL has it.
QImage pictureOf(const AdjustMarker& marker, const QRect& area) {
    QImage image(area.size(), QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.setPen(QPen(Qt::black, marker.lineWidth));
    painter.drawEllipse(ringArea(marker, marker.outerRadius()));
    painter.setPen(QPen(Qt::white, marker.lineWidth));
    painter.drawEllipse(ringArea(marker, marker.radius));
    painter.fillRect(marker.box, QColor(0, 0, 0, 200));
    QFont font;
    font.setPixelSize(marker.fontSize);
    painter.setFont(font);
    // Upside down, like the rows.
    painter.translate(0.0, marker.box.center().y());
    painter.scale(1.0, -1.0);
    painter.translate(0.0, -marker.box.center().y());
    painter.drawText(marker.box, Qt::AlignCenter, marker.number);
    return image;
}

void showPixels(const QImage& image, QPoint corner) {
    glDisable(GL_COLOR_LOGIC_OP);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glRasterPos2i(corner.x(), corner.y());
    glDrawPixels(image.width(), image.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.constBits());
}

} // namespace

void ScreenMarker::draw(const AdjustMarker& marker) {
    erase();
    M3dView view;
    if (!activeView(view))
        return;
    const QRect area = areaOf(marker, {view.portWidth(), view.portHeight()});
    if (area.isEmpty())
        return;
    // The way to the screen is that of a line by exclusive-or; this is drawn over it as it is, as
    // nothing that only inverts can be told from a background of many colours.
    view.beginXorDrawing();
    showPixels(pictureOf(marker, area), area.topLeft());
    view.endXorDrawing();
    drawn_ = true;
}

void ScreenMarker::erase() {
    M3dView view;
    if (std::exchange(drawn_, false) && activeView(view))
        view.refresh(false, true); // now: what is drawn next goes straight to the screen
}

} // namespace vellum
