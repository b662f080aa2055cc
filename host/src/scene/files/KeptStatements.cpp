#include "scene/files/KeptStatements.h"

namespace host {

KeptNode& KeptStatements::of(const MObject& node) {
    const MObjectHandle handle(node);
    std::vector<KeptNode>& bucket = nodes_[handle.hashCode()];
    for (KeptNode& kept : bucket)
        if (kept.node == handle)
            return kept;
    KeptNode made;
    made.node = handle;
    bucket.push_back(std::move(made));
    return bucket.back();
}

void KeptStatements::move(const MObject& from, const MObject& to) {
    KeptNode moved;
    std::swap(moved, of(from));
    of(from).node = MObjectHandle(from);
    moved.node = MObjectHandle(to);
    of(to) = std::move(moved);
    for (KeptText& text : texts_)
        if (text.after == MObjectHandle(from))
            text.after = MObjectHandle(to);
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

std::vector<KeptNode*> KeptStatements::all() {
    std::vector<KeptNode*> result;
    for (auto& [hash, bucket] : nodes_)
        for (KeptNode& kept : bucket)
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

std::set<std::string> KeptStatements::uuids() {
    std::set<std::string> result;
    for (const KeptNode* kept : all())
        if (!kept->uuid.empty())
            result.insert(kept->uuid);
    return result;
}

void KeptStatements::clear() {
    nodes_.clear();
    connections_.clear();
    texts_.clear();
}

KeptStatements& keptStatements() {
    static KeptStatements instance;
    return instance;
}

} // namespace host
