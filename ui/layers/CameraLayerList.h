// The layers of one camera below its name. Main thread only.
#pragma once

#include "ui/layers/LayerListing.h"

#include <QWidget>

#include <vector>

class QVBoxLayout;

namespace vellum {

class LayerItem;
class NameLabel;

class CameraLayerList : public QWidget {
    Q_OBJECT

public:
    CameraLayerList(const QString& camera, QWidget* parent);

    const QString& camera() const { return camera_; }

    /// Rows of layers that stayed stay; true when any came, went or moved.
    bool showSection(const CameraSection& section, int selectedIndex);

public Q_SLOTS:
    /// `position` in this section.
    void ShowContextMenu(const QPoint& position);
    /// Of the menu's entry that was chosen: all layers move to that camera.
    void SwitchCamera();

private:
    void showWhetherInScene(bool isInScene);
    bool arrange(const std::vector<LayerRow>& rows);

    QString camera_ = QStringLiteral("unknownCamera");
    NameLabel* header_;
    QVBoxLayout* rows_;
    std::vector<LayerItem*> items_; ///< as they stand; children
    CameraSection shown_;
    int shownIndex_ = -1;
};

} // namespace vellum
