#include "tools/interaction/ViewPlace.h"

#include <QEvent>
#include <QThread>

#include <cmath>

namespace vellum {

namespace {

// A difference of rounding is none.
double scaleOf(double size, int port) {
    return size >= 1.0 && std::abs(size - port) >= 1.5 ? port / size : 1.0;
}

} // namespace

// A child of the view, on the main thread. The widgets around the view move it without telling it.
class ViewPlaceWatch::Filter : public QObject {
public:
    Filter(QWidget& view, std::shared_ptr<Shared> shared)
        : QObject(&view), view_(view), size_(view.size()), shared_(std::move(shared)) {
        for (QWidget* widget = &view; widget; widget = widget->parentWidget()) {
            widget->installEventFilter(this);
            if (widget->isWindow())
                break;
        }
        look(shared_->place);
    }
    ~Filter() override {
        const std::lock_guard<std::mutex> lock(shared_->mutex);
        shared_->filter = nullptr;
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move) {
            ViewPlace place = shared_->place; // written by this thread only
            look(place);
            if (view_.size() != size_) {
                size_ = view_.size();
                place.portHeight =
                    static_cast<int>(std::lround(size_.height() * place.ratio * place.scaleY));
            }
            const std::lock_guard<std::mutex> lock(shared_->mutex);
            shared_->place = place;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void look(ViewPlace& place) const {
        place.ratio = view_.devicePixelRatioF();
        place.origin = view_.mapToGlobal(QPoint(0, 0));
        const QWidget* native = view_.internalWinId() != 0 ? &view_ : view_.nativeParentWidget();
        place.window = native ? native->internalWinId() : 0;
        place.offset = native && native != &view_
                           ? QPointF(view_.mapTo(native, QPoint(0, 0))) * place.ratio
                           : QPointF();
    }

    QWidget& view_;
    QSize size_;
    std::shared_ptr<Shared> shared_;
};

ViewPlaceWatch::ViewPlaceWatch(QWidget& view, int portWidth, int portHeight)
    : shared_(std::make_shared<Shared>()) {
    shared_->filter = new Filter(view, shared_);
    ViewPlace& place = shared_->place;
    place.scaleX = scaleOf(view.width() * place.ratio, portWidth);
    place.scaleY = scaleOf(view.height() * place.ratio, portHeight);
    place.portHeight = portHeight;
}

ViewPlaceWatch::~ViewPlaceWatch() {
    Filter* own = nullptr;
    {
        const std::lock_guard<std::mutex> lock(shared_->mutex);
        if (shared_->filter && shared_->filter->thread() == QThread::currentThread())
            own = shared_->filter;
        else if (shared_->filter)
            shared_->filter->deleteLater(); // a poll that hung ends on its own thread
    }
    delete own; // at once: the plug-in may be about to go
}

ViewPlace ViewPlaceWatch::now() const {
    const std::lock_guard<std::mutex> lock(shared_->mutex);
    return shared_->place;
}

} // namespace vellum
