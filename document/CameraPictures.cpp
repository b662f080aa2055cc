#include "document/CameraPictures.h"

#include "document/StrokeInProgress.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vellum {

namespace {

/// Maya shows up to four panels at once, each through another camera.
constexpr int kCamerasOnDisplay = 4;

/// Whether the layer shows the stroke: on another picture than it was begun on, it is not shown.
bool shows(const Layer& layer, const StrokeSession* stroke) {
    const Frame* frame = layer.currentFrame();
    return stroke && layer.isActive() && frame && stroke->isOn(*frame);
}

/// A region transform goes on, on its frame's picture as it is now.
void followFrame(StrokeSession& stroke, const Layer* active) {
    const Frame* frame = active ? active->currentFrame() : nullptr;
    if (stroke.stroke().tool == Tool::Transform && frame && stroke.isFrom(*frame) &&
        !stroke.isOn(*frame)) {
        stroke.moveTo(*frame);
    }
}

} // namespace

const CameraComposite* CameraPictures::find(const QString& camera) const {
    const auto found = pictures_.find(camera);
    return found == pictures_.end() ? nullptr : &found->second;
}

void CameraPictures::endStroke(const QString& camera) {
    const auto found = pictures_.find(camera);
    if (found != pictures_.end())
        found->second.endStroke();
}

void CameraPictures::discardStroke(const QString& camera) {
    endStroke(camera);
    showDiscarded_.insert(camera);
}

void CameraPictures::updateGhosts(const QString& camera, const LayerStack& layers,
                                  const GhostOptions& options) {
    if (pictures_[camera].ghosts().update(activeOf(layers), options))
        markModified(camera);
}

bool CameraPictures::needsRedraw(const QString& camera, const LayerStack& layers,
                                 const StrokeInProgress& stroke) const {
    const StrokeSession* here = stroke.on(camera);
    return version(camera) == 0 || (here && here->isDirty()) || showDiscarded_.count(camera) > 0 ||
           modified_.count(camera) > 0 ||
           std::any_of(layers.begin(), layers.end(),
                       [](const auto& layer) { return !layer->undisplayed().isEmpty(); });
}

QRect CameraPictures::takeChanges(const QString& camera, const LayerStack& layers,
                                  StrokeSession* stroke, const GhostOptions& options) {
    QRect changed;
    const bool modified = modified_.erase(camera) > 0;
    const bool discarded = showDiscarded_.erase(camera) > 0;
    if (modified || discarded || version(camera) == 0)
        changed = Layer::wholeCanvas();
    if (stroke)
        followFrame(*stroke, activeOf(layers));
    for (const auto& layer : layers) {
        const QRect part = layer->takeUndisplayed();
        changed |= part;
        if (stroke && layer->isActive() && !part.isEmpty() && !shows(*layer, stroke))
            changed |= stroke->touched();
    }
    if (stroke && stroke->isDirty())
        changed |= stroke->update();
    // Ghosts stand still during a stroke, but playback takes them away all the same.
    if ((!stroke || options.hiddenByPlayback) &&
        pictures_[camera].ghosts().update(activeOf(layers), options)) {
        changed = Layer::wholeCanvas();
    }
    return changed;
}

void CameraPictures::paint(CameraComposite& picture, const QRect& changed, const LayerStack& layers,
                           const StrokeSession* stroke) {
    std::vector<CompositeLayer> parts;
    std::vector<Frame::Hold> holds;
    for (const auto& layer : layers) {
        const QImage image = layer->displayImage();
        if (image.isNull())
            continue;
        const Frame* frame = layer->currentFrame();
        holds.push_back(frame->hold());
        CompositeLayer part;
        part.drawnOn = shows(*layer, stroke);
        if (part.drawnOn && stroke->replacesFrame()) {
            part.image = stroke->image();
        } else {
            part.image = image;
            part.revision = frame->revision();
            part.pieces = frame->pieces();
            part.overlay = part.drawnOn ? stroke->image() : QImage();
        }
        parts.push_back(std::move(part));
    }
    picture.paint(changed, parts);
    picture.setHolds(std::move(holds));
}

void CameraPictures::redraw(const QString& camera, const LayerStack& layers,
                            const StrokeInProgress& stroke, const GhostOptions& options) {
    StrokeSession* here = stroke.on(camera);
    const QRect changed = takeChanges(camera, layers, here, options);
    if (!changed.isEmpty()) {
        paint(pictures_[camera], changed, layers, here);
        noteDisplayed(camera);
    }
}

void CameraPictures::noteDisplayed(const QString& camera) {
    recent_.removeAll(camera);
    recent_.prepend(camera);
    while (recent_.size() > kCamerasOnDisplay) {
        const auto gone = pictures_.find(recent_.takeLast());
        if (gone != pictures_.end())
            gone->second.setHolds({});
    }
}

const QImage* CameraPictures::image(const QString& camera) const {
    const CameraComposite* picture = find(camera);
    return picture ? &picture->image() : nullptr;
}

quint64 CameraPictures::version(const QString& camera) const {
    const CameraComposite* picture = find(camera);
    return picture ? picture->version() : 0;
}

QRect CameraPictures::changedSince(const QString& camera, quint64 version) const {
    const CameraComposite* picture = find(camera);
    return picture ? picture->changedSince(version) : Layer::wholeCanvas();
}

} // namespace vellum
