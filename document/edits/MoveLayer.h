// Moves a layer to another place among those of its camera.
#pragma once

#include "document/edits/LayerEdit.h"

namespace vellum {

class MoveLayer : public OneLayerEdit {
public:
    MoveLayer(const QString& camera, int from, int to) : OneLayerEdit(camera, from), to_(to) {}

private:
    bool changeLayer(LayerManager& document, int index) override;
    bool takeBack(LayerManager& document) override;

    int from_ = -1;
    int to_;
};

} // namespace vellum
