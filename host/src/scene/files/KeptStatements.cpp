#include "scene/files/KeptStatements.h"

namespace host {

KeptNode& KeptStatements::of(const MObject& node) {
    const MObjectHandle handle(node);
    std::vector<KeptNode>& bucket = nodes_[handle.hashCode()];
    for (KeptNode& kept : bucket)
        if (kept.node == handle)
            return kept;
    bucket.push_back({handle, {}, {}});
    return bucket.back();
}

const KeptNode* KeptStatements::find(const MObject& node) const {
    const MObjectHandle handle(node);
    const auto bucket = nodes_.find(handle.hashCode());
    if (bucket == nodes_.end())
        return nullptr;
    for (const KeptNode& kept : bucket->second)
        if (kept.node == handle)
            return &kept;
    return nullptr;
}

std::vector<const KeptNode*> KeptStatements::all() const {
    std::vector<const KeptNode*> result;
    for (const auto& [hash, bucket] : nodes_)
        for (const KeptNode& kept : bucket)
            if (kept.node.isValid())
                result.push_back(&kept);
    return result;
}

std::vector<KeptConnection> KeptStatements::connections() const {
    std::vector<KeptConnection> result;
    for (const KeptConnection& connection : connections_)
        if (connection.source.isValid() && connection.destination.isValid())
            result.push_back(connection);
    return result;
}

void KeptStatements::clear() {
    nodes_.clear();
    connections_.clear();
}

KeptStatements& keptStatements() {
    static KeptStatements instance;
    return instance;
}

} // namespace host
