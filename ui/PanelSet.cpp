#include "ui/PanelSet.h"

#include "plugin/session/Cameras.h"
#include "plugin/session/PluginState.h"
#include "ui/AboutDialog.h"
#include "ui/ColorPaletteDialog.h"
#include "ui/GhostingDialog.h"
#include "ui/Modal.h"
#include "ui/PreferencesDialog.h"
#include "ui/ReelviewProImportDialog.h"
#include "ui/RetimingDialog.h"
#include "ui/ToolOptionsDialog.h"
#include "ui/ToolboxDialog.h"
#include "ui/layers/LayerListing.h"
#include "ui/layers/LayerManagerDialog.h"
#include "ui/layers/LayerPropertiesDialog.h"
#include "ui/layers/NewLayerDialog.h"

#include <QScopedValueRollback>

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
    case Panel::LayerManager:
        return new LayerManagerDialog(parent);
    case Panel::Toolbox:
        return new ToolboxDialog(parent);
    case Panel::ToolOptions:
        return new ToolOptionsDialog(ToolOptionsDialog::Form::StandAlone, settings().activeTool,
                                     parent);
    case Panel::RetimingTool:
        return new RetimingDialog(parent);
    }
    return nullptr;
}

/// Null for a dialog that is not made here.
QDialog* make(Dialog dialog) {
    QWidget* parent = MQtUtil::mainWindow();
    switch (dialog) {
    case Dialog::GhostingSettings:
        return new GhostingDialog(parent);
    case Dialog::Preferences:
        return new PreferencesDialog(parent);
    case Dialog::About:
        return new AboutDialog(parent);
    case Dialog::NewLayer: // these open themselves
    case Dialog::ReelviewImport:
        break;
    }
    return nullptr;
}

} // namespace

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

bool PanelSet::open(Dialog dialog) {
    if (!pluginState().interactive)
        return Panels::open(dialog);
    if (dialog == Dialog::NewLayer) {
        NewLayerDialog::open(MQtUtil::mainWindow());
        return true;
    }
    if (dialog == Dialog::ReelviewImport) {
        if (!import_)
            import_ = new ReelviewProImportDialog(MQtUtil::mainWindow());
        import_->show();
        return true;
    }
    const QPointer<QDialog> made = make(dialog);
    if (!made)
        return false;
    // A script may open one over another.
    const QScopedValueRollback<QPointer<QDialog>> innermost(open_, made);
    runModal(made);
    delete made.data();
    return true;
}

bool PanelSet::openLayerProperties(const QString& camera, int layer) {
    return pluginState().interactive &&
           LayerPropertiesDialog::open({camera, layer}, MQtUtil::mainWindow());
}

LayerManagerDialog* PanelSet::layerManager() const {
    return qobject_cast<LayerManagerDialog*>(existing(Panel::LayerManager));
}

// A panel that is not shown is brought up to date when it is.
void PanelSet::refreshLayerManager(LayerManager& document) {
    LayerManagerDialog* panel = layerManager();
    if (panel && panel->isVisible())
        panel->showListing(listLayers(document, cameraNames()));
}

bool PanelSet::clearLayerManager() {
    LayerManagerDialog* panel = layerManager();
    if (panel)
        panel->clear();
    return panel != nullptr;
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

void PanelSet::cancelDialog() {
    if (open_)
        open_->reject();
}

void PanelSet::closeAll() {
    closePopUp();
    delete import_.data();
    for (const QPointer<PanelDialog>& panel : panels_) {
        if (panel && panel->isVisible())
            panel->storeGeometry();
        delete panel.data();
    }
}

} // namespace vellum
