#include "document/edits/MoveLayerToCamera.h"

#include "document/LayerManager.h"

#include <utility>

namespace vellum {

bool MoveLayerToCamera::changeLayer(LayerManager& document, int index) {
    before_.remember(document, {camera(), moved_.camera()});
    setResult(document.moveLayerToCamera(camera(), index, moved_.camera(), to_));
    if (result() < 0)
        return false;
    moved_.bind(document, result());
    from_ = index;
    return true;
}

bool MoveLayerToCamera::takeBack(LayerManager& document) {
    auto layer = document.takeLayer(moved_.camera(), moved_.index(document));
    if (!layer)
        return false;
    putBack(document, camera(), from_, std::move(layer));
    before_.restore(document);
    return true;
}

} // namespace vellum
