#include "ui/PanelDialog.h"

#include "plugin/session/Keyboard.h"

#include <QHideEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShowEvent>

namespace vellum {

PanelDialog::PanelDialog(Geometry geometry, Keyboard keyboard, QWidget* parent, Restore restore)
    : QDialog(parent), geometry_(geometry), restore_(restore) {
    removeContextHelpButton(*this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    if (keyboard == Keyboard::Never) {
        setWindowFlag(Qt::WindowDoesNotAcceptFocus);
        setFocusPolicy(Qt::NoFocus);
    }
    restorePlace();
}

void PanelDialog::restorePlace() {
    const QByteArray stored = geometry_ ? settings().*geometry_ : QByteArray();
    if (!stored.isEmpty())
        restoreGeometry(stored); // brings one from a screen that is gone onto one that is there
}

void PanelDialog::storeGeometry() {
    if (geometry_)
        settings().*geometry_ = saveGeometry();
}

void PanelDialog::present() {
    if (isHidden()) {
        show();
        return;
    }
    if (isMinimized())
        showNormal();
    if (!windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus))
        activateWindow();
    raise();
    actionDone();
}

void PanelDialog::actionDone() {
    giveKeyboardToView();
}

void PanelDialog::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        if (restore_ == Restore::EveryShow)
            restorePlace();
        refreshForShow();
    }
    QDialog::showEvent(event);
}

// Closing by the title bar, by a script or by the reset all end here; a close event does not come
// of all of them. A hiding that the window system tells of is that of the main window.
void PanelDialog::hideEvent(QHideEvent* event) {
    if (!event->spontaneous())
        storeGeometry();
    QDialog::hideEvent(event);
}

// Escape leaves a field; a panel that is worked with all day does not go away by it. Enter must not
// press a button that happens to be the default.
void PanelDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        actionDone();
        return;
    }
    QWidget::keyPressEvent(event);
}

void PanelDialog::mousePressEvent(QMouseEvent* event) {
    QDialog::mousePressEvent(event);
    actionDone();
}

void removeContextHelpButton(QDialog& dialog) {
    dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

} // namespace vellum
