// What is selected in the scene.
#pragma once

#include "scene/core/Node.h"

#include <maya/MSelectionList.h>

#include <memory>

namespace host {

/// A node, or a plug of one.
struct SelectionItem {
    NodePtr node;
    SlotPtr slot; ///< null for the node itself
};

/// Nodes that left the scene are not in it.
MSelectionList activeSelection();
/// Sends "SelectionChanged" when it is another list than before.
void setActiveSelection(const MSelectionList& list);

} // namespace host
