// The part of LayerManager that draws: the stroke in progress and the picture of a camera.
#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "plugin/base/Settings.h"

#include <utility>

namespace vellum {

namespace {
/// Maya shows up to four panels at once, each through another camera.
constexpr int kCamerasOnDisplay = 4;
} // namespace

Stroke* LayerManager::beginStroke(const QString& camera, int tool, const QColor& color) {
    if (tool < tool::kPencil || tool > tool::kRectangle) {
        discardStroke();
        return nullptr;
    }
    return begin(camera, tool, color);
}

Stroke* LayerManager::beginTransform(const QString& camera, const RegionTransform& state) {
    Stroke* stroke = begin(camera, tool::kTransform, QColor());
    if (!stroke) {
        return nullptr;
    }
    const QImage image = currentFrame(camera)->image();
    if (state.copy) {
        clipboardImage_ = image.copy(state.region);
    }
    stroke->region = state;
    stroke_->lift(image, clipboardImage_);
    return stroke;
}

Stroke* LayerManager::begin(const QString& camera, int tool, const QColor& color) {
    discardStroke();
    const Layer* active = activeLayer(camera);
    if (!active || active->state() == LayerState::Locked || !active->hasFrameAtCurrentTime() ||
        !active->currentFrame()) {
        return nullptr;
    }
    // While the stroke is drawn the ghosts stay as they are, so they have to be right now.
    Camera& target = *find(camera);
    if (updateGhosts(target)) {
        markCameraModified(camera);
    }
    strokeCamera_ = camera;
    stroke_ = std::make_unique<StrokeSession>(*active->currentFrame(), tool, color,
                                              std::exchange(strokeCanvas_, QImage()));
    return &stroke_->stroke();
}

bool LayerManager::commitStroke(const QString& camera, QByteArray& undoBytes) {
    Layer* active = activeLayer(camera);
    Frame* frame = active ? active->currentFrame() : nullptr;
    if (!stroke_ || strokeCamera_ != camera || !frame || active->state() == LayerState::Locked) {
        return false;
    }
    // A region of one frame means nothing in another.
    if (stroke_->stroke().tool == tool::kTransform && !stroke_->isFrom(*frame)) {
        return false;
    }
    // The stroke's picture is the whole frame: as it is, it would overwrite another one.
    if (stroke_->replacesFrame() && !stroke_->isOn(*frame)) {
        stroke_->moveTo(*frame);
    }
    undoBytes = frame->pngBytes();
    const QImage merged = stroke_->merged(frame->image());
    active->setCurrentImage(merged, stroke_->touched());
    endStroke();
    // The ghosts stood still during the stroke; one that left no pixel would not bring them up.
    if (updateGhosts(*find(camera))) {
        markCameraModified(camera);
    }
    tell(Change::Pixels, this);
    return true;
}

void LayerManager::discardStroke() {
    if (stroke_) {
        endStroke();
        fullRedrawCameras_.insert(strokeCamera_);
    }
}

void LayerManager::endStroke() {
    strokeCanvas_ = stroke_->takeCanvas();
    stroke_.reset();
    Camera* camera = find(strokeCamera_);
    if (camera && camera->composite) {
        camera->composite->endStroke();
    }
}

const StrokeSession* LayerManager::strokeOn(const QString& camera, const Layer& layer) const {
    const Frame* frame = layer.currentFrame();
    return stroke_ && strokeCamera_ == camera && layer.isActive() && frame && stroke_->isOn(*frame)
               ? stroke_.get()
               : nullptr;
}

bool LayerManager::needsRedraw(const QString& camera) const {
    const Camera* found = find(camera);
    if (!found || !found->composite) {
        return false;
    }
    if (found->composite->version() == 0 ||
        (stroke_ && strokeCamera_ == camera && stroke_->isDirty()) ||
        fullRedrawCameras_.count(camera) > 0 || modifiedCameras_.count(camera) > 0) {
        return true;
    }
    for (const auto& one : found->layers) {
        if (!one->undisplayed().isEmpty()) {
            return true;
        }
    }
    return false;
}

bool LayerManager::updateGhosts(Camera& camera) {
    const Layer* active = nullptr;
    for (const auto& one : camera.layers) {
        if (one->isActive()) {
            active = one.get();
            break;
        }
    }
    return camera.composite->ghosts().update(
        active, GhostOptions::fromSettings(documentEnvironment().isPlaying()));
}

QRect LayerManager::collectChanges(const QString& name, Camera& camera) {
    QRect changed;
    const bool modified = modifiedCameras_.erase(name) > 0;
    const bool discarded = fullRedrawCameras_.erase(name) > 0;
    if (modified || discarded || camera.composite->version() == 0) {
        changed = Layer::wholeCanvas();
    }
    const bool strokeHere = stroke_ && strokeCamera_ == name;
    if (strokeHere && stroke_->stroke().tool == tool::kTransform) {
        const Frame* frame = currentFrame(name);
        if (frame && stroke_->isFrom(*frame) && !stroke_->isOn(*frame)) {
            stroke_->moveTo(*frame);
        }
    }
    for (const auto& one : camera.layers) {
        const QRect part = one->takeUndisplayed();
        changed |= part;
        // On another picture than it was begun on, the stroke is no longer shown.
        if (strokeHere && one->isActive() && !part.isEmpty() && !strokeOn(name, *one)) {
            changed |= stroke_->touched();
        }
    }
    if (strokeHere && stroke_->isDirty()) {
        changed |= stroke_->update();
    }
    // Ghosts stand still during a stroke, but playback takes them away all the same.
    const bool noGhosts =
        settings().disableGhostingDuringPlayback && documentEnvironment().isPlaying();
    if ((!strokeHere || noGhosts) && updateGhosts(camera)) {
        changed = Layer::wholeCanvas();
    }
    return changed;
}

const QImage* LayerManager::compositeCamera(const QString& name) {
    Camera* camera = find(name);
    if (!camera || !camera->composite) {
        return nullptr;
    }
    CameraComposite& composite = *camera->composite;
    if (!needsRedraw(name)) {
        return &composite.image();
    }
    const QRect changed = collectChanges(name, *camera);
    if (changed.isEmpty()) {
        return &composite.image();
    }
    std::vector<CompositeLayer> layers;
    std::vector<Frame::Hold> holds;
    for (const auto& one : camera->layers) {
        const QImage image = one->displayImage();
        if (image.isNull()) {
            continue;
        }
        const Frame* frame = one->currentFrame();
        holds.push_back(frame->hold());
        const StrokeSession* stroke = strokeOn(name, *one);
        CompositeLayer layer;
        layer.drawnOn = stroke != nullptr;
        if (stroke && stroke->replacesFrame()) {
            layer.image = stroke->image();
        } else {
            layer.image = image;
            layer.revision = frame->revision();
            layer.pieces = frame->pieces();
            layer.overlay = stroke ? stroke->image() : QImage();
        }
        layers.push_back(std::move(layer));
    }
    composite.paint(changed, layers);
    composite.setHolds(std::move(holds));
    noteDisplayed(name);
    return &composite.image();
}

void LayerManager::noteDisplayed(const QString& camera) {
    recentCameras_.removeAll(camera);
    recentCameras_.prepend(camera);
    while (recentCameras_.size() > kCamerasOnDisplay) {
        Camera* gone = find(recentCameras_.takeLast());
        if (gone && gone->composite) {
            gone->composite->setHolds({});
        }
    }
}

quint64 LayerManager::compositeVersion(const QString& camera) const {
    const Camera* found = find(camera);
    return found && found->composite ? found->composite->version() : 0;
}

QRect LayerManager::compositeChangedSince(const QString& camera, quint64 version) const {
    const Camera* found = find(camera);
    return found && found->composite ? found->composite->changedSince(version)
                                     : Layer::wholeCanvas();
}

} // namespace vellum
