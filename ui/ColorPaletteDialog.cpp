#include "ui/ColorPaletteDialog.h"

#include "plugin/base/CommandStrings.h"
#include "ui/FlatButton.h"
#include "ui/Modal.h"
#include "ui/PanelCommand.h"

#include <QAction>
#include <QColorDialog>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <cstddef>

namespace vellum {

namespace {

constexpr int kSwatchSide = 24;

} // namespace

ColorPaletteDialog::ColorPaletteDialog(QWidget* parent)
    : PanelDialog(&Settings::colorPaletteGeometry, Keyboard::Never, parent) {
    setWindowTitle(QStringLiteral("Color Palette"));
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ColorPaletteDialog::ShowContextMenu);

    auto* rows = new QVBoxLayout(this);
    const int margin = MQtUtil::dpiScale(2);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(margin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    std::array<QHBoxLayout*, 2> row{new QHBoxLayout, new QHBoxLayout};
    for (QHBoxLayout* one : row) {
        one->setContentsMargins(0, 0, 0, 0);
        rows->addLayout(one);
    }
    // Qt's dialog numbers its custom colours down the columns.
    for (std::size_t i = 0; i < swatches_.size(); ++i) {
        swatches_[i] = new FlatButton(this);
        swatches_[i]->setSide(kSwatchSide);
        row[i % row.size()]->addWidget(swatches_[i]);
        connect(swatches_[i], &FlatButton::clicked, this, &ColorPaletteDialog::OnColorSelected);
    }
    refresh();
}

void ColorPaletteDialog::refresh() {
    for (std::size_t i = 0; i < swatches_.size(); ++i)
        swatches_[i]->setColors(QColorDialog::customColor(static_cast<int>(i)));
}

void ColorPaletteDialog::OnColorSelected() {
    const auto* swatch = qobject_cast<const FlatButton*>(sender());
    if (!swatch || !swatch->background().isValid())
        return;
    actionDone();
    issue({PanelCommand::echoed(command::drawColor(swatch->background()))});
}

void ColorPaletteDialog::ShowContextMenu(const QPoint& position) {
    auto* menu = new QMenu;
    const QAction* customize = menu->addAction(QStringLiteral("Customize..."));
    // The dialog's event loop may take the menu away, so it begins when the menu's event is done.
    connect(customize, &QAction::triggered, this, &ColorPaletteDialog::CustomizeColors,
            Qt::QueuedConnection);
    popUp(menu, mapToGlobal(position));
}

void ColorPaletteDialog::CustomizeColors() {
    const QPointer<ColorPaletteDialog> self(this);
    // Only its custom colours are of interest, and those it sets whatever way it is closed.
    chooseColor(QColorDialog::customColor(0), QStringLiteral("Customize Palette Colors"),
                MQtUtil::mainWindow());
    if (!self)
        return;
    refresh();
    actionDone();
}

} // namespace vellum
