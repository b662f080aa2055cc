#include "node/NodeSearch.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/MayaStrings.h"

#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MObject.h>

namespace vellum {

std::vector<BaseNode*> allNodes() {
    std::vector<BaseNode*> nodes;
    for (MItDag it(MItDag::kDepthFirst, MFn::kPluginLocatorNode); !it.isDone(); it.next()) {
        if (BaseNode* node = BaseNode::fromObject(it.currentItem()))
            nodes.push_back(node);
    }
    return nodes;
}

BaseNode* activeNode() {
    for (BaseNode* node : allNodes()) {
        const auto document = node->layerManager();
        if (document && document->isMaster())
            return node;
    }
    return nullptr;
}

BaseNode* nodeWith(const LayerManager* document) {
    for (BaseNode* node : allNodes()) {
        if (document && node->layerManager().get() == document)
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
