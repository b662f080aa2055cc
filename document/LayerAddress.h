// What identifies the layer an operation works on, for as long as the operation is kept. A layer
// stays the same one when it is renamed, moved in its camera, or taken out and put back.
#pragma once

#include <QString>

namespace vellum {

class Layer;
class LayerManager;

class LayerAddress {
public:
    LayerAddress() = default;
    explicit LayerAddress(QString camera);

    const QString& camera() const { return camera_; }
    void setCamera(const QString& camera) { camera_ = camera; } ///< it has another name now

    /// From now on the layer that has this index now.
    void bind(const LayerManager& document, int index);
    /// The camera's active layer.
    void bindToActive(const LayerManager& document);
    bool isBound() const { return bound_; }

    /// Index of the layer: of the active one while not bound; -1 when the camera has it no more.
    int index(const LayerManager& document) const;

    /// The layer at index(). Null, after reporting why, when the camera is not in the scene or the
    /// layer not in the document.
    const Layer* resolve(const LayerManager& document) const;

    /// False, after reporting, when the scene has no such camera.
    bool requireCamera() const;

private:
    QString camera_;
    QString name_; ///< when bound; only to tell the user
    quint64 layer_ = 0;
    bool bound_ = false;
};

} // namespace vellum
