// Removes a layer and keeps it for undo.
#pragma once

#include "document/edits/LayerEdit.h"

namespace vellum {

class RemoveLayer : public OneLayerEdit {
public:
    RemoveLayer(const QString& camera, int index);
    ~RemoveLayer() override;

private:
    bool changeLayer(LayerManager& document, int index) override;
    bool takeBack(LayerManager& document) override;

    int from_ = -1;
    std::unique_ptr<Layer> layer_;
    ActiveLayers before_;
};

} // namespace vellum
