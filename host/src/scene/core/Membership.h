// Whoever wants to know of every node that joins the scene or leaves it, undo and redo included; a
// scene that is thrown away as a whole tells of none of its nodes.
#pragma once

#include <functional>
#include <memory>

namespace host {

class Node;

namespace membership {

enum class Change { Joined, Left };

using Listener = std::function<void(const std::shared_ptr<Node>& node, Change change)>;

int listen(Listener listener);
void removeListener(int id);

/// When all is done: the scene is as it will be.
void tell(const std::shared_ptr<Node>& node, Change change);

} // namespace membership

} // namespace host
