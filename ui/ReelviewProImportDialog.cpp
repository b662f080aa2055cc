#include "ui/ReelviewProImportDialog.h"

#include "plugin/base/Report.h"
#include "ui/PanelDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kWidth = 360;

} // namespace

ReelviewProImportDialog::ReelviewProImportDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("Reelview Import"));
    removeContextHelpButton(*this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(MQtUtil::dpiScale(kWidth));
    auto* purpose = new QLabel(QStringLiteral("This will bring drawings and notes made in the "
                                              "Reelview review player into the scene."));
    purpose->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* import = buttons->addButton(QStringLiteral("Import"), QDialogButtonBox::ActionRole);
    connect(import, &QPushButton::clicked, this, &ReelviewProImportDialog::Import);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(purpose);
    column->addWidget(buttons);
}

void ReelviewProImportDialog::Import() {
    report::information(QStringLiteral("TODO: ReelviewProImportDialog::Import()"));
}

} // namespace vellum
