// Moves a layer to another camera, or to another place of its own.
#pragma once

#include "document/edits/LayerEdit.h"

namespace vellum {

class MoveLayerToCamera : public OneLayerEdit {
public:
    MoveLayerToCamera(const QString& camera, int from, const QString& target, int to)
        : OneLayerEdit(camera, from), moved_(target), to_(to) {}

private:
    bool changeLayer(LayerManager& document, int index) override;
    bool takeBack(LayerManager& document) override;

    LayerAddress moved_; ///< in the other camera
    int to_;
    int from_ = -1;
    ActiveLayers before_;
};

} // namespace vellum
