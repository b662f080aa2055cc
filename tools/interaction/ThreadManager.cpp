#include "tools/interaction/ThreadManager.h"

#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

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
    target_ = std::move(target);
    active_ = true;
}

void ThreadManager::start(Target target, std::unique_ptr<CursorPoller> poller,
                          const SampleOptions& options, std::optional<QPoint> press) {
    start(std::move(target));
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
    thread_->start();
    Q_EMIT RunInputWorker();
}

// True when the thread has ended, so that the worker may be touched from here.
bool ThreadManager::joinThread() {
    if (!thread_)
        return false;
    if (thread_->isRunning()) {
        Q_EMIT ShutdownInputWorker();
        worker_->wake();
    }
    return thread_->wait(kJoinMs);
}

// For a poll that hangs in the window system: thread and worker go when it returns.
void ThreadManager::abandonThread() {
    QThread* thread = thread_.release();
    InputWorker* worker = worker_.release();
    worker->disconnect(this);
    connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
}

void ThreadManager::finish(std::optional<QPoint> release) {
    if (!active_ || !thread_)
        return;
    const bool joined = joinThread();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    if (!joined)
        abandonThread();
    if (!release || !worker_ || !worker_->hasEnded())
        return;
    // A pointer that has moved on says nothing about the stroke any more.
    const std::optional<QPoint> now = worker_->look();
    if (now && (*now - *release).manhattanLength() <= 1)
        worker_->poll();
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
    if (isFreehand(kind) && points.size() == 2)
        target_.requestRedraw();
}

// False when the sample adds nothing.
bool ThreadManager::appendFreehand(Stroke& stroke, const StrokePoint& point) {
    std::vector<StrokePoint>& points = stroke.points;
    const QPoint position(point.x, point.y);
    if (points.size() >= 2 && isAt(points.back(), position))
        return false;
    if (history_.size() >= kHistory)
        history_.pop_back();
    history_.insert(history_.begin(), {position, point.opacity});
    const StrokePoint smooth = smoothed(point);
    if (points.size() >= 2) {
        const double distance = std::hypot(smooth.x - points.back().x, smooth.y - points.back().y);
        if (distance * kThinning < point.width) {
            history_.erase(history_.begin());
            return false;
        }
    }
    points.push_back(smooth);
    return true;
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
