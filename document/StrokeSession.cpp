#include "document/StrokeSession.h"

#include "document/PixelRows.h"
#include "tools/raster/ShapeRaster.h"
#include "tools/raster/StrokeImage.h"

#include <utility>

namespace vellum {

StrokeSession::StrokeSession(const Frame& frame, int tool, const QColor& color, QImage canvas)
    : image_(std::move(canvas)), baseRevision_(frame.revision()), hold_(frame.hold()) {
    stroke_.tool = tool;
    stroke_.color = color;
    prepareStrokeImage(image_, stroke_, frame.image());
}

void StrokeSession::moveTo(const Frame& frame) {
    baseRevision_ = frame.revision();
    hold_ = frame.hold();
    touched_ = QRect();
    prepareStrokeImage(image_, stroke_, frame.image());
    stroke_.dirty = true;
}

QRect StrokeSession::update() {
    QRect changed = updateStrokeImage(image_, stroke_);
    if (!tool::isFreehand(stroke_.tool)) {
        changed |= std::exchange(lastShape_, changed);
    }
    touched_ |= changed;
    return changed;
}

bool StrokeSession::replacesFrame() const {
    return strokeReplacesFrame(stroke_);
}

QImage StrokeSession::merged(const QImage& frameImage) {
    // Points that no refresh has shown yet count as touched too.
    if (stroke_.dirty) {
        update();
    }
    if (stroke_.tool == tool::kText) {
        drawShape(image_, stroke_, false);
    }
    if (replacesFrame()) {
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
