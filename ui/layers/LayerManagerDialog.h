// The layers of all cameras: which is drawn on, which are seen, their states and order. Main thread
// only.
#pragma once

#include "ui/PanelDialog.h"
#include "ui/layers/LayerListing.h"

class QString;

namespace vellum {

class CameraList;
class FlatButton;

class LayerManagerDialog : public PanelDialog {
    Q_OBJECT

public:
    explicit LayerManagerDialog(QWidget* parent);

    void showListing(const LayerListing& listing);
    /// No drawing: nothing is listed and selected.
    void clear() { showListing({}); }

public Q_SLOTS:
    void NewLayer();
    void DeleteLayer();
    void MoveLayerUp();
    void MoveLayerDown();
    void RefreshUi();

protected:
    void refreshForShow() override;

private:
    FlatButton* makeButton(const QString& toolTip, const QString& icon, const QString& fallback,
                           int padding = 0);

    CameraList* list_;
    LayerPlace selected_;
};

} // namespace vellum
