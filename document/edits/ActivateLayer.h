// Makes a layer the drawing target and its camera the current one. Refused when they are already.
#pragma once

#include "document/edits/LayerEdit.h"

namespace vellum {

class ActivateLayer : public OneLayerEdit {
public:
    ActivateLayer(const QString& camera, int index) : OneLayerEdit(camera, index) {}

private:
    bool change(LayerManager& document) override;
    bool changeLayer(LayerManager& document, int index) override;
    bool takeBack(LayerManager& document) override;

    ActiveLayers before_;
};

} // namespace vellum
