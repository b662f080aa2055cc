// Drawings follow their camera: documents know a camera by the name of its transform, and when
// that changes, by whatever means, the layers go along. Main thread only.
//
// Who a camera is, is told by its node: names are compared with those that the nodes had before. So
// nothing depends on the order of renames, and names may be exchanged.
#pragma once

#include "document/LayerManager.h"

#include <QObject>
#include <QString>

#include <maya/MObjectHandle.h>

#include <map>
#include <vector>

class MObject;

namespace vellum {

class CameraNames : public QObject {
public:
    CameraNames();

    /// From within Maya's callback, when names may still move: the rest is done a moment later, or
    /// by settle(). `before` is empty for a first name.
    void nodeRenamed(const MObject& node, const QString& before);
    /// The names of many nodes may be other ones.
    void namesMoved();

    /// Brings the documents up to date if a name may have changed since. While a file is read,
    /// names are those of its nodes to come: nothing happens.
    void settle();
    /// The same, whether or not a change was told: after undo and redo.
    void look();
    /// After an import: its drawings go by the names that its cameras had in the file. How many
    /// drawings it brought.
    int imported();

private:
    struct Camera {
        int key = 0;          ///< never 0
        MObjectHandle node;   ///< the transform
        QString known;        ///< its name in the documents
        QString now;          ///< in the scene
        bool isThere = false; ///< in the scene; deleted ones may come back
    };

    /// Of a layer that stands under a name together with those of another camera, or where these
    /// may come.
    struct Owner {
        int key = 0; ///< of the camera that brought it; 0: none did
        QString under;
        bool wasActive = false; ///< when it came
    };

    Camera* find(const MObject& node);
    Camera& add(const MObject& node, const QString& known);
    /// Cameras that were not known before.
    std::vector<QString> scan();
    void follow();
    void followIn(LayerManager& document);
    bool isSharedName(const Camera& camera, const QString& name) const;
    int ownerOf(const QString& name, const Camera& except) const;
    const Owner* owner(quint64 layer, const QString& under) const;
    LayerManager::CameraMove moveOf(const Camera& camera, const LayerManager& document) const;

    std::vector<Camera> cameras_;
    std::vector<MObjectHandle> importedNodes_; ///< drawings that came with an import
    std::map<quint64, Owner> owners_;          ///< by Layer::id()
    int lastKey_ = 0;
    bool pending_ = false;
    bool settling_ = false;
};

} // namespace vellum
