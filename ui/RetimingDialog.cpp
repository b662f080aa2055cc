#include "ui/RetimingDialog.h"

#include "ui/GhostingCommands.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kLongestHold = 6;
constexpr int kLargestChange = 2;
constexpr int kHoldWidth = 30;
constexpr int kChangeWidth = 36;

} // namespace

RetimingDialog::RetimingDialog(QWidget* parent)
    : PanelDialog(&Settings::retimingToolGeometry, Keyboard::Never, parent),
      moveToNext_(new QCheckBox(QStringLiteral("Move to Next Frame"), this)) {
    setWindowTitle(QStringLiteral("Retiming Tool"));
    auto* column = new QVBoxLayout(this);
    const int margin = MQtUtil::dpiScale(4);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(MQtUtil::dpiScale(2));
    column->setSizeConstraint(QLayout::SetFixedSize);

    auto* holds = new QHBoxLayout;
    for (int frames = 1; frames <= kLongestHold; ++frames)
        addButton(*holds, QStringLiteral("%1f").arg(frames), kHoldWidth,
                  &RetimingDialog::RetimeAbsolute);
    auto* changes = new QHBoxLayout;
    for (int frames = -kLargestChange; frames <= kLargestChange; ++frames) {
        if (frames != 0)
            addButton(*changes,
                      (frames < 0 ? QStringLiteral("%1f") : QStringLiteral("+%1f")).arg(frames),
                      kChangeWidth, &RetimingDialog::RetimeRelative);
    }
    changes->addStretch();
    for (QHBoxLayout* row : {holds, changes}) {
        row->setSpacing(MQtUtil::dpiScale(2));
        column->addLayout(row);
    }
    column->addWidget(moveToNext_);
    moveToNext_->setFocusPolicy(Qt::NoFocus);
    connect(moveToNext_, &QCheckBox::toggled, this, &RetimingDialog::OnMoveToNextFrameToggled);
    refreshForShow();
}

void RetimingDialog::addButton(QHBoxLayout& row, const QString& text, int width, Slot slot) {
    auto* button = new QPushButton(text, this);
    button->setFixedWidth(MQtUtil::dpiScale(width));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, slot);
    row.addWidget(button);
}

void RetimingDialog::refreshForShow() {
    moveToNext_->setChecked(settings().retimeMoveToNextFrame);
}

void RetimingDialog::RetimeAbsolute() {
    retime(false);
}

void RetimingDialog::RetimeRelative() {
    retime(true);
}

void RetimingDialog::retime(bool relative) {
    const auto* button = qobject_cast<const QPushButton*>(sender());
    if (!button)
        return;
    actionDone();
    issue(retimeCommands(button->text(), relative, moveToNext_->isChecked()));
}

void RetimingDialog::OnMoveToNextFrameToggled() {
    settings().retimeMoveToNextFrame = moveToNext_->isChecked();
    actionDone();
}

} // namespace vellum
