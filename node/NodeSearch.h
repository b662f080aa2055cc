// Finding drawing nodes and cameras in the scene. Main thread only.
#pragma once

#include <QString>

#include <maya/MDagPath.h>

#include <memory>
#include <vector>

namespace vellum {

class BaseNode;
class LayerManager;

/// Every drawing node of the scene, in DAG order (depth first). The pointers are Maya's: use them
/// at once, never keep them across events.
std::vector<BaseNode*> allNodes();

/// The first of allNodes() whose document carries the active mark, or null.
BaseNode* activeNode();
/// The same when the nodes have been looked for already.
BaseNode* activeAmong(const std::vector<BaseNode*>& nodes);

/// The document of the active node as the last look found it, without another one. Null when that
/// found none, and when the node has gone since.
std::shared_ptr<LayerManager> lastActiveDrawing();

/// The node whose document this is, or null: commands in the undo queue go back to the drawing they
/// changed, which need not be the active one any more. Without a look over the scene as long as the
/// node that introduced itself to the document is there.
BaseNode* nodeWith(const LayerManager* document);

inline bool hasActiveNode() {
    return activeNode() != nullptr;
}

/// Name under which the drawing knows a camera: that of its transform. Takes the path of the shape
/// or of the transform; empty for an invalid path.
QString cameraNameOfPath(const MDagPath& path);

} // namespace vellum
