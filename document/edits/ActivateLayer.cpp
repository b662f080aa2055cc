#include "document/edits/ActivateLayer.h"

#include "document/LayerManager.h"

namespace vellum {

bool ActivateLayer::change(LayerManager& document) {
    const bool isTarget =
        document.currentCamera() == camera() && document.activeLayerIndex(camera()) == firstIndex();
    return !isTarget && OneLayerEdit::change(document);
}

bool ActivateLayer::changeLayer(LayerManager& document, int index) {
    before_.remember(document, {camera()});
    if (!document.setActiveLayer(camera(), index, true))
        return false;
    setResult(index);
    return true;
}

bool ActivateLayer::takeBack(LayerManager& document) {
    before_.restore(document);
    return true;
}

} // namespace vellum
