// Where a view's widget lies on the screen, known to threads that may not ask the widget.
#pragma once

#include <QPointF>
#include <QWidget>

#include <memory>
#include <mutex>

namespace vellum {

/// A view as the window system sees it.
struct ViewPlace {
    WId window = 0;                    ///< the native window that shows the view; 0 without one
    QPointF offset;                    ///< of the view in that window, device pixels
    QPoint origin;                     ///< of the view on the screen, Qt's logical pixels
    double ratio = 1.0;                ///< device pixels in a logical one
    double scaleX = 1.0, scaleY = 1.0; ///< pixels of the view's port in a device pixel
    int portHeight = 0;
};

/// Follows a view while it is moved or resized, within its window or with it. Made on the main
/// thread, destroyed on any.
class ViewPlaceWatch {
public:
    /// `portWidth` and `portHeight` are the view's size in its own pixels; compared with the
    /// widget's they tell the scale, which is kept.
    ViewPlaceWatch(QWidget& view, int portWidth, int portHeight);
    ~ViewPlaceWatch();
    ViewPlaceWatch(const ViewPlaceWatch&) = delete;
    ViewPlaceWatch& operator=(const ViewPlaceWatch&) = delete;

    /// From any thread. The last known place once the view has gone.
    ViewPlace now() const;

private:
    class Filter;
    struct Shared {
        std::mutex mutex;
        ViewPlace place;
        Filter* filter = nullptr; ///< belongs to the view; null when that has gone
    };
    std::shared_ptr<Shared> shared_;
};

} // namespace vellum
