#include "document/Layer.h"

#include "document/IntTime.h"
#include "plugin/base/Settings.h"
#include "tools/raster/Stroke.h"

#include <maya/MAnimControl.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vellum {

namespace {

quint64 nextId() {
    static quint64 last = 0;
    return ++last;
}

} // namespace

std::optional<LayerState> layerStateOf(int number) {
    switch (static_cast<LayerState>(number)) {
    case LayerState::Animated:
    case LayerState::Static:
    case LayerState::Locked:
        return static_cast<LayerState>(number);
    }
    return std::nullopt;
}

Layer::Layer() : Layer(QStringLiteral("New Layer")) {
}

Layer::Layer(const QString& name) : id_(nextId()), name_(name), undisplayed_(wholeCanvas()) {
    state_ = layerStateOf(settings().defaultLayerState).value_or(LayerState::Animated);
}

Layer::~Layer() = default;

QRect Layer::wholeCanvas() {
    return {0, 0, kCanvasSize, kCanvasSize};
}

void Layer::markDirty(const QRect& changed) {
    dirty_ = true;
    undisplayed_ |= changed & wholeCanvas();
}

QRect Layer::takeUndisplayed() {
    dirty_ = false;
    return std::exchange(undisplayed_, QRect());
}

void Layer::setVisible(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        markDirty();
    }
}

void Layer::setOpacity(float opacity) {
    if (std::isnan(opacity))
        return;
    opacity = std::clamp(opacity, 0.0F, 1.0F);
    if (opacity != opacity_) {
        opacity_ = opacity;
        markDirty();
    }
}

int Layer::firstAfter(int intTime) const {
    const auto notAfter = [intTime](const auto& frame) { return frame->intTime() <= intTime; };
    const auto found = ascending_ ? std::partition_point(frames_.begin(), frames_.end(), notAfter)
                                  : std::find_if_not(frames_.begin(), frames_.end(), notAfter);
    return static_cast<int>(found - frames_.begin());
}

int Layer::indexOf(int intTime) const {
    if (!ascending_) {
        const auto found =
            std::find_if(frames_.begin(), frames_.end(),
                         [intTime](const auto& frame) { return frame->intTime() == intTime; });
        return found == frames_.end() ? -1 : static_cast<int>(found - frames_.begin());
    }
    // Where a coarser time unit let frames fall together, this is the one that is shown.
    const int index = firstAfter(intTime) - 1;
    return index >= 0 && frames_[static_cast<std::size_t>(index)]->intTime() == intTime ? index
                                                                                        : -1;
}

int Layer::addFrame(std::unique_ptr<Frame> frame) {
    return frame ? insert(std::move(frame), currentIntTime()) : -1;
}

int Layer::insert(std::unique_ptr<Frame> frame, int currentTime) {
    const int intTime = frame->intTime();
    if (indexOf(intTime) >= 0)
        return -1;
    const int index = firstAfter(intTime);
    frames_.insert(frames_.begin() + index, std::move(frame));
    markDirty();
    updateCurrentIndex(currentTime);
    return index;
}

int Layer::addFrameAt(const MTime& time) {
    return addFrame(std::make_unique<Frame>(time));
}

int Layer::addFrameAt(int intTime) {
    return addFrameAt(fromIntTime(intTime));
}

int Layer::addFrameAtCurrentTime() {
    const MTime now = MAnimControl::currentTime();
    return insert(std::make_unique<Frame>(now), toIntTime(now));
}

bool Layer::hasFrameAt(const MTime& time) const {
    return hasFrameAtIntTime(toIntTime(time));
}

bool Layer::hasFrameAtIntTime(int intTime) const {
    return indexOf(intTime) >= 0;
}

bool Layer::isDrawableAt(int intTime) const {
    return (state_ == LayerState::Static && currentIndex_ != -1) || hasFrameAtIntTime(intTime);
}

bool Layer::hasFrameAtCurrentTime() const {
    return isDrawableAt(currentIntTime());
}

const Frame* Layer::frameAt(int index) const {
    return index >= 0 && index < frameCount() ? frames_[static_cast<std::size_t>(index)].get()
                                              : nullptr;
}

Frame* Layer::shownFrame() {
    return const_cast<Frame*>(currentFrame());
}

std::unique_ptr<Frame> Layer::copyFrameAt(const MTime& time) const {
    return copyFrameAt(toIntTime(time));
}

std::unique_ptr<Frame> Layer::copyFrameAt(int intTime) const {
    const Frame* frame = frameAt(indexOf(intTime));
    return frame ? frame->copy() : nullptr;
}

std::unique_ptr<Frame> Layer::takeFrameAt(const MTime& time) {
    return takeFrameAt(toIntTime(time));
}

std::unique_ptr<Frame> Layer::takeFrameAt(int intTime) {
    const int index = indexOf(intTime);
    if (index < 0)
        return nullptr;
    auto frame = std::move(frames_[static_cast<std::size_t>(index)]);
    frames_.erase(frames_.begin() + index);
    markDirty();
    updateCurrentIndex(intTime);
    return frame;
}

std::unique_ptr<Frame> Layer::takeFrameAtCurrentTime() {
    return takeFrameAt(currentIntTime());
}

const Frame* Layer::nextFrame(bool wrap) const {
    const Frame* next = frameAt(firstAfter(currentIntTime()));
    return next || !wrap ? next : frameAt(0);
}

const Frame* Layer::frameBefore(int intTime) const {
    int index = firstAfter(intTime) - 1;
    while (index >= 0 && frames_[static_cast<std::size_t>(index)]->intTime() >= intTime)
        --index;
    return frameAt(index);
}

const Frame* Layer::previousFrame(bool wrap) const {
    const Frame* previous = frameBefore(currentIntTime());
    return previous || !wrap ? previous : frameAt(frameCount() - 1);
}

QImage Layer::displayImage(int offset) {
    dirty_ = false;
    const Frame* frame = visible_ ? frameAt(currentIndex_ + offset) : nullptr;
    return frame ? frame->image() : QImage();
}

void Layer::setCurrentImage(const QImage& image, const QRect& changed) {
    Frame* frame = shownFrame();
    if (frame && frame->setImage(image))
        markDirty(changed);
}

void Layer::setCurrentPng(const QByteArray& png) {
    if (Frame* frame = shownFrame()) {
        frame->setPng(png);
        markDirty();
    }
}

void Layer::setFrameTimes(const QList<int>& times) {
    const int count = std::min(static_cast<int>(times.size()), frameCount());
    for (int i = 0; i < count; ++i)
        frames_[static_cast<std::size_t>(i)]->setIntTime(times[i]);
    ascending_ = std::is_sorted(frames_.begin(), frames_.end(), [](const auto& a, const auto& b) {
        return a->intTime() < b->intTime();
    });
    markDirty();
    updateCurrentIndex(currentIntTime());
}

QList<int> Layer::frameTimes() const {
    QList<int> times;
    times.reserve(frameCount());
    for (const auto& frame : frames_)
        times.append(frame->intTime());
    return times;
}

void Layer::collectFrameTimes(QList<int>& times) const {
    times = frameTimes();
}

void Layer::updateCurrentIndex(int intTime) {
    const int index = firstAfter(intTime) - 1;
    if (index != currentIndex_) {
        currentIndex_ = index;
        markDirty();
    }
}

Layer* activeOf(const LayerStack& layers) {
    const auto active = std::find_if(layers.begin(), layers.end(),
                                     [](const auto& layer) { return layer->isActive(); });
    return active == layers.end() ? nullptr : active->get();
}

void Layer::clearFrames() {
    frames_.clear();
    currentIndex_ = -1;
    ascending_ = true;
    markDirty();
}

} // namespace vellum
