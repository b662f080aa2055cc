// The panels that exist, one of each kind, and the way from commands to panels and dialogs. Main
// thread only.
#pragma once

#include "plugin/session/Panels.h"
#include "ui/PanelDialog.h"

#include <QPointer>

#include <array>
#include <optional>

namespace vellum {

class LayerManagerDialog;
class ToolboxDialog;

/// Closes nothing when it is destroyed, which may be at the end of the process: Maya's main window,
/// the open menu and the settings are gone by then. Whoever owns it calls closeAll() before.
class PanelSet : public Panels {
public:
    bool show(Panel panel) override;
    bool open(Dialog dialog) override;
    bool openLayerProperties(const QString& camera, int layer) override;
    void refreshLayerManager(LayerManager& document) override;
    bool clearLayerManager() override;
    void refreshToolbox() override;
    void refreshToolOptions() override;
    std::optional<QColor> toolboxColor() override;
    void closeAll() override;
    void cancelDialog() override;

private:
    /// Null when it has not been asked for yet.
    PanelDialog* existing(Panel panel) const;
    LayerManagerDialog* layerManager() const;
    ToolboxDialog* toolbox() const;

    std::array<QPointer<PanelDialog>, kPanelCount> panels_; ///< children of Maya's main window
    QPointer<QDialog> open_;                                ///< of open(), while it runs
    QPointer<QDialog> import_; ///< not modal: scripts that name its flag go on
};

} // namespace vellum
