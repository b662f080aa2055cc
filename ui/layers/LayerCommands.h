// What each control of the layer manager and of the layer dialogs issues, from what it shows and
// what is selected. No widgets here.
#pragma once

#include "ui/PanelCommand.h"
#include "ui/layers/LayerListing.h"

namespace vellum::layer_commands {

// --- The layer manager ------------------------------------------------------------------------

/// A click on a row also takes the drawing tool. The row that is drawn on already is not made so
/// again, which the command would refuse.
PanelCommands clickRow(const LayerPlace& row, bool isDrawnOnAlready);

/// `shown`: the text of the button that is clicked.
PanelCommands clickVisibility(const LayerPlace& row, const QString& shown);
PanelCommands clickState(const LayerPlace& row, const QString& shown);
QString visibilityText(bool visible);
QString stateText(int state); ///< empty for a number that is none of a state

/// One step in the stack: up is towards the bottom of the stack, which the panel shows below.
PanelCommands moveUp(const LayerPlace& selected);
PanelCommands moveDown(const LayerPlace& selected, int layerCount);
PanelCommands deleteLayer(const LayerPlace& selected);
PanelCommands refresh();

PanelCommands moveToCamera(const LayerPlace& row, const QString& target);
PanelCommands moveAllToCamera(const QString& camera, const QString& target);

// --- The dialogs ------------------------------------------------------------------------------

struct NewLayer {
    QString name; ///< empty: the command's own
    QString camera;
    int state = 0;
};

/// Without a drawing it is made first.
PanelCommands addLayer(const NewLayer& layer, bool hasDrawing);

struct LayerValues {
    QString name;
    QString camera; ///< empty: none was chosen
    bool visible = true;
    int state = 0;
};

/// One command for each value that the user changed; the move to another camera last, since all are
/// addressed to the place where the layer is before.
PanelCommands changeLayer(const LayerPlace& now, const LayerValues& before,
                          const LayerValues& after);

} // namespace vellum::layer_commands
