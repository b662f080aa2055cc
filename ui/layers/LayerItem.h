// One layer's row: visibility, state, name. Main thread only.
#pragma once

#include "ui/layers/LayerListing.h"

#include <QWidget>

class QMouseEvent;
class QPushButton;

namespace vellum {

class NameLabel;

class LayerItem : public QWidget {
    Q_OBJECT

public:
    LayerItem(const QString& camera, quint64 layer, QWidget* parent);

    quint64 layer() const { return layer_; }

    /// Changes only what differs.
    void showLayer(const LayerRow& row, bool isDrawnOn);

public Q_SLOTS:
    void OnVisibilityBtnClicked();
    void OnStateBtnClicked();
    /// `position` in this row.
    void ShowContextMenu(const QPoint& position);
    /// Of the menu's entry that was chosen: the layer moves to that camera.
    void SwitchCamera();
    void ShowLayerPropertiesDialog();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void setDrawnOn(bool isDrawnOn);

    QString camera_;
    quint64 layer_; ///< the row's for as long as it lives
    QPushButton* visibility_;
    QPushButton* state_;
    NameLabel* name_;
    QString layerName_;
    bool isDrawnOn_ = false;
};

} // namespace vellum
