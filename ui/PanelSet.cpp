#include "ui/PanelSet.h"

#include "plugin/session/PluginState.h"
#include "ui/ColorPaletteDialog.h"
#include "ui/Modal.h"

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
    case Panel::ToolOptions:
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

void PanelSet::closeAll() {
    closePopUp();
    for (const QPointer<PanelDialog>& panel : panels_) {
        if (panel && panel->isVisible())
            panel->storeGeometry();
        delete panel.data();
    }
}

} // namespace vellum
