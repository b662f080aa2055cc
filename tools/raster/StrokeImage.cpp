#include "tools/raster/StrokeImage.h"

#include "plugin/base/ToolTable.h"
#include "tools/raster/FreehandRaster.h"
#include "tools/raster/ShapeRaster.h"

#include <algorithm>

namespace vellum {

QImage blankCanvas() {
    QImage canvas(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    canvas.fill(Qt::transparent);
    return canvas;
}

void prepareStrokeImage(QImage& strokeImage, Stroke& stroke, const QImage& frameImage) {
    stroke.lastDrawnIndex = 0;
    if (kindOf(stroke.tool) == ToolKind::Erasing && !frameImage.isNull()) {
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
    if (!strokeReplacesFrame(stroke)) {
        color = stroke.color;
        color.setAlpha(0);
    }
    strokeImage.fill(color);
}

QRect updateStrokeImage(QImage& strokeImage, Stroke& stroke) {
    stroke.dirty = false;
    switch (kindOf(stroke.tool)) {
    case ToolKind::Stepped:
    case ToolKind::Soft:
    case ToolKind::Erasing: {
        const QRect touched =
            drawFreehandSegments(strokeImage, stroke.points, stroke.lastDrawnIndex, stroke.tool);
        stroke.lastDrawnIndex = std::max(static_cast<int>(stroke.points.size()) - 1, 0);
        return touched;
    }
    case ToolKind::Shape:
    case ToolKind::Text:
        return drawShape(strokeImage, stroke, true);
    case ToolKind::Region:
        break; // StrokeSession lays it over the frame
    }
    return {};
}

bool strokeReplacesFrame(const Stroke& stroke) {
    const ToolKind kind = kindOf(stroke.tool);
    return kind == ToolKind::Erasing || kind == ToolKind::Region;
}

} // namespace vellum
