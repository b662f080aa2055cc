#include "plugin/session/CameraNames.h"

#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"

#include <QMetaObject>
#include <QRegularExpression>

#include <maya/MDagPath.h>
#include <maya/MFileIO.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDependencyNodes.h>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace vellum {

namespace {

bool isCameraTransform(const MObject& node) {
    if (!node.hasFn(MFn::kTransform))
        return false;
    const MFnDagNode dag(node);
    for (unsigned i = 0; i < dag.childCount(); ++i) {
        if (dag.child(i).hasFn(MFn::kCamera))
            return true;
    }
    return false;
}

/// Of a name without its number.
QString stemOf(const QString& name) {
    static const QRegularExpression number(QString::fromLatin1("[0-9]+$"));
    return QString(name).remove(number);
}

/// What a camera of an imported file is called in the scene: with a namespace before its name, with
/// a prefix, or with another number, in this order. Empty when that cannot be told.
QString nameAfterImport(const QString& inFile, const std::vector<QString>& cameras) {
    if (std::find(cameras.begin(), cameras.end(), inFile) != cameras.end())
        return inFile;
    const auto only = [&cameras](auto fits) {
        const auto first = std::find_if(cameras.begin(), cameras.end(), fits);
        return first != cameras.end() &&
                       std::find_if(first + 1, cameras.end(), fits) == cameras.end()
                   ? *first
                   : QString();
    };
    for (const QChar separator : {QLatin1Char(':'), QLatin1Char('_')}) {
        QString found =
            only([&](const QString& name) { return name.endsWith(separator + inFile); });
        if (!found.isEmpty())
            return found;
    }
    return only([&](const QString& name) { return stemOf(name) == stemOf(inFile); });
}

std::vector<quint64> layersOf(const LayerManager& document, const QString& camera) {
    std::vector<quint64> ids;
    for (int i = 0; i < document.cameraLayerCount(camera); ++i)
        ids.push_back(document.layer(camera, i)->id());
    return ids;
}

quint64 activeLayerOf(const LayerManager& document, const QString& camera) {
    const Layer* active = document.activeLayer(camera);
    return active ? active->id() : 0;
}

} // namespace

CameraNames::CameraNames() {
    scan();
}

CameraNames::Camera* CameraNames::find(const MObject& node) {
    const auto found =
        std::find_if(cameras_.begin(), cameras_.end(), [&node](const Camera& camera) {
            return camera.node.isAlive() && camera.node.object() == node;
        });
    return found == cameras_.end() ? nullptr : &*found;
}

CameraNames::Camera& CameraNames::add(const MObject& node, const QString& known) {
    Camera camera;
    camera.key = ++lastKey_;
    camera.node = MObjectHandle(node);
    camera.known = known;
    cameras_.push_back(std::move(camera));
    return cameras_.back();
}

void CameraNames::nodeRenamed(const MObject& node, const QString& before) {
    if (MFileIO::isImportingFile() && before.isEmpty() && BaseNode::fromObject(node))
        importedNodes_.emplace_back(node);
    if (before.isEmpty() || MFileIO::isReadingFile())
        return;
    if (!find(node)) {
        if (!isCameraTransform(node))
            return;
        add(node, before);
    }
    namesMoved();
}

void CameraNames::namesMoved() {
    if (!std::exchange(pending_, true))
        QMetaObject::invokeMethod(
            this, [this] { settle(); }, Qt::QueuedConnection);
}

void CameraNames::settle() {
    if (pending_)
        look();
}

void CameraNames::look() {
    if (settling_ || MFileIO::isReadingFile())
        return;
    pending_ = false;
    settling_ = true;
    scan();
    follow();
    settling_ = false;
}

std::vector<QString> CameraNames::scan() {
    cameras_.erase(std::remove_if(cameras_.begin(), cameras_.end(),
                                  [](const Camera& camera) { return !camera.node.isAlive(); }),
                   cameras_.end());
    for (Camera& camera : cameras_)
        camera.isThere = false;
    std::vector<QString> fresh;
    for (MItDependencyNodes it(MFn::kCamera); !it.isDone(); it.next()) {
        MDagPath path;
        if (MDagPath::getAPathTo(it.thisNode(), path) != MS::kSuccess)
            continue;
        const MObject transform = path.transform();
        const QString name = cameraNameOfPath(path);
        if (transform.isNull() || name.isEmpty())
            continue;
        Camera* camera = find(transform);
        if (!camera) {
            camera = &add(transform, name);
            fresh.push_back(name);
        }
        camera->isThere = true;
        camera->now = name;
    }
    return fresh;
}

void CameraNames::follow() {
    const bool moved = std::any_of(cameras_.begin(), cameras_.end(), [](const Camera& camera) {
        return camera.isThere && camera.known != camera.now;
    });
    if (!moved)
        return;
    std::set<LayerManager*> done; // nodes may share a document
    for (const BaseNode* node : allNodes()) {
        const auto document = node->layerManager();
        if (document && done.insert(document.get()).second)
            followIn(*document);
    }
    for (Camera& camera : cameras_) {
        if (camera.isThere)
            camera.known = camera.now;
    }
}

/// Whether another camera had that name and still has it: the names of transforms need only differ
/// from those of their siblings.
bool CameraNames::isSharedName(const Camera& camera, const QString& name) const {
    return std::any_of(cameras_.begin(), cameras_.end(), [&](const Camera& other) {
        return other.key != camera.key && other.isThere && other.known == name && other.now == name;
    });
}

/// The camera, deleted ones included, by whose name the documents have known layers so far.
int CameraNames::ownerOf(const QString& name, const Camera& except) const {
    for (const Camera& camera : cameras_) {
        if (camera.key != except.key && camera.known == name)
            return camera.key;
    }
    return 0;
}

/// What is told of the layer, as long as it stands where it was told of: commands move layers too.
const CameraNames::Owner* CameraNames::owner(quint64 layer, const QString& under) const {
    const auto found = owners_.find(layer);
    if (found == owners_.end() || found->second.under != under)
        return nullptr;
    const Owner& owner = found->second;
    const bool stands =
        owner.key == 0 || std::any_of(cameras_.begin(), cameras_.end(), [&](const Camera& camera) {
            return camera.key == owner.key && camera.known == under;
        });
    return stands ? &owner : nullptr;
}

LayerManager::CameraMove CameraNames::moveOf(const Camera& camera,
                                             const LayerManager& document) const {
    const bool isShared = isSharedName(camera, camera.known);
    LayerManager::CameraMove move{camera.known, camera.now, {}, 0, !isShared};
    const std::vector<quint64> there = layersOf(document, camera.known);
    for (const quint64 id : there) {
        const Owner* known = owner(id, camera.known);
        if (known ? known->key != camera.key : isShared)
            continue;
        move.layers.push_back(id);
        if (known && known->wasActive)
            move.active = id;
    }
    // Nothing of the others is there that it could still be said of.
    if (!there.empty() && move.layers.size() == there.size())
        move.isRename = true;
    return move;
}

void CameraNames::followIn(LayerManager& document) {
    std::vector<LayerManager::CameraMove> moves;
    std::set<quint64> leaving;
    std::vector<const Camera*> movers;
    for (const Camera& camera : cameras_) {
        if (!camera.isThere || camera.known == camera.now)
            continue;
        LayerManager::CameraMove move = moveOf(camera, document);
        const auto taken = [&leaving](quint64 id) { return !leaving.insert(id).second; };
        move.layers.erase(std::remove_if(move.layers.begin(), move.layers.end(), taken),
                          move.layers.end());
        moves.push_back(std::move(move));
        movers.push_back(&camera);
    }
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const QString& to = moves[i].to;
        bool meetsOthers = isSharedName(*movers[i], to);
        for (const quint64 id : layersOf(document, to)) {
            if (leaving.count(id) > 0)
                continue;
            meetsOthers = true;
            if (!owner(id, to))
                owners_[id] = {ownerOf(to, *movers[i]), to, false};
        }
        if (!meetsOthers)
            continue;
        const quint64 active = activeLayerOf(document, moves[i].from);
        for (const quint64 id : moves[i].layers)
            owners_[id] = {movers[i]->key, to, id == active};
    }
    document.moveLayers(moves);
}

int CameraNames::imported() {
    const std::vector<QString> fresh = scan();
    const auto nodes = std::exchange(importedNodes_, {});
    std::set<LayerManager*> done;
    for (const MObjectHandle& handle : nodes) {
        const BaseNode* node = handle.isValid() ? BaseNode::fromObject(handle.object()) : nullptr;
        const auto document = node ? node->layerManager() : nullptr;
        if (!document || !done.insert(document.get()).second)
            continue;
        std::vector<LayerManager::CameraMove> moves;
        for (const QString& camera : document->cameras()) {
            const QString name = nameAfterImport(camera, fresh);
            if (!name.isEmpty() && name != camera)
                moves.push_back({camera, name, layersOf(*document, camera), 0, true});
        }
        if (!moves.empty())
            document->moveLayers(moves);
    }
    look();
    return static_cast<int>(done.size());
}

} // namespace vellum
