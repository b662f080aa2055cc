#include "plugin/session/SceneNodes.h"

#include "document/SceneCamera.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"

#include <maya/MDagPath.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

namespace vellum {

BaseNode* selectedNode() {
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    if (selection.length() != 1)
        return nullptr;
    MObject object;
    selection.getDependNode(0, object);
    if (BaseNode* node = BaseNode::fromObject(object))
        return node;
    MDagPath path;
    if (selection.getDagPath(0, path) != MS::kSuccess)
        return nullptr;
    const unsigned count = path.childCount();
    for (unsigned i = 0; i < count; ++i) {
        if (BaseNode* node = BaseNode::fromObject(path.child(i)))
            return node;
    }
    return nullptr;
}

BaseNode* requireNode(const LayerManager* document, const QString& camera) {
    BaseNode* node = nodeWith(document);
    if (!node)
        report::error(QStringLiteral("Node not found"));
    return node && requireSceneCamera(camera) ? node : nullptr;
}

} // namespace vellum
