#include "ui/Modal.h"

#include "plugin/session/Keyboard.h"
#include "plugin/session/ModalScope.h"

#include <QColorDialog>
#include <QDialog>
#include <QPointer>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

QPointer<QMenu>& openMenu() {
    static QPointer<QMenu> menu;
    return menu;
}

} // namespace

bool runModal(QDialog* dialog) {
    bool accepted = false;
    {
        const ModalScope open;
        accepted = dialog->exec() == QDialog::Accepted;
    }
    giveKeyboardToView();
    return accepted;
}

std::optional<QColor> chooseColor(const QColor& initial, const QString& title, QWidget* parent) {
    QColor chosen;
    {
        const ModalScope open;
        chosen = QColorDialog::getColor(initial, parent, title, QColorDialog::DontUseNativeDialog);
    }
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

void popUp(QMenu* menu, const QPoint& globalPosition) {
    closePopUp();
    menu->setParent(MQtUtil::mainWindow(), menu->windowFlags());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    openMenu() = menu;
    menu->popup(globalPosition);
}

void closePopUp() {
    delete openMenu().data();
}

} // namespace vellum
