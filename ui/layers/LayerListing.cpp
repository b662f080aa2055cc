#include "ui/layers/LayerListing.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"

#include <memory>
#include <utility>

namespace vellum {

namespace {

std::shared_ptr<LayerManager> activeDrawing() {
    const BaseNode* node = activeNode();
    return node ? node->layerManager() : nullptr;
}

CameraSection sectionOf(const LayerManager& document, const QString& camera) {
    CameraSection section;
    section.camera = camera;
    const int count = document.cameraLayerCount(camera);
    section.rows.reserve(static_cast<std::size_t>(count));
    for (int index = count - 1; index >= 0; --index) {
        const Layer& layer = *document.layer(camera, index);
        section.rows.push_back(
            {layer.id(), index, layer.name(), layer.isVisible(), numberOf(layer.state())});
    }
    return section;
}

} // namespace

LayerListing listLayers(const LayerManager& document, const QStringList& cameras) {
    LayerListing listing;
    for (const QString& camera : document.cameras()) {
        CameraSection section = sectionOf(document, camera);
        section.isInScene = cameras.contains(camera);
        listing.sections.push_back(std::move(section));
    }
    listing.selected.camera = document.currentCamera();
    listing.selected.index = document.activeLayerIndex(document.currentCamera());
    return listing;
}

std::optional<LayerPlace> findLayer(const LayerManager& document, quint64 id) {
    for (const QString& camera : document.cameras()) {
        for (int index = 0; index < document.cameraLayerCount(camera); ++index) {
            if (document.layer(camera, index)->id() == id)
                return LayerPlace{camera, index};
        }
    }
    return std::nullopt;
}

std::optional<LayerPlace> requireLayer(quint64 id) {
    const auto document = activeDrawing();
    auto found = document ? findLayer(*document, id) : std::nullopt;
    if (!found)
        report::warning(QStringLiteral("The layer is not in the drawing any more."));
    return found;
}

bool isDrawnOn(const LayerPlace& place) {
    const auto document = activeDrawing();
    return document && document->currentCamera() == place.camera &&
           document->activeLayerIndex(place.camera) == place.index;
}

} // namespace vellum
