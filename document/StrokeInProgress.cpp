#include "document/StrokeInProgress.h"

#include "document/Layer.h"

#include <cassert>
#include <utility>

namespace vellum {

Stroke& StrokeInProgress::begin(const QString& camera, const Frame& frame, Tool tool,
                                const QColor& color) {
    assert(!session_);
    camera_ = camera;
    session_ =
        std::make_unique<StrokeSession>(frame, tool, color, std::exchange(canvas_, QImage()));
    return session_->stroke();
}

Stroke& StrokeInProgress::beginTransform(const QString& camera, const Frame& frame,
                                         const RegionTransform& state) {
    Stroke& stroke = begin(camera, frame, Tool::Transform, QColor());
    const QImage image = frame.image();
    if (state.copy)
        clipboard_ = image.copy(state.region);
    stroke.region = state;
    session_->lift(image, clipboard_);
    return stroke;
}

bool StrokeInProgress::mergeInto(const QString& camera, Layer& layer, QByteArray& undoBytes) {
    const Frame* frame = layer.currentFrame();
    if (!on(camera) || !frame)
        return false;
    // A region of one frame means nothing in another.
    if (session_->stroke().tool == Tool::Transform && !session_->isFrom(*frame))
        return false;
    // The stroke's picture is the whole frame: as it is, it would overwrite another one.
    if (session_->replacesFrame() && !session_->isOn(*frame))
        session_->moveTo(*frame);
    undoBytes = frame->pngBytes();
    const QImage merged = session_->merged(frame->image());
    layer.setCurrentImage(merged, session_->touched());
    end();
    return true;
}

void StrokeInProgress::end() {
    canvas_ = session_->takeCanvas();
    session_.reset();
}

StrokeSession* StrokeInProgress::on(const QString& camera) const {
    return camera_ == camera ? session_.get() : nullptr;
}

} // namespace vellum
