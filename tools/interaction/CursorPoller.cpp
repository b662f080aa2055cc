#include "tools/interaction/CursorPoller.h"

#include "tools/interaction/ViewPlace.h"

#include <QCursor>
#include <QGuiApplication>

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

// From device pixels of the view to pixels of its port.
PointerSample sampleIn(const ViewPlace& place, double x, double y) {
    return {{static_cast<int>(std::floor(x * place.scaleX)),
             static_cast<int>(std::floor(y * place.scaleY))},
            place.portHeight};
}

#if defined(VELLUM_XCB) || defined(_WIN32)

// From device pixels of the native window.
PointerSample sampleInWindow(const ViewPlace& place, int x, int y) {
    return sampleIn(place, x - std::round(place.offset.x()), y - std::round(place.offset.y()));
}

#endif

// Logical pixels of Qt.
class QtPoller : public CursorPoller {
public:
    QtPoller(QWidget& view, int portWidth, int portHeight) : view_(view, portWidth, portHeight) {}

    std::optional<PointerSample> poll() override {
        const ViewPlace place = view_.now();
        const QPoint position = QCursor::pos() - place.origin;
        return sampleIn(place, position.x() * place.ratio, position.y() * place.ratio);
    }

private:
    ViewPlaceWatch view_;
};

#ifdef VELLUM_XCB

// A connection of its own, so that the window system's answers need nothing of Qt's.
class XcbPoller : public CursorPoller {
public:
    XcbPoller(QWidget& view, int portWidth, int portHeight)
        : view_(view, portWidth, portHeight), connection_(xcb_connect(nullptr, nullptr)) {}
    ~XcbPoller() override { xcb_disconnect(connection_); }
    XcbPoller(const XcbPoller&) = delete;
    XcbPoller& operator=(const XcbPoller&) = delete;

    bool isUsable() const {
        return view_.now().window != 0 && xcb_connection_has_error(connection_) == 0;
    }

    std::optional<PointerSample> poll() override {
        const ViewPlace place = view_.now();
        const auto cookie = xcb_query_pointer(connection_, static_cast<xcb_window_t>(place.window));
        xcb_generic_error_t* error = nullptr;
        xcb_query_pointer_reply_t* reply = xcb_query_pointer_reply(connection_, cookie, &error);
        std::free(error); // the window has gone
        if (!reply)
            return std::nullopt;
        const int x = reply->win_x;
        const int y = reply->win_y;
        const bool released = (reply->mask & XCB_BUTTON_MASK_1) == 0;
        std::free(reply);
        PointerSample sample = sampleInWindow(place, x, y);
        sample.released = released;
        return sample;
    }

private:
    ViewPlaceWatch view_;
    xcb_connection_t* connection_;
};

#elif defined(_WIN32)

class WindowsPoller : public CursorPoller {
public:
    WindowsPoller(QWidget& view, int portWidth, int portHeight)
        : view_(view, portWidth, portHeight) {}

    bool isUsable() const { return view_.now().window != 0; }

    std::optional<PointerSample> poll() override {
        const ViewPlace place = view_.now();
        POINT point;
        const int first = GetSystemMetrics(SM_SWAPBUTTON) ? VK_RBUTTON : VK_LBUTTON;
        const bool down = (GetAsyncKeyState(first) & 0x8000) != 0;
        if (!GetCursorPos(&point) || !ScreenToClient(reinterpret_cast<HWND>(place.window), &point))
            return std::nullopt;
        PointerSample sample = sampleInWindow(place, point.x, point.y);
        // Some pens press no button that can be asked for.
        seenDown_ = seenDown_ || down;
        sample.released = seenDown_ && !down;
        return sample;
    }

private:
    ViewPlaceWatch view_;
    bool seenDown_ = false;
};

#endif

} // namespace

std::unique_ptr<CursorPoller> CursorPoller::forView(QWidget& view, int portWidth, int portHeight) {
#ifdef VELLUM_XCB
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        auto poller = std::make_unique<XcbPoller>(view, portWidth, portHeight);
        if (poller->isUsable())
            return poller;
    }
#elif defined(_WIN32)
    auto poller = std::make_unique<WindowsPoller>(view, portWidth, portHeight);
    if (poller->isUsable())
        return poller;
#endif
    return std::make_unique<QtPoller>(view, portWidth, portHeight);
}

} // namespace vellum
