#include "document/edits/AddLayer.h"

#include "document/LayerManager.h"

#include <utility>

namespace vellum {

AddLayer::AddLayer(const QString& camera, int index, QString name, std::optional<LayerState> state,
                   Then then)
    : address_(camera), name_(std::move(name)), index_(index), state_(state), then_(then) {
}

AddLayer::~AddLayer() = default;

bool AddLayer::change(LayerManager& document) {
    before_.remember(document, {address_.camera()});
    setResult(document.addLayer(address_.camera(), index_, name_));
    if (result() < 0)
        return false;
    if (state_)
        document.setLayerState(address_.camera(), result(), *state_);
    finish(document);
    return true;
}

bool AddLayer::changeAgain(LayerManager& document) {
    before_.remember(document, {address_.camera()});
    setResult(putBack(document, address_.camera(), result(), std::move(layer_)));
    finish(document);
    return true;
}

void AddLayer::finish(LayerManager& document) {
    address_.bind(document, result());
    if (then_ == Then::MakeItActive)
        document.setActiveLayer(address_.camera(), result(), true);
}

bool AddLayer::takeBack(LayerManager& document) {
    layer_ = document.takeLayer(address_.camera(), address_.index(document));
    if (!layer_)
        return false;
    before_.restore(document);
    return true;
}

} // namespace vellum
