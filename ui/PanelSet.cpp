#include "ui/PanelSet.h"

#include "plugin/session/PluginState.h"
#include "ui/ColorPaletteDialog.h"
#include "ui/Modal.h"
#include "ui/ToolOptionsDialog.h"
#include "ui/ToolboxDialog.h"

#include <maya/MQtUtil.h>

#include <cstddef>

namespace vellum {

namespace {

/// Null for a panel that is not made here.
PanelDialog* make(Panel panel) {
    QWidget* parent = MQtUtil::mainWindow();
    switch (panel) {
    case Panel::ColorPalette:
        return new ColorPaletteDialog(parent);
    case Panel::Toolbox:
        return new ToolboxDialog(parent);
    case Panel::ToolOptions:
        return new ToolOptionsDialog(ToolOptionsDialog::Form::StandAlone, settings().activeTool,
                                     parent);
    case Panel::LayerManager:
    case Panel::RetimingTool:
        break;
    }
    return nullptr;
}

} // namespace

PanelSet::~PanelSet() {
    closeAll();
}

PanelDialog* PanelSet::existing(Panel panel) const {
    return panels_[static_cast<std::size_t>(panel)];
}

bool PanelSet::show(Panel panel) {
    if (!pluginState().interactive)
        return Panels::show(panel);
    QPointer<PanelDialog>& dialog = panels_[static_cast<std::size_t>(panel)];
    if (!dialog)
        dialog = make(panel);
    if (!dialog)
        return false;
    dialog->present();
    return true;
}

ToolboxDialog* PanelSet::toolbox() const {
    return static_cast<ToolboxDialog*>(existing(Panel::Toolbox));
}

void PanelSet::refreshToolbox() {
    if (ToolboxDialog* shown = toolbox())
        shown->refresh();
}

void PanelSet::refreshToolOptions() {
    if (auto* shown = static_cast<ToolOptionsDialog*>(existing(Panel::ToolOptions)))
        shown->refresh();
    if (ToolboxDialog* owner = toolbox())
        owner->refreshToolOptions();
}

std::optional<QColor> PanelSet::toolboxColor() {
    const ToolboxDialog* shown = toolbox();
    return shown ? shown->pickedColor() : std::nullopt;
}

void PanelSet::closeAll() {
    closePopUp();
    for (const QPointer<PanelDialog>& panel : panels_) {
        if (panel && panel->isVisible())
            panel->storeGeometry();
        delete panel.data();
    }
}

} // namespace vellum
