// Finding drawing nodes and cameras in the scene. Main thread only.
#pragma once

#include <QString>
#include <maya/MDagPath.h>
#include <vector>

namespace vellum {

class BaseNode;
class LayerManager;

/// Every drawing node of the scene, in DAG order (depth first). The pointers are Maya's: use them
/// at once, never keep them across events.
std::vector<BaseNode*> allNodes();

/// The first of allNodes() whose document carries the active mark, or null.
BaseNode* activeNode();

/// The node whose document this is, or null: commands in the undo queue go back to the drawing they
/// changed, which need not be the active one any more.
BaseNode* nodeWith(const LayerManager* document);

inline bool hasActiveNode() {
    return activeNode() != nullptr;
}

/// Name under which the drawing knows a camera: that of its transform. Takes the path of the shape
/// or of the transform; empty for an invalid path.
QString cameraNameOfPath(const MDagPath& path);

} // namespace vellum
