// The panels and dialogs, as commands and the document drive them. The widgets are made higher up;
// what is not there (in batch mode: nothing is) answers silently that it could not be had. The
// questions that need no panel are asked here. Main thread only.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <optional>

namespace vellum {

class LayerManager;

enum class Panel { LayerManager, Toolbox, ToolOptions, ColorPalette, RetimingTool };
inline constexpr std::size_t kPanelCount = 5;
enum class Dialog { NewLayer, GhostingSettings, Preferences, About, ReelviewImport };

class Panels {
public:
    virtual ~Panels() = default;

    /// Shows the panel, made on first use; one that is shown already is activated and raised.
    virtual bool show(Panel panel);
    /// Modal. False when there is no such dialog.
    virtual bool open(Dialog dialog);
    virtual bool openLayerProperties(const QString& camera, int layer);

    // Refreshing a panel that does not exist does nothing.
    virtual void refreshToolbox();
    virtual void refreshToolOptions();
    virtual void refreshLayerManager(LayerManager& document);
    /// No drawing: empties the list and forgets camera and index.
    virtual bool clearLayerManager();

    /// Colour of the toolbox's picker; empty without toolbox or with an invalid colour.
    virtual std::optional<QColor> toolboxColor();

    /// Asks for one of `cameras`; empty when the user cancels or picks none, and in batch mode.
    virtual std::optional<QString> chooseCamera(const QStringList& cameras,
                                                const QString& preselected);

    /// Asks, then closes every panel and forgets where it was. True whatever the answer; false in
    /// batch mode.
    virtual bool resetInterface();

    /// Stores every panel's geometry in the settings and deletes the panels.
    virtual void closeAll();

    /// Leaves the dialog of open() that is open, if any, as its Cancel does.
    virtual void cancelDialog();
};

/// Never fails: before the entry connects any, and after it disconnected them, a set without
/// panels.
Panels& panels();

/// Called by the entry only; null disconnects. Not owned.
void connectPanels(Panels* connected);

/// Brings the radio and check marks of the main menu up to date with the settings. Does nothing
/// where there is none: in batch mode, and when its script failed.
bool updateMainMenu();

} // namespace vellum
