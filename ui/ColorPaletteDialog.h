// Sixteen swatches: the custom colours of Qt's colour dialog, which all dialogs of the process
// share. A click makes one the drawing colour. Main thread only.
#pragma once

#include "ui/PanelDialog.h"

#include <array>

namespace vellum {

class FlatButton;

class ColorPaletteDialog : public PanelDialog {
    Q_OBJECT

public:
    explicit ColorPaletteDialog(QWidget* parent);

    /// Takes the colours as they stand.
    void refresh();

public Q_SLOTS:
    /// `position` in this dialog.
    void ShowContextMenu(const QPoint& position);
    void CustomizeColors();
    void OnColorSelected();

protected:
    void refreshForShow() override { refresh(); }

private:
    std::array<FlatButton*, 16> swatches_{}; ///< by the number of the custom colour; children
};

} // namespace vellum
