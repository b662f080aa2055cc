// Drawings follow their camera: documents know a camera by the name of its transform, and when
// that changes, by whatever means, the layers go along. Main thread only.
//
// Who a camera is, is told by its node: names are compared with those that the nodes had before. So
// nothing depends on the order of renames, and names may be exchanged.
#pragma once

#include <QObject>
#include <QString>

#include <maya/MObjectHandle.h>

#include <map>
#include <vector>

class MObject;

namespace vellum {

class LayerManager;

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

    Camera* find(const MObject& node);
    Camera& add(const MObject& node, const QString& known);
    /// Cameras that were not known before.
    std::vector<QString> scan();
    void follow();
    void followIn(LayerManager& document);
    bool isSharedName(const Camera& camera, const QString& name) const;
    int ownerOf(const QString& name, const Camera& except) const;

    std::vector<Camera> cameras_;
    std::vector<MObjectHandle> importedNodes_; ///< drawings that came with an import
    /// Layers that stand under a name together with those of another camera belong to the one that
    /// brought them, 0: to none. By Layer::id().
    std::map<quint64, int> owners_;
    int lastKey_ = 0;
    bool pending_ = false;
    bool settling_ = false;
};

} // namespace vellum
