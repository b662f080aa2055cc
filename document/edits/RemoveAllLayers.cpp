#include "document/edits/RemoveAllLayers.h"

#include "document/LayerManager.h"

#include <utility>

namespace vellum {

RemoveAllLayers::RemoveAllLayers(QString camera) : camera_(std::move(camera)) {
}

RemoveAllLayers::~RemoveAllLayers() = default;

bool RemoveAllLayers::change(LayerManager& document) {
    before_.remember(document, {camera_});
    document.deleteAllLayers(camera_, layers_);
    return true;
}

bool RemoveAllLayers::takeBack(LayerManager& document) {
    for (auto& layer : layers_)
        putBack(document, camera_, -1, std::move(layer));
    layers_.clear();
    before_.restore(document);
    return true;
}

} // namespace vellum
