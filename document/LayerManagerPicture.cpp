// The part of LayerManager that draws: where the layers, the stroke in progress and the cameras'
// pictures meet.
#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "plugin/base/ToolTable.h"

namespace vellum {

namespace {

GhostOptions ghostOptions() {
    return GhostOptions::fromSettings(documentEnvironment().isPlaying());
}

} // namespace

Stroke* LayerManager::beginStroke(const QString& camera, Tool tool, const QColor& color) {
    discardStroke();
    const Layer* active = findTool(tool) ? activeLayer(camera) : nullptr;
    const bool here = active && active->hasFrameAtCurrentTime();
    const Frame* frame = here ? frameForStroke(camera) : nullptr;
    return frame ? &stroke_.begin(camera, *frame, tool, color) : nullptr;
}

Stroke* LayerManager::beginTransform(const QString& camera, const RegionTransform& state) {
    discardStroke();
    const Frame* frame = frameForStroke(camera);
    return frame ? &stroke_.beginTransform(camera, *frame, state) : nullptr;
}

const Frame* LayerManager::frameForStroke(const QString& camera) {
    const Layer* active = activeLayer(camera);
    if (!active || active->state() == LayerState::Locked || !active->currentFrame())
        return nullptr;
    // While the stroke is drawn the ghosts stay as they are, so they have to be right now.
    pictures_.updateGhosts(camera, *find(camera), ghostOptions());
    return active->currentFrame();
}

bool LayerManager::commitStroke(const QString& camera, QByteArray& undoBytes) {
    Layer* active = findActive(camera);
    if (!active || active->state() == LayerState::Locked ||
        !stroke_.mergeInto(camera, *active, undoBytes)) {
        return false;
    }
    pictures_.endStroke(camera);
    // The ghosts stood still during the stroke; one that left no pixel would not bring them up.
    pictures_.updateGhosts(camera, *find(camera), ghostOptions());
    tell(Change::Pixels, this);
    return true;
}

std::optional<LayerManager::FramePlace> LayerManager::strokePlace(const QString& camera) const {
    const StrokeSession* session = stroke_.on(camera);
    for (int i = 0; session && i < cameraLayerCount(camera); ++i) {
        for (int f = 0; f < layer(camera, i)->frameCount(); ++f) {
            const Frame* frame = layer(camera, i)->frameAt(f);
            if (session->isFrom(*frame))
                return FramePlace{i, frame};
        }
    }
    return std::nullopt;
}

void LayerManager::discardStroke() {
    if (stroke_.stroke()) {
        stroke_.end();
        pictures_.discardStroke(stroke_.camera());
    }
}

bool LayerManager::needsRedraw(const QString& camera) const {
    const LayerStack* layers = find(camera);
    return layers && pictures_.needsRedraw(camera, *layers, stroke_);
}

const QImage* LayerManager::compositeCamera(const QString& camera) {
    if (needsRedraw(camera))
        pictures_.redraw(camera, *find(camera), stroke_, ghostOptions());
    return pictures_.image(camera);
}

} // namespace vellum
