// The sampling of a stroke, main thread side: starts and stops the polling thread, and turns
// positions into points of the stroke: mapped, smoothed, thinned.
#pragma once

#include "tools/interaction/InputWorker.h"
#include "tools/interaction/TimerPeriod.h"
#include "tools/raster/Stroke.h"
#include "tools/raster/ViewToImage.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QThread>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vellum {

class ThreadManager : public QObject {
    Q_OBJECT

public:
    /// What a stroke is sampled into, asked for at every sample: the document or the view may go
    /// while the pointer is down.
    struct Target {
        std::function<Stroke*()> stroke;      ///< null once the stroke is gone
        std::function<ViewMapping()> mapping; ///< where the drawing lies in the view now
        std::function<void()> requestRedraw;
    };

    /// One for the process, made on first use.
    static ThreadManager& instance();

    ThreadManager() = default;
    ~ThreadManager() override;

    /// Begins sampling with a thread that polls `poller`, at the press if it is known (view
    /// coordinates of the worker's convention). A stroke still being sampled is stopped first.
    void start(Target target, std::unique_ptr<CursorPoller> poller, const SampleOptions& options,
               std::optional<QPoint> press = std::nullopt);

    /// The same without a thread: samples come through OnMousePositionChanged() only.
    void start(Target target);

    /// The button is up: nothing more is to be polled, what was polled is still taken in.
    void pointerUp();

    /// Ends the polling, takes in what the thread has sampled so far, and leads the stroke to where
    /// the button was released, if that is known (view coordinates of the worker's convention). To
    /// be followed by stop().
    void finish(std::optional<QPoint> release);

    /// Ends at once; samples not yet delivered are dropped. Does nothing when idle.
    void stop();

    bool isActive() const { return active_; }

public Q_SLOTS:
    void OnMousePositionChanged(const QPoint& p, int width, float opacity, float hardness);

Q_SIGNALS:
    void RunInputWorker();
    void ShutdownInputWorker();

private:
    struct Sample {
        QPoint position; // image pixels
        float opacity;
    };

    void endThread();
    bool joinThread();
    void abandonThread();
    void endAt(QPoint release);
    void arriveAt(Stroke& stroke, const StrokePoint& point);
    void remember(const StrokePoint& point);
    bool appendFreehand(Stroke& stroke, const StrokePoint& point);
    StrokePoint smoothed(const StrokePoint& point) const;

    std::unique_ptr<FineTimerPeriod> timerPeriod_;
    std::unique_ptr<QThread> thread_;
    std::unique_ptr<InputWorker> worker_;
    bool ending_ = false; ///< the thread has been told
    bool active_ = false;
    Target target_;
    std::vector<Sample> history_; // newest first, at most five
    std::optional<QPoint> press_;
    SampleOptions options_;
    float lastOpacity_ = 1.0F;
    std::optional<QPoint> lastPlace_; ///< of the last sample, in the view
    int places_ = 0;                  ///< samples so far
};

} // namespace vellum
