#include "tools/interaction/ThreadManager.h"

#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vellum {

namespace {

constexpr std::size_t kHistory = 5;
constexpr int kJoinMs = 250;
constexpr int kThinning = 10; // points are at least that part of the width apart

int nearest(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

bool isAt(const StrokePoint& point, QPoint position) {
    return point.x == position.x() && point.y == position.y();
}

bool isTooNear(const StrokePoint& point, const StrokePoint& last) {
    return std::hypot(point.x - last.x, point.y - last.y) * kThinning < point.width;
}

} // namespace

ThreadManager& ThreadManager::instance() {
    static ThreadManager manager;
    return manager;
}

ThreadManager::~ThreadManager() {
    stop();
}

void ThreadManager::start(Target target) {
    stop();
    history_.clear();
    press_.reset();
    options_ = SampleOptions();
    lastPlace_.reset();
    places_ = 0;
    target_ = std::move(target);
    active_ = true;
}

void ThreadManager::start(Target target, std::unique_ptr<CursorPoller> poller,
                          const SampleOptions& options, std::optional<QPoint> press) {
    start(std::move(target));
    press_ = press;
    options_ = options;
    lastOpacity_ = options.opacity;
    timerPeriod_ = std::make_unique<FineTimerPeriod>();
    thread_ = std::make_unique<QThread>();
    worker_ = std::make_unique<InputWorker>(std::move(poller), options);
    connect(this, &ThreadManager::RunInputWorker, worker_.get(), &InputWorker::Run);
    connect(this, &ThreadManager::ShutdownInputWorker, worker_.get(), &InputWorker::Shutdown);
    connect(worker_.get(), &InputWorker::MousePositionChanged, this,
            &ThreadManager::OnMousePositionChanged);
    // The thread begins some time after the press: a quick hand is elsewhere then.
    if (press)
        worker_->begin(*press);
    worker_->moveToThread(thread_.get());
    ending_ = false;
    thread_->start();
    Q_EMIT RunInputWorker();
}

// Once for each thread: nothing may be queued for one that is about to end.
void ThreadManager::endThread() {
    if (std::exchange(ending_, true))
        return;
    Q_EMIT ShutdownInputWorker();
    worker_->wake();
}

// True when the thread has ended, so that the worker may be touched from here.
bool ThreadManager::joinThread() {
    if (!thread_)
        return false;
    endThread();
    return thread_->wait(kJoinMs);
}

// For a poll that hangs in the window system: thread and worker go when it returns.
void ThreadManager::abandonThread() {
    QThread* thread = thread_.release();
    InputWorker* worker = worker_.release();
    worker->disconnect(this);
    disconnect(worker); // the next stroke's calls are for the next worker
    connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
}

void ThreadManager::pointerUp() {
    if (thread_)
        endThread();
}

void ThreadManager::finish(std::optional<QPoint> release) {
    if (!active_)
        return;
    if (thread_) {
        const bool joined = joinThread();
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
        if (!joined)
            abandonThread();
    }
    if (release)
        endAt(*release);
}

// The last place is the event's, whatever was polled: the hand may have been quicker than the
// thread, and the pointer may have moved on since.
void ThreadManager::endAt(QPoint release) {
    const auto sample = [this](QPoint place) {
        OnMousePositionChanged(place, options_.width, lastOpacity_, options_.hardness);
    };
    if (!lastPlace_ && press_) { // held back by a thread that does not answer
        sample(*press_ - QPoint(1, 0));
        sample(*press_);
    }
    const bool click = places_ == 2 && lastPlace_ == release;
    Stroke* stroke = target_.stroke ? target_.stroke() : nullptr;
    if (!stroke || !lastPlace_ || click)
        return;
    if (!isFreehand(kindOf(stroke->tool)) || stroke->points.empty()) {
        sample(release);
        return;
    }
    const QPoint image = viewToImage(release, target_.mapping());
    arriveAt(*stroke, {options_.width, lastOpacity_, options_.hardness, image.x(), image.y()});
}

// The smoothed point lags behind: the same place again and again brings it there. The last one is
// exact, and kept however near it is to the one before.
void ThreadManager::arriveAt(Stroke& stroke, const StrokePoint& point) {
    std::vector<StrokePoint>& points = stroke.points;
    const QPoint place(point.x, point.y);
    for (std::size_t i = 0; i < kHistory && !isAt(points.back(), place); ++i) {
        remember(point);
        const StrokePoint smooth = smoothed(point);
        if (isAt(smooth, place) || !isTooNear(smooth, points.back()))
            points.push_back(smooth);
    }
    stroke.dirty = true;
    target_.requestRedraw();
}

void ThreadManager::stop() {
    active_ = false;
    timerPeriod_.reset();
    if (thread_ && !joinThread())
        abandonThread();
    worker_.reset();
    thread_.reset();
    // What is still under way must not reach the next stroke.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    target_ = Target();
}

void ThreadManager::OnMousePositionChanged(const QPoint& p, int width, float opacity,
                                           float hardness) {
    Stroke* stroke = active_ && target_.stroke ? target_.stroke() : nullptr;
    if (!stroke)
        return;
    lastPlace_ = p;
    lastOpacity_ = opacity;
    ++places_;
    const QPoint image = viewToImage(p, target_.mapping());
    const StrokePoint point{width, opacity, hardness, image.x(), image.y()};
    std::vector<StrokePoint>& points = stroke->points;
    const ToolKind kind = kindOf(stroke->tool);
    switch (kind) {
    case ToolKind::Stepped:
    case ToolKind::Soft:
    case ToolKind::Erasing:
        if (!appendFreehand(*stroke, point))
            return;
        break;
    case ToolKind::Shape:
        if (points.size() >= 2)
            points[1] = point;
        else
            points.insert(points.begin(), point);
        break;
    case ToolKind::Text:
        stroke->fontFamily = settings().of(stroke->tool).fontFamily;
        points.resize(1);
        points[0] = point;
        break;
    case ToolKind::Region:
        return; // follows its own context
    }
    stroke->dirty = true;
    target_.requestRedraw();
}

// False when the sample adds nothing.
bool ThreadManager::appendFreehand(Stroke& stroke, const StrokePoint& point) {
    std::vector<StrokePoint>& points = stroke.points;
    const QPoint position(point.x, point.y);
    if (points.size() >= 2 && isAt(points.back(), position))
        return false;
    remember(point);
    const StrokePoint smooth = smoothed(point);
    if (points.size() >= 2 && isTooNear(smooth, points.back())) {
        history_.erase(history_.begin());
        return false;
    }
    points.push_back(smooth);
    return true;
}

void ThreadManager::remember(const StrokePoint& point) {
    if (history_.size() >= kHistory)
        history_.pop_back();
    history_.insert(history_.begin(), {QPoint(point.x, point.y), point.opacity});
}

// Weighted mean of the history: n for the newest of n samples down to 1 for the oldest.
StrokePoint ThreadManager::smoothed(const StrokePoint& point) const {
    double x = 0.0;
    double y = 0.0;
    float opacity = 0.0F;
    auto weight = static_cast<int>(history_.size());
    const int total = weight * (weight + 1) / 2;
    for (const Sample& sample : history_) {
        x += weight * sample.position.x();
        y += weight * sample.position.y();
        opacity += static_cast<float>(weight) * sample.opacity;
        --weight;
    }
    StrokePoint result = point;
    result.x = nearest(x / total);
    result.y = nearest(y / total);
    result.opacity = opacity / static_cast<float>(total);
    return result;
}

} // namespace vellum
