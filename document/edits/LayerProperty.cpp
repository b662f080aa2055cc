#include "document/edits/LayerProperty.h"

#include "document/Layer.h"
#include "document/LayerManager.h"

namespace vellum {

namespace {

template <typename Value, typename Argument,
          void (LayerManager::*Setter)(const QString&, int, Argument)>
void put(LayerManager& document, const QString& camera, int index, const LayerValue& value) {
    (document.*Setter)(camera, index, std::get<Value>(value));
}

constexpr auto putVisible = put<bool, bool, &LayerManager::setLayerVisible>;
constexpr auto putOpacity = put<float, float, &LayerManager::setLayerOpacity>;

LayerValue stateOf(const Layer& layer) {
    return static_cast<unsigned>(numberOf(layer.state()));
}

void putState(LayerManager& document, const QString& camera, int index, const LayerValue& value) {
    document.setLayerState(camera, index, static_cast<LayerState>(std::get<unsigned>(value)));
}

} // namespace

namespace layer_property {

// clang-format off
const LayerProperty kName{[](const Layer& layer) { return LayerValue(layer.name()); },
                          put<QString, const QString&, &LayerManager::renameLayer>,
                          put<QString, const QString&, &LayerManager::restoreLayerName>,
                          0, nullptr};
const LayerProperty kVisible{[](const Layer& layer) { return LayerValue(layer.isVisible()); },
                             putVisible, putVisible, 0, nullptr};
const LayerProperty kOpacity{[](const Layer& layer) { return LayerValue(layer.opacity()); },
                             putOpacity, putOpacity, 0, nullptr};
const LayerProperty kState{stateOf, putState, putState, numberOf(LayerState::Locked), "Invalid state value: %1"};
// clang-format on

} // namespace layer_property

} // namespace vellum
