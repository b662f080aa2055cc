// Nodes by the ends of their paths.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace host {

class DagNode;
class Node;

/// Finds nodes by name or partial path, and names that are free, in the time of the path's length
/// instead of that of the scene. A node must be taken out, with all below it, before its name or
/// parent changes, and be put in again afterwards.
class NameIndex {
public:
    NameIndex();
    ~NameIndex();

    void add(Node& node);
    void remove(Node& node);
    void clear();

    /// Nodes whose lowest names are the parts; a first empty part anchors at the top. In no order.
    std::vector<Node*> find(const std::vector<std::string>& parts) const;
    /// How many of its lowest names tell the node apart; 0 when all of them do not.
    std::size_t partsNeeded(const Node& node) const;
    /// Whether some node beside `node` keeps it from having this name below `parent`; without
    /// parent it stands outside the hierarchy, where every name counts.
    bool isTaken(const std::string& name, const Node& node, const DagNode* parent) const;
    /// The first number after `number` that makes stem + number a free name.
    unsigned long nextFree(const std::string& stem, unsigned long number, const Node& node,
                           const DagNode* parent);

private:
    struct Vertex;
    /// Names below one parent, or outside the hierarchy.
    struct Level {
        std::unordered_map<std::string, int> names;
        /// Numbers known to be taken behind a stem, from the first to before the second.
        std::unordered_map<std::string, std::pair<unsigned long, unsigned long>> taken;
    };

    void nameFreed(const std::string& name, const DagNode* parent);

    std::unique_ptr<Vertex> root_;
    std::unordered_map<const DagNode*, Level> levels_; ///< null: outside the hierarchy
};

} // namespace host
