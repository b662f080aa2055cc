#include "document/edits/SetLayerProperty.h"

#include "document/Layer.h"
#include "document/LayerManager.h"

#include <utility>

namespace vellum {

SetLayerProperty::SetLayerProperty(const QString& camera, int index, const LayerProperty& property,
                                   LayerValue value)
    : OneLayerEdit(camera, index), property_(property), value_(std::move(value)) {
}

bool SetLayerProperty::changeLayer(LayerManager& document, int index) {
    const Layer* layer = document.layer(camera(), index);
    if (!layer)
        return false;
    before_ = property_.get(*layer);
    property_.set(document, camera(), index, value_);
    value_ = property_.get(*layer);
    return true;
}

bool SetLayerProperty::changeAgain(LayerManager& document) {
    const int index = indexNow(document);
    if (index < 0)
        return false;
    before_ = property_.get(*document.layer(camera(), index));
    property_.restore(document, camera(), index, value_);
    return true;
}

bool SetLayerProperty::takeBack(LayerManager& document) {
    const int index = indexNow(document);
    if (index < 0)
        return false;
    property_.restore(document, camera(), index, before_);
    return true;
}

} // namespace vellum
