#include "document/StrokeSession.h"

#include "plugin/base/ToolTable.h"
#include "tools/raster/PixelRows.h"
#include "tools/raster/ShapeRaster.h"
#include "tools/raster/StrokeImage.h"

#include <cstring>
#include <utility>

namespace vellum {

StrokeSession::StrokeSession(const Frame& frame, Tool tool, const QColor& color, QImage canvas)
    : image_(std::move(canvas)), baseRevision_(frame.revision()), hold_(frame.hold()) {
    stroke_.tool = tool;
    stroke_.color = color;
    prepareStrokeImage(image_, stroke_, frame.image());
}

void StrokeSession::moveTo(const Frame& frame) {
    baseRevision_ = frame.revision();
    hold_ = frame.hold();
    touched_ = QRect();
    if (stroke_.tool == Tool::Transform) {
        lift(frame.image(), floating_);
        return;
    }
    prepareStrokeImage(image_, stroke_, frame.image());
    stroke_.dirty = true;
}

void StrokeSession::lift(const QImage& frameImage, const QImage& clipboard) {
    base_ =
        stroke_.region.region.isEmpty() ? blankCanvas() : withoutRegion(frameImage, stroke_.region);
    floating_ = floatingSelection(frameImage, stroke_.region, clipboard);
    image_ = base_;
    lastShape_ = frameImage.rect(); // the hole, or a picture that is another one now
    stroke_.dirty = true;
}

// What was covered comes back from beneath, what is covered now is laid over it.
QRect StrokeSession::updateTransform() {
    stroke_.dirty = false;
    const QRect covered = floating_.isNull() ? QRect() : stroke_.region.bounds() & image_.rect();
    const QRect changed = std::exchange(lastShape_, covered) | covered;
    for (int y = changed.top(); y <= changed.bottom(); ++y) {
        std::memcpy(image_.scanLine(y) + 4 * changed.left(),
                    base_.constScanLine(y) + 4 * changed.left(),
                    4 * static_cast<std::size_t>(changed.width()));
    }
    if (covered.isEmpty())
        return changed;
    const QImage pixels = transformedSelection(stroke_.region, floating_, covered);
    for (int y = covered.top(); y <= covered.bottom(); ++y) {
        rows::over(image_.scanLine(y) + 4 * covered.left(), pixels.constScanLine(y - covered.top()),
                   covered.width());
    }
    return changed;
}

QRect StrokeSession::update() {
    if (stroke_.tool == Tool::Transform) {
        const QRect changed = updateTransform();
        touched_ |= changed;
        return changed;
    }
    QRect changed = updateStrokeImage(image_, stroke_);
    if (!isFreehand(kindOf(stroke_.tool)))
        changed |= std::exchange(lastShape_, changed);
    touched_ |= changed;
    return changed;
}

bool StrokeSession::replacesFrame() const {
    return strokeReplacesFrame(stroke_);
}

QImage StrokeSession::merged(const QImage& frameImage) {
    // Points that no refresh has shown yet count as touched too.
    if (stroke_.dirty)
        update();
    if (kindOf(stroke_.tool) == ToolKind::Text)
        drawShape(image_, stroke_, false);
    if (replacesFrame()) {
        for (int y = touched_.top(); y <= touched_.bottom(); ++y)
            rows::blacken(image_.scanLine(y) + 4 * touched_.left(), touched_.width());
        return image_;
    }
    // Only where the stroke is: painting with nothing would still round faint colours.
    QImage result = frameImage;
    for (int y = touched_.top(); y <= touched_.bottom(); ++y) {
        rows::over(result.scanLine(y) + 4 * touched_.left(),
                   image_.constScanLine(y) + 4 * touched_.left(), touched_.width());
    }
    return result;
}

QImage StrokeSession::takeCanvas() {
    return std::exchange(image_, QImage());
}

} // namespace vellum
