#include "document/edits/LayerEdit.h"

#include "document/Layer.h"
#include "document/LayerManager.h"
#include "plugin/base/Report.h"

#include <utility>

namespace vellum {

namespace {

bool found(bool done) {
    if (!done)
        report::error(QStringLiteral("The layers of the camera have changed since."));
    return done;
}

LayerAddress activeLayerOf(const LayerManager& document, const QString& camera) {
    LayerAddress active(camera);
    active.bindToActive(document);
    return active;
}

} // namespace

bool LayerEdit::doUndo(LayerManager& document) {
    return found(takeBack(document));
}

bool LayerEdit::doRedo(LayerManager& document) {
    return found(changeAgain(document));
}

bool OneLayerEdit::change(LayerManager& document) {
    layer_.bind(document, index_);
    return changeLayer(document, index_);
}

bool OneLayerEdit::changeAgain(LayerManager& document) {
    const int index = indexNow(document);
    return index >= 0 && changeLayer(document, index);
}

void ActiveLayers::remember(const LayerManager& document, std::initializer_list<QString> cameras) {
    currentCamera_ = document.currentCamera();
    previousCamera_ = document.previousCamera();
    layers_.clear();
    layers_.push_back(activeLayerOf(document, currentCamera_));
    for (const QString& camera : cameras)
        layers_.push_back(activeLayerOf(document, camera));
}

void ActiveLayers::restore(LayerManager& document) const {
    for (const LayerAddress& layer : layers_) {
        const int index = layer.index(document);
        if (index >= 0)
            document.setActiveLayer(layer.camera(), index, false);
    }
    if (document.currentCamera() != currentCamera_)
        document.restoreCurrentCamera(currentCamera_, previousCamera_);
}

int putBack(LayerManager& document, const QString& camera, int index,
            std::unique_ptr<Layer> layer) {
    layer->setActive(false);
    return document.insertLayer(camera, index, std::move(layer));
}

} // namespace vellum
