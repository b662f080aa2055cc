#include "document/edits/RemoveLayer.h"

#include "document/LayerManager.h"
#include "plugin/base/Report.h"

#include <utility>

namespace vellum {

RemoveLayer::RemoveLayer(const QString& camera, int index) : OneLayerEdit(camera, index) {
}

RemoveLayer::~RemoveLayer() = default;

bool RemoveLayer::changeLayer(LayerManager& document, int index) {
    before_.remember(document, {camera()});
    layer_ = document.takeLayer(camera(), index);
    from_ = index;
    if (!layer_) {
        report::error(
            QStringLiteral("Invalid layer: %1 (%2)").arg(camera(), QString::number(index)));
    }
    return layer_ != nullptr;
}

bool RemoveLayer::takeBack(LayerManager& document) {
    putBack(document, camera(), from_, std::move(layer_));
    before_.restore(document);
    return true;
}

} // namespace vellum
