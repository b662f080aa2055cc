#include "plugin/session/Keyboard.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include <maya/M3dView.h>

namespace vellum {

QWidget* activeViewWidget() {
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    return status == MS::kSuccess ? view.widget() : nullptr;
}

void giveKeyboardToView() {
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return;
    const QPointer<QWidget> view = activeViewWidget();
    if (!view || !view->isVisible())
        return;
    // The window system takes its time; what was typed is taken before the action that follows.
    QWidget* field = QApplication::focusWidget();
    if (field && field->window() != view->window())
        field->clearFocus();
    if (!view)
        return;
    if (!view->isActiveWindow())
        view->activateWindow();
    view->setFocus(Qt::OtherFocusReason);
}

} // namespace vellum
