#include "tools/interaction/CursorPoller.h"

#include <QCursor>
#include <QGuiApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#if defined(__linux__) || defined(__FreeBSD__)
#define VELLUM_XCB 1
#include <xcb/xcb.h>
#elif defined(_WIN32)
#include <windows.h>
#endif

namespace vellum {

namespace {

// From units of the platform to pixels of the view's port.
struct PortScale {
    double x = 1.0;
    double y = 1.0;
    int portHeight = 0;

    // `width` and `height` of the widget in the platform's units. A difference of rounding is none.
    PortScale(double width, double height, int wide, int high) : portHeight(high) {
        if (width >= 1.0 && std::abs(width - wide) >= 1.5)
            x = wide / width;
        if (height >= 1.0 && std::abs(height - high) >= 1.5)
            y = high / height;
    }

    PointerSample sample(double px, double py) const {
        return {{static_cast<int>(std::floor(px * x)), static_cast<int>(std::floor(py * y))},
                portHeight};
    }
};

// Logical pixels of Qt. The view's place is remembered, since widgets may not be asked elsewhere.
class QtPoller : public CursorPoller {
public:
    QtPoller(const QWidget& view, int portWidth, int portHeight)
        : origin_(view.mapToGlobal(QPoint(0, 0))),
          scale_(view.width(), view.height(), portWidth, portHeight) {}

    std::optional<PointerSample> poll() override {
        const QPoint position = QCursor::pos() - origin_;
        return scale_.sample(position.x(), position.y());
    }

private:
    QPoint origin_;
    PortScale scale_;
};

#if defined(VELLUM_XCB) || defined(_WIN32)

// The native window that shows the view, and where in it the view begins, in device pixels.
struct NativePlace {
    WId window = 0;
    QPointF offset;
    double ratio = 1.0;

    explicit NativePlace(const QWidget& view) : ratio(view.devicePixelRatioF()) {
        const QWidget* native = view.internalWinId() != 0 ? &view : view.nativeParentWidget();
        if (!native)
            return;
        window = native->internalWinId();
        if (native != &view)
            offset = QPointF(view.mapTo(native, QPoint(0, 0))) * ratio;
    }
};

#endif

#ifdef VELLUM_XCB

// A connection of its own, so that the window system's answers need nothing of Qt's.
class XcbPoller : public CursorPoller {
public:
    XcbPoller(const QWidget& view, int portWidth, int portHeight)
        : place_(view),
          scale_(view.width() * place_.ratio, view.height() * place_.ratio, portWidth, portHeight),
          connection_(xcb_connect(nullptr, nullptr)) {}
    ~XcbPoller() override { xcb_disconnect(connection_); }
    XcbPoller(const XcbPoller&) = delete;
    XcbPoller& operator=(const XcbPoller&) = delete;

    bool isUsable() const {
        return place_.window != 0 && xcb_connection_has_error(connection_) == 0;
    }

    std::optional<PointerSample> poll() override {
        const auto cookie =
            xcb_query_pointer(connection_, static_cast<xcb_window_t>(place_.window));
        xcb_generic_error_t* error = nullptr;
        xcb_query_pointer_reply_t* reply = xcb_query_pointer_reply(connection_, cookie, &error);
        std::free(error); // the window has gone
        if (!reply)
            return std::nullopt;
        const double x = reply->win_x - std::round(place_.offset.x());
        const double y = reply->win_y - std::round(place_.offset.y());
        std::free(reply);
        return scale_.sample(x, y);
    }

private:
    NativePlace place_;
    PortScale scale_;
    xcb_connection_t* connection_;
};

#elif defined(_WIN32)

class WindowsPoller : public CursorPoller {
public:
    WindowsPoller(const QWidget& view, int portWidth, int portHeight)
        : place_(view),
          scale_(view.width() * place_.ratio, view.height() * place_.ratio, portWidth, portHeight) {
    }

    std::optional<PointerSample> poll() override {
        POINT point;
        if (!GetCursorPos(&point) || !ScreenToClient(reinterpret_cast<HWND>(place_.window), &point))
            return std::nullopt;
        return scale_.sample(point.x - std::round(place_.offset.x()),
                             point.y - std::round(place_.offset.y()));
    }

private:
    NativePlace place_;
    PortScale scale_;
};

#endif

} // namespace

std::unique_ptr<CursorPoller> CursorPoller::forView(const QWidget& view, int portWidth,
                                                    int portHeight) {
#ifdef VELLUM_XCB
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        auto poller = std::make_unique<XcbPoller>(view, portWidth, portHeight);
        if (poller->isUsable())
            return poller;
    }
#elif defined(_WIN32)
    if (NativePlace(view).window != 0)
        return std::make_unique<WindowsPoller>(view, portWidth, portHeight);
#endif
    return std::make_unique<QtPoller>(view, portWidth, portHeight);
}

} // namespace vellum
