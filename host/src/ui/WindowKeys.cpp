#include "ui/WindowKeys.h"

#include "render/View.h"
#include "render/Views.h"
#include "ui/CameraNavigation.h"
#include "ui/Playback.h"
#include "ui/Tools.h"

#include <QAbstractSpinBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>

namespace host {

PanZoomKey& PanZoomKey::instance() {
    static PanZoomKey key;
    return key;
}

PanZoomKey::PanZoomKey() {
    // The release of a key that is held then goes to another window, perhaps not to one of ours.
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
                     [this] { held_ = false; });
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

} // namespace host
