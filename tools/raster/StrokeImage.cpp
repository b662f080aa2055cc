#include "tools/raster/StrokeImage.h"

#include "tools/raster/FreehandRaster.h"
#include "tools/raster/ShapeRaster.h"

#include <algorithm>

namespace vellum {

namespace {

bool isPainted(Tool tool) {
    return tool == Tool::Text || isShape(tool);
}

} // namespace

QImage blankCanvas() {
    QImage canvas(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    canvas.fill(Qt::transparent);
    return canvas;
}

void prepareStrokeImage(QImage& strokeImage, Stroke& stroke, const QImage& frameImage) {
    stroke.lastDrawnIndex = 0;
    if (stroke.tool == Tool::Eraser && !frameImage.isNull()) {
        strokeImage = frameImage;
        return;
    }
    if (strokeImage.isNull() || !strokeImage.isDetached())
        strokeImage = QImage(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    // A canvas that was a copy of a frame has the resolution its file names, which scales text.
    const QImage usual(1, 1, QImage::Format_RGBA8888);
    strokeImage.setDotsPerMeterX(usual.dotsPerMeterX());
    strokeImage.setDotsPerMeterY(usual.dotsPerMeterY());
    QColor color(Qt::transparent);
    if (stroke.tool != Tool::Transform && stroke.tool != Tool::Eraser) {
        color = stroke.color;
        color.setAlpha(0);
    }
    strokeImage.fill(color);
}

QRect updateStrokeImage(QImage& strokeImage, Stroke& stroke) {
    stroke.dirty = false;
    if (isFreehand(stroke.tool)) {
        const QRect touched =
            drawFreehandSegments(strokeImage, stroke.points, stroke.lastDrawnIndex, stroke.tool);
        stroke.lastDrawnIndex = std::max(static_cast<int>(stroke.points.size()) - 1, 0);
        return touched;
    }
    if (isPainted(stroke.tool))
        return drawShape(strokeImage, stroke, true);
    return {};
}

bool strokeReplacesFrame(const Stroke& stroke) {
    return stroke.tool == Tool::Eraser || stroke.tool == Tool::Transform;
}

} // namespace vellum
