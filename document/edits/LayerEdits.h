// The edits of layers, as commands ask for them. Cameras and indexes are those of the moment of the
// first execution.
#pragma once

#include "document/Layer.h"
#include "document/edits/LayerProperty.h"

#include <QString>

#include <memory>

namespace vellum {

class Edit;

namespace layer_edit {

/// On top of the stack, and the drawing target. no state: that of new layers.
std::unique_ptr<Edit> add(const QString& camera, const QString& name,
                          std::optional<LayerState> state);
std::unique_ptr<Edit> insert(const QString& camera, int index, const QString& name,
                             std::optional<LayerState> state);
std::unique_ptr<Edit> remove(const QString& camera, int index);
std::unique_ptr<Edit> removeAll(const QString& camera);
std::unique_ptr<Edit> move(const QString& camera, int from, int to);
std::unique_ptr<Edit> moveToCamera(const QString& camera, int from, const QString& target, int to);
std::unique_ptr<Edit> moveAll(const QString& camera, const QString& target);
std::unique_ptr<Edit> activate(const QString& camera, int index);
std::unique_ptr<Edit> setProperty(const QString& camera, int index, const LayerProperty& property,
                                  const LayerValue& value);

} // namespace layer_edit

} // namespace vellum
