// Where the pointer is, asked from a thread of its own. All platform code of the sampling is here
// and in TimerPeriod.h.
#pragma once

#include <QPoint>

#include <memory>
#include <optional>

class QWidget;

namespace vellum {

/// A pointer position in pixels of the view's port (device pixels), origin at the top left.
struct PointerSample {
    QPoint position;
    int viewHeight = 0;
    bool released = false; ///< the first button is up; false where that cannot be told
};

/// Made on the main thread for one view widget, then used from one thread at a time. Polling asks
/// no widget: where the view lies is kept up to date by the main thread.
class CursorPoller {
public:
    virtual ~CursorPoller() = default;

    /// Empty while the pointer cannot be seen, e.g. when the view's window has gone.
    virtual std::optional<PointerSample> poll() = 0;

    /// `portWidth` and `portHeight` are the view's size in its own pixels; compared with the
    /// widget's they tell the scale. On X11 positions are exact device pixels at any scale; where
    /// the platform only knows logical pixels they are scaled.
    static std::unique_ptr<CursorPoller> forView(QWidget& view, int portWidth, int portHeight);
};

} // namespace vellum
