#include "document/edits/LayerEdits.h"

#include "document/edits/ActivateLayer.h"
#include "document/edits/AddLayer.h"
#include "document/edits/MoveAllLayers.h"
#include "document/edits/MoveLayer.h"
#include "document/edits/MoveLayerToCamera.h"
#include "document/edits/RemoveAllLayers.h"
#include "document/edits/RemoveLayer.h"
#include "document/edits/SetLayerProperty.h"

namespace vellum::layer_edit {

std::unique_ptr<Edit> add(const QString& camera, const QString& name,
                          std::optional<LayerState> state) {
    return std::make_unique<AddLayer>(camera, -1, name, state, AddLayer::Then::MakeItActive);
}

std::unique_ptr<Edit> insert(const QString& camera, int index, const QString& name,
                             std::optional<LayerState> state) {
    return std::make_unique<AddLayer>(camera, index, name, state, AddLayer::Then::Nothing);
}

std::unique_ptr<Edit> remove(const QString& camera, int index) {
    return std::make_unique<RemoveLayer>(camera, index);
}

std::unique_ptr<Edit> removeAll(const QString& camera) {
    return std::make_unique<RemoveAllLayers>(camera);
}

std::unique_ptr<Edit> move(const QString& camera, int from, int to) {
    return std::make_unique<MoveLayer>(camera, from, to);
}

std::unique_ptr<Edit> moveToCamera(const QString& camera, int from, const QString& target, int to) {
    return std::make_unique<MoveLayerToCamera>(camera, from, target, to);
}

std::unique_ptr<Edit> moveAll(const QString& camera, const QString& target) {
    return std::make_unique<MoveAllLayers>(camera, target);
}

std::unique_ptr<Edit> activate(const QString& camera, int index) {
    return std::make_unique<ActivateLayer>(camera, index);
}

std::unique_ptr<Edit> setProperty(const QString& camera, int index, const LayerProperty& property,
                                  const LayerValue& value) {
    return std::make_unique<SetLayerProperty>(camera, index, property, value);
}

} // namespace vellum::layer_edit
