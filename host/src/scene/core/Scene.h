// The one scene of the process.
#pragma once

#include "scene/core/NameIndex.h"
#include "scene/core/Node.h"
#include "scene/core/SceneState.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// What was taken out of the scene, enough to put it back as it was.
struct Removal {
    struct Item {
        NodePtr node;
        DagNodePtr parent; ///< null for nodes outside the hierarchy
        std::size_t position = 0;
        std::size_t order = 0; ///< place among all nodes
    };
    std::vector<Item> items; ///< parents before children
    std::vector<std::pair<SlotPtr, SlotPtr>> connections;
};

/// Whoever wants to know of every node that gets its first or another name: by a rename, its undo
/// and redo, or because it came to where its name was taken.
namespace renames {

using Listener = std::function<void(const NodePtr& node, const std::string& before)>;

int listen(Listener listener);
void removeListener(int id);

} // namespace renames

class Scene {
public:
    Scene();

    /// Every node in the order they joined; the default ones first.
    const std::vector<NodePtr>& nodes() const { return nodes_; }
    const DagNodePtr& root() const { return root_; }

    /// Joins a made node under a unique name; without a parent a DAG node goes below the root.
    /// `name` empty: the type's name and a number.
    void insert(const NodePtr& node, const std::string& name, const DagNodePtr& parent = nullptr);
    /// Makes, inserts and constructs. Null when there is no such type.
    NodePtr create(const std::string& type, const std::string& name,
                   const DagNodePtr& parent = nullptr);
    /// Takes a node and all below it out. Empty for the root and default nodes.
    Removal remove(const NodePtr& node);
    void restore(const Removal& removal);
    bool reparent(const DagNodePtr& node, const DagNodePtr& newParent,
                  std::size_t position = static_cast<std::size_t>(-1));

    /// Unique where the node is or would be: among siblings and nodes outside the hierarchy.
    std::string uniqueName(const std::string& wanted, const Node& node,
                           const DagNode* parent) const;
    std::string rename(Node& node, const std::string& wanted);
    /// By name or partial or full path; wild cards allowed. In scene order.
    std::vector<NodePtr> find(const std::string& pattern) const;
    bool hasUniqueName(const Node& node) const;
    std::string fullPath(const DagNode& node) const;
    std::string partialPath(const DagNode& node) const; ///< shortest that is unique

    bool connect(const SlotPtr& source, const SlotPtr& destination);
    bool disconnect(const SlotPtr& source, const SlotPtr& destination);

    /// Every change of the scene goes through here: sets the modified flag, tells the views.
    void touch();
    bool isModified() const { return modified_; }
    void setModified(bool modified) { modified_ = modified; }

    /// Back to the default scene: default cameras and nodes only, nothing selected, time at 1.
    void reset();

private:
    void makeDefaults();
    void join(const NodePtr& node, const std::string& name, const DagNodePtr& parent);
    static bool feedsOnly(const Node& feeder, const std::vector<Removal::Item>& items);
    /// What changes the name or parent of a node is done between the two.
    void unindex(Node& node);
    void index(Node& node);
    std::size_t position(const NodePtr& node) const;

    std::vector<NodePtr> nodes_;
    mutable NameIndex names_; // of every node of the scene
    DagNodePtr root_;
    bool modified_ = false;
};

Scene& scene();

/// The same place, keeping its node alive as well.
SlotPtr heldSlot(const SlotPtr& slot);
/// Connections to and from a place and all below it, as (source, destination) of held places.
std::vector<std::pair<SlotPtr, SlotPtr>> connectionsOf(const Slot& slot);

} // namespace host
