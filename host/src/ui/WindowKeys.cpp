#include "ui/WindowKeys.h"

#include "render/View.h"
#include "render/Views.h"
#include "ui/CameraNavigation.h"
#include "ui/Playback.h"
#include "ui/Tools.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>

namespace host {

PanZoomKey& PanZoomKey::instance() {
    static PanZoomKey key;
    return key;
}

PanZoomKey::PanZoomKey() {
    // The release of a key that is held goes to the window with the focus: seen if it is ours.
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
                     [this](const QWindow* focus) { held_ = held_ && focus; });
}

void PanZoomKey::press() {
    held_ = true;
    used_ = false;
}

void PanZoomKey::release() {
    const bool tapped = held_ && !used_;
    held_ = false;
    const View* view = Views::instance().active();
    if (tapped && view)
        CameraNavigation::switchPanZoom(view->camera());
}

bool windowKeyPressed(const QWidget& window, const QKeyEvent& event) {
    // Fields let Enter and Escape go on to their window.
    const QWidget* focus = window.focusWidget();
    MPxContext* tool = Tools::instance().current();
    if (qobject_cast<const QLineEdit*>(focus) || qobject_cast<const QAbstractSpinBox*>(focus))
        tool = nullptr;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // A held key would complete what it has begun itself, again and again.
        if (tool && !event.isAutoRepeat())
            tool->completeAction();
        return true;
    case Qt::Key_Escape:
        if (Playback::instance().isPlaying())
            Playback::instance().stop();
        else if (tool)
            tool->abortAction();
        return true;
    case Qt::Key_Delete: // in the main window a hotkey of the Edit menu
    case Qt::Key_Backspace:
        if (tool)
            tool->deleteAction();
        return true;
    case Qt::Key_Backslash:
        if (!event.isAutoRepeat())
            PanZoomKey::instance().press();
        return true;
    default:
        return false;
    }
}

bool windowKeyReleased(const QKeyEvent& event) {
    if (event.key() != Qt::Key_Backslash)
        return false;
    if (!event.isAutoRepeat())
        PanZoomKey::instance().release();
    return true;
}

DialogKeys::DialogKeys(QWidget& mainWindow) : QObject(&mainWindow) {
    qApp->installEventFilter(this);
}

bool DialogKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool pressed = event->type() == QEvent::KeyPress;
    if ((!pressed && event->type() != QEvent::KeyRelease) || !isToolDialog(*watched))
        return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() != Qt::Key_Backslash || (pressed && QApplication::activeModalWidget()))
        return false;
    return pressed ? windowKeyPressed(*static_cast<QWidget*>(watched), key)
                   : windowKeyReleased(key);
}

bool DialogKeys::isToolDialog(const QObject& object) const {
    if (!object.isWidgetType() || &object == parent())
        return false;
    const auto& widget = static_cast<const QWidget&>(object);
    return widget.isWindow() && widget.parentWidget() &&
           widget.parentWidget()->window() == parent();
}

} // namespace host
