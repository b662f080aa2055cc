#include "tools/interaction/ToolInputHandler.h"

#include "plugin/base/QtCompat.h"
#include "plugin/session/Keyboard.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <maya/MQtUtil.h>

namespace vellum {

// Not later: a closed menu that Qt has yet to delete would outlive the plug-in, whose memory it
// uses.
ToolInputHandler::~ToolInputHandler() {
    delete menu_.data();
}

void ToolInputHandler::activate(bool active) {
    if (!active && !active_)
        return;
    active_ = active;
    releaseKeys();
    views_.clear();
    if (mainWindow_)
        mainWindow_->removeEventFilter(this);
    if (!active) {
        if (menu_)
            menu_->close();
        return;
    }
    mainWindow_ = MQtUtil::mainWindow();
    if (mainWindow_)
        mainWindow_->installEventFilter(this);
    watchActiveView();
}

void ToolInputHandler::watchActiveView() {
    views_.add(activeViewWidget());
}

bool ToolInputHandler::eventFilter(QObject* watched, QEvent* event) {
    bool consumed = false;
    if (views_.contains(watched))
        consumed = filterView(*static_cast<QWidget*>(watched), event);
    else if (watched == mainWindow_.data())
        consumed = filterMainWindow(event);
    else
        consumed = filterOther(watched, event);
    return consumed || QObject::eventFilter(watched, event);
}

bool ToolInputHandler::filterView(QWidget& view, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return filterMenu(view, *static_cast<QMouseEvent*>(event));
    case QEvent::Hide:
    case QEvent::WindowBlocked:
        Q_EMIT PointerLost(&view);
        return false;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason)
            Q_EMIT PointerLost(&view);
        return false;
    default:
        // Keys pressed in a window of its own do not come by the main window.
        return view.window() != mainWindow_ && filterKey(event);
    }
}

bool ToolInputHandler::filterOther(QObject*, QEvent*) {
    return false;
}

bool ToolInputHandler::filterKey(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) {
        releaseKeys(); // their releases go to another window
    } else if (event->type() == QEvent::KeyPress) {
        panZoomKey_.press(static_cast<QKeyEvent*>(event)->key());
    } else if (event->type() == QEvent::KeyRelease) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        panZoomKey_.release(key.key(), key.isAutoRepeat());
    }
    return false;
}

bool ToolInputHandler::filterMenu(QWidget& view, const QMouseEvent& event) {
    if (!isPlainRightPress(event) || !isMenuEnabled() || panZoomKey_.isHeld())
        return false;
    makeActiveView(view);
    showMenu(makeMenuAt((qt::position(&event) * view.devicePixelRatioF()).toPoint()));
    return true;
}

void ToolInputHandler::showMenu(QMenu* menu) {
    if (menu_)
        menu_->close();
    releaseKeys(); // the menu takes their releases
    menu_ = menu;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(QCursor::pos());
}

} // namespace vellum
