#include "node/NodeSearch.h"

#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/MayaStrings.h"

#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MObject.h>

namespace vellum {

namespace {

std::weak_ptr<LayerManager>& lastActive() {
    static std::weak_ptr<LayerManager> document;
    return document;
}

/// The node that introduced itself, as long as it is in the scene and has the document.
BaseNode* holderOf(const LayerManager& document) {
    const MObjectHandle& holder = document.holder();
    BaseNode* node = holder.isValid() ? BaseNode::fromObject(holder.object()) : nullptr;
    return node && node->layerManager().get() == &document ? node : nullptr;
}

} // namespace

std::vector<BaseNode*> allNodes() {
    std::vector<BaseNode*> nodes;
    for (MItDag it(MItDag::kDepthFirst, MFn::kPluginLocatorNode); !it.isDone(); it.next()) {
        if (BaseNode* node = BaseNode::fromObject(it.currentItem()))
            nodes.push_back(node);
    }
    return nodes;
}

BaseNode* activeNode() {
    documentEnvironment().settleCameraNames();
    return activeAmong(allNodes());
}

BaseNode* activeAmong(const std::vector<BaseNode*>& nodes) {
    lastActive().reset();
    for (BaseNode* node : nodes) {
        const auto document = node->layerManager();
        if (document && document->isMaster()) {
            lastActive() = document;
            return node;
        }
    }
    return nullptr;
}

std::shared_ptr<LayerManager> lastActiveDrawing() {
    const auto document = lastActive().lock();
    return document && document->isMaster() && holderOf(*document) ? document : nullptr;
}

BaseNode* nodeWith(const LayerManager* document) {
    if (!document)
        return nullptr;
    documentEnvironment().settleCameraNames();
    if (BaseNode* holder = holderOf(*document))
        return holder;
    for (BaseNode* node : allNodes()) {
        if (node->layerManager().get() == document)
            return node;
    }
    return nullptr;
}

QString cameraNameOfPath(const MDagPath& path) {
    MStatus status;
    const MObject transform = path.transform(&status);
    if (status != MS::kSuccess || transform.isNull())
        return {};
    return fromMaya(MFnDagNode(transform).name());
}

} // namespace vellum
