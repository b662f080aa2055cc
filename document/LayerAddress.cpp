#include "document/LayerAddress.h"

#include "document/DocumentEnvironment.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "plugin/base/Report.h"

#include <utility>

namespace vellum {

LayerAddress::LayerAddress(QString camera) : camera_(std::move(camera)) {
}

void LayerAddress::bind(const LayerManager& document, int index) {
    const Layer* layer = document.layer(camera_, index);
    layer_ = layer ? layer->id() : 0;
    name_ = document.layerName(camera_, index);
    bound_ = true;
}

void LayerAddress::bindToActive(const LayerManager& document) {
    bind(document, document.activeLayerIndex(camera_));
}

int LayerAddress::index(const LayerManager& document) const {
    if (!bound_)
        return document.activeLayerIndex(camera_);
    const int count = document.cameraLayerCount(camera_);
    for (int i = 0; i < count; ++i) {
        if (document.layer(camera_, i)->id() == layer_)
            return i;
    }
    return -1;
}

bool LayerAddress::requireCamera() const {
    if (camera_.isEmpty()) {
        report::error(QStringLiteral("Camera not specified"));
        return false;
    }
    return requireSceneCamera(camera_);
}

const Layer* LayerAddress::resolve(const LayerManager& document) const {
    if (!requireCamera())
        return nullptr;
    const Layer* layer = document.layer(camera_, index(document));
    if (!layer) {
        report::error(
            bound_ ? QStringLiteral("Layer does not exist for camera: %1 (%2)").arg(camera_, name_)
                   : QStringLiteral("An active layer does not exist."));
    }
    return layer;
}

} // namespace vellum
