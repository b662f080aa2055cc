#include "plugin/session/Keyboard.h"

#include <QApplication>
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
    QWidget* view = activeViewWidget();
    if (!view || !view->isVisible())
        return;
    if (!view->isActiveWindow())
        view->activateWindow();
    view->setFocus(Qt::OtherFocusReason);
}

} // namespace vellum
