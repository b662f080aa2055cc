// The scrolling list of the cameras' layers. Main thread only.
#pragma once

#include "ui/layers/LayerListing.h"

#include <QWidget>

#include <vector>

class QScrollArea;
class QVBoxLayout;

namespace vellum {

class CameraLayerList;

class CameraList : public QWidget {
    Q_OBJECT

public:
    explicit CameraList(QWidget* parent);

    /// Nothing happens when that is what is shown already. Where sections and rows stay, so do
    /// their widgets; what is looked at stays in its place.
    void showListing(const LayerListing& listing);

    int layerCount(const QString& camera) const;

private:
    struct Anchor;
    Anchor anchor() const;
    void keep(const Anchor& anchor);
    bool arrange(const std::vector<CameraSection>& sections);

    QScrollArea* area_;
    QVBoxLayout* sections_;
    std::vector<CameraLayerList*> lists_; ///< as they stand; children of the area's widget
    LayerListing shown_;
};

} // namespace vellum
