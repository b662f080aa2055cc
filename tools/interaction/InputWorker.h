// The polling side of the sampling: lives on its own thread for the length of one stroke.
#pragma once

#include "tools/interaction/CursorPoller.h"

#include <QObject>
#include <QPoint>
#include <QSemaphore>

#include <memory>
#include <vector>

namespace vellum {

/// Options of the stroke's tool, read once on the main thread.
struct SampleOptions {
    int width = 1; ///< image pixels
    float opacity = 1.0F;
    float hardness = 1.0F;
    bool pressureEnabled = false; ///< opacity is multiplied by the tablet's pressure
};

class InputWorker : public QObject {
    Q_OBJECT

public:
    InputWorker(std::unique_ptr<CursorPoller> poller, const SampleOptions& options);

    /// One poll: emits the position when it is new. The first one is emitted twice, the first time
    /// one pixel to the left, so that a click leaves a mark. A poll that finds the button up emits
    /// nothing, nor does any later one: the stroke may be handled as ended long after that.
    void poll();

    /// Takes the position of the press for the first one polled, wherever the pointer has gone
    /// since. Before Run(), in the thread that receives the signal.
    void begin(QPoint press);

    /// Emits what is held back because the pen has not told its pressure. poll() does so itself
    /// once the pressure is known or has been waited for long enough.
    void releaseHeld();

    /// Ends the pause between two polls. From any thread, when a call of Shutdown() has been
    /// queued: Run() does not return before.
    void wake() { wake_.release(); }

public Q_SLOTS:
    /// Polls every 8 milliseconds until Shutdown(); at least once unless the press is known.
    void Run();
    void Shutdown();

Q_SIGNALS:
    /// `p` in view coordinates: device pixels, origin at the bottom left, one pixel right of and
    /// above the pixel the pointer is in (viewToImage() expects them so).
    void MousePositionChanged(const QPoint& p, int width, float opacity, float hardness);

private:
    void take(QPoint position, bool holds);
    std::optional<QPoint> look();
    bool awaitsPressure();
    void send(QPoint position);

    std::unique_ptr<CursorPoller> poller_;
    SampleOptions options_;
    bool running_ = false;
    bool released_ = false;
    QPoint lastSent_;    ///< both coordinates the largest int: nothing sent yet
    bool begun_ = false; ///< what was last sent is the press
    std::vector<QPoint> held_;
    int waits_ = 0; ///< polls in which positions were held back
    QSemaphore wake_;
};

} // namespace vellum
