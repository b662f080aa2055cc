#include "ui/GhostingDialog.h"

#include "plugin/base/Settings.h"
#include "ui/DialogButtons.h"
#include "ui/GhostingCommands.h"
#include "ui/PanelDialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kWidth = 300;
constexpr int kControlWidth = 24;
constexpr int kSwatchHeight = 18;

QSpinBox* makeCount(int value) {
    auto* box = new QSpinBox;
    box->setRange(1, 9);
    box->setValue(value);
    return box;
}

QFormLayout* addGroup(QVBoxLayout& column, const QString& title) {
    auto* group = new QGroupBox(title);
    column.addWidget(group);
    return new QFormLayout(group);
}

/// Beside the label, not stretched over the row.
void addColor(QFormLayout& form, const QString& label, const ColorControl& color) {
    auto* row = new QHBoxLayout;
    if (color.widget())
        row->addWidget(color.widget());
    row->addStretch();
    form.addRow(label, row);
}

} // namespace

GhostingDialog::GhostingDialog(QWidget* parent)
    : QDialog(parent), previousCount_(makeCount(settings().ghostPrevCount)),
      nextCount_(makeCount(settings().ghostNextCount)),
      colorOverride_(new QCheckBox(QStringLiteral("Enable Color Override"))),
      previousColor_(QStringLiteral("rvGhostPrevOverrideColorBtn"), kControlWidth, kSwatchHeight),
      nextColor_(QStringLiteral("rvGhostNextOverrideColorBtn"), kControlWidth, kSwatchHeight) {
    setWindowTitle(QStringLiteral("Ghosting Settings"));
    removeContextHelpButton(*this);
    setMinimumWidth(MQtUtil::dpiScale(kWidth));
    colorOverride_->setChecked(settings().ghostColorOverride);
    previousColor_.setColor(settings().ghostColorOverridePrev);
    nextColor_.setColor(settings().ghostColorOverrideNext);

    auto* column = new QVBoxLayout(this);
    QFormLayout* frames = addGroup(*column, QStringLiteral("Frames to Display"));
    frames->addRow(QStringLiteral("Previous:"), previousCount_);
    frames->addRow(QStringLiteral("Next:"), nextCount_);
    QFormLayout* colors = addGroup(*column, QStringLiteral("Color Override"));
    colors->addRow(colorOverride_);
    addColor(*colors, QStringLiteral("Previous:"), previousColor_);
    addColor(*colors, QStringLiteral("Next:"), nextColor_);
    const DialogButtons buttons = makeDialogButtons(*this);
    column->addLayout(buttons.row);
    connect(buttons.ok, &QPushButton::clicked, this, &GhostingDialog::Apply);
    connect(buttons.cancel, &QPushButton::clicked, this, &QWidget::close);
}

void GhostingDialog::Apply() {
    const Settings& stored = settings();
    const PanelCommands commands =
        ghostingCommands({previousCount_->value(), nextCount_->value(), colorOverride_->isChecked(),
                          previousColor_.color().value_or(stored.ghostColorOverridePrev),
                          nextColor_.color().value_or(stored.ghostColorOverrideNext)});
    const QPointer<GhostingDialog> self(this);
    issue(commands);
    if (self)
        self->close();
}

} // namespace vellum
