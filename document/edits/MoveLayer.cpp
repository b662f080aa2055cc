#include "document/edits/MoveLayer.h"

#include "document/LayerManager.h"

namespace vellum {

bool MoveLayer::changeLayer(LayerManager& document, int index) {
    from_ = index;
    setResult(document.moveLayer(camera(), index, to_));
    return result() >= 0;
}

bool MoveLayer::takeBack(LayerManager& document) {
    const int index = indexNow(document);
    return index >= 0 && document.moveLayer(camera(), index, from_) >= 0;
}

} // namespace vellum
