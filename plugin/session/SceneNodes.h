// How commands, tools and the time slider find the node they work on, beside node/NodeSearch.h.
// Main thread only. Node pointers are Maya's: use them at once, never keep them across events.
#pragma once

#include <QString>

namespace vellum {

class BaseNode;
class LayerManager;

/// The node that the selection designates: exactly one item selected, which is a node or has one
/// among its children. Null otherwise.
BaseNode* selectedNode();

/// The node of a document that an undo, or the end of a stroke, goes back to, with this camera
/// still in the scene. Null, after reporting, when the node or the camera has gone meanwhile.
BaseNode* requireNode(const LayerManager* document, const QString& camera);

} // namespace vellum
