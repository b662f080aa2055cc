// The part of LayerManager that passes frame operations on to the layers.
#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "tools/raster/PngCheck.h"
#include "tools/raster/StrokeImage.h"

#include <maya/MAnimControl.h>

namespace vellum {

bool LayerManager::framesChanged(bool done) {
    if (done)
        tell(Change::Frames, this);
    return done;
}

int LayerManager::addFrameAt(const QString& camera, const MTime& time) {
    Layer* active = findActive(camera);
    const int index = active ? active->addFrameAt(time) : -1;
    framesChanged(index >= 0);
    return index;
}

int LayerManager::addFrameAt(const QString& camera, int intTime) {
    return addFrameAt(camera, fromIntTime(intTime));
}

int LayerManager::addFrameAtCurrentTime(const QString& camera) {
    return addFrameAt(camera, MAnimControl::currentTime());
}

bool LayerManager::hasFrameAtCurrentTime(const QString& camera) const {
    const Layer* active = activeLayer(camera);
    return active && active->hasFrameAtCurrentTime();
}

std::unique_ptr<Frame> LayerManager::takeFrameAt(const QString& camera, const MTime& time) {
    return takeFrameAt(camera, toIntTime(time));
}

std::unique_ptr<Frame> LayerManager::takeFrameAt(const QString& camera, int intTime) {
    Layer* active = findActive(camera);
    if (!active)
        return nullptr;
    std::unique_ptr<Frame> frame = active->takeFrameAt(intTime);
    active->updateCurrentIndex(currentIntTime()); // the document shows the scene's time
    framesChanged(frame != nullptr);
    return frame;
}

std::unique_ptr<Frame> LayerManager::copyFrameAt(const QString& camera, int intTime) const {
    const Layer* active = activeLayer(camera);
    return active ? active->copyFrameAt(intTime) : nullptr;
}

const Frame* LayerManager::nextFrame(const QString& camera, bool wrap) const {
    const Layer* active = activeLayer(camera);
    return active ? active->nextFrame(wrap) : nullptr;
}

const Frame* LayerManager::previousFrame(const QString& camera, bool wrap) const {
    const Layer* active = activeLayer(camera);
    return active ? active->previousFrame(wrap) : nullptr;
}

void LayerManager::setFrameTimes(const QString& camera, const QList<int>& times) {
    if (Layer* active = findActive(camera)) {
        active->setFrameTimes(times);
        framesChanged(true);
    }
}

bool LayerManager::exchangeFrames(const QString& camera, int index,
                                  const std::vector<MTime>& leaving,
                                  std::vector<std::unique_ptr<Frame>>& frames) {
    Layer* changed = find(camera, index);
    return framesChanged(changed && changed->exchangeFrames(leaving, frames));
}

bool LayerManager::shiftFrames(const QString& camera, int index,
                               const std::vector<Layer::Shift>& shifts) {
    Layer* changed = find(camera, index);
    return framesChanged(changed && changed->shiftFrames(shifts));
}

void LayerManager::collectFrameTimes(const QString& camera, QList<int>& times) {
    times.clear();
    if (Layer* active = findActive(camera)) {
        collectedLayer_ = active;
        collectedTime_ = currentIntTime();
        active->updateCurrentIndex(collectedTime_);
        active->collectFrameTimes(times);
    }
}

const Frame* LayerManager::currentFrame(const QString& camera) const {
    const Layer* active = activeLayer(camera);
    return active ? active->currentFrame() : nullptr;
}

bool LayerManager::replaceActiveImage(const QString& camera, QByteArray& png) {
    return replaceImage(camera, activeLayerIndex(camera), png);
}

bool LayerManager::replaceImage(const QString& camera, int index, QByteArray& png) {
    Layer* changed = find(camera, index);
    const Frame* frame = changed ? changed->currentFrame() : nullptr;
    const QByteArray before = frame ? frame->pngBytes() : QByteArray();
    if (before.isEmpty())
        return false;
    const QByteArray own = canvasPng(png);
    if (!own.isEmpty()) {
        changed->setCurrentPng(own);
    } else {
        changed->setCurrentImage(blankCanvas());
    }
    png = before;
    tell(Change::Pixels, this);
    return true;
}

void LayerManager::timeChanged(int intTime, bool skipActive) {
    const Layer* active = activeLayer(currentCamera_);
    const bool upToDate = active == collectedLayer_ && collectedTime_ == intTime;
    const Layer* skipped = skipActive && upToDate ? active : nullptr;
    collectedLayer_ = nullptr;
    for (const auto& [camera, layers] : cameras_) {
        for (const auto& one : layers) {
            if (one.get() != skipped)
                one->updateCurrentIndex(intTime);
        }
    }
    const bool playing = documentEnvironment().isPlaying();
    if (playing && !wasPlaying_) {
        markCameraModified(currentCamera_); // its ghosts may vanish
    }
    wasPlaying_ = playing;
}

} // namespace vellum
