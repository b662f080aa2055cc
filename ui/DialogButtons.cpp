#include "ui/DialogButtons.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace vellum {

DialogButtons makeDialogButtons(QDialog& dialog) {
    DialogButtons buttons{new QHBoxLayout, new QPushButton(QStringLiteral("OK"), &dialog),
                          new QPushButton(QStringLiteral("Cancel"), &dialog)};
    buttons.ok->setDefault(true);
    buttons.row->addStretch();
    buttons.row->addWidget(buttons.ok);
    buttons.row->addWidget(buttons.cancel);
    return buttons;
}

} // namespace vellum
