#include "tools/interaction/InputWorker.h"

#include "plugin/session/PluginState.h"

#include <QCoreApplication>
#include <QThread>

#include <limits>
#include <utility>

namespace vellum {

namespace {

constexpr int kPeriodMs = 8;
// A pen that tells no pressure for so many polls draws without.
constexpr int kLongestWait = 25;
constexpr int kNowhere = std::numeric_limits<int>::max();

} // namespace

InputWorker::InputWorker(std::unique_ptr<CursorPoller> poller, const SampleOptions& options)
    : poller_(std::move(poller)), options_(options), lastSent_(kNowhere, kNowhere) {
}

std::optional<QPoint> InputWorker::look() {
    const auto sample = poller_ && !released_ ? poller_->poll() : std::nullopt;
    released_ = released_ || (sample && sample->released);
    if (!sample || released_)
        return std::nullopt;
    // The mapping to the image expects these offsets of a pixel.
    return QPoint(sample->position.x() + 1, sample->viewHeight - sample->position.y() + 1);
}

void InputWorker::poll() {
    const bool holds = awaitsPressure();
    if (!holds)
        releaseHeld();
    const std::optional<QPoint> position = look();
    if (!position)
        return;
    // The event's pixel and the polled one may be rounded to neighbours.
    if (std::exchange(begun_, false) && (*position - lastSent_).manhattanLength() <= 1)
        lastSent_ = *position;
    if (*position != lastSent_)
        take(*position, holds);
}

void InputWorker::begin(QPoint press) {
    take(press, awaitsPressure());
    begun_ = true;
}

void InputWorker::take(QPoint position, bool holds) {
    if (lastSent_ == QPoint(kNowhere, kNowhere))
        held_.push_back(position - QPoint(1, 0));
    held_.push_back(position);
    lastSent_ = position;
    if (!holds)
        releaseHeld();
}

// Without this a line that begins before the pen's first pressure would begin at full opacity.
bool InputWorker::awaitsPressure() {
    if (!options_.pressureEnabled || waits_ >= kLongestWait ||
        !pluginState().pressureAwaited.load(std::memory_order_relaxed))
        return false;
    ++waits_;
    return true;
}

void InputWorker::releaseHeld() {
    for (const QPoint position : held_)
        send(position);
    held_.clear();
}

void InputWorker::send(QPoint position) {
    float opacity = options_.opacity;
    if (options_.pressureEnabled)
        opacity *= pluginState().tabletPressure.load(std::memory_order_relaxed);
    Q_EMIT MousePositionChanged(position, options_.width, opacity, options_.hardness);
}

void InputWorker::Run() {
    running_ = true;
    bool woken = false;
    while (running_) {
        // Delivers Shutdown(). Not processEvents(): under GLib's dispatcher that leaves out what
        // was queued before this call began.
        QCoreApplication::sendPostedEvents(this);
        if (running_ || lastSent_ == QPoint(kNowhere, kNowhere))
            poll();
        if (running_)
            woken = wake_.tryAcquire(1, kPeriodMs) || woken;
    }
    releaseHeld();
    // Whoever queues the call that ended this goes on to wake the thread's event dispatcher, which
    // goes with the thread.
    if (!woken)
        wake_.acquire();
}

void InputWorker::Shutdown() {
    running_ = false;
    QThread::currentThread()->exit(0);
}

} // namespace vellum
