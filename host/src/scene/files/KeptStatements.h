#pragma once
#include "scene/text/SceneRecords.h"

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

// What files said that this scene has no use for: attributes of unknown nodes and types, data of
// missing plug-ins. Kept beside the nodes so that saving writes it again.
namespace host {

struct RawData {
    std::string plug;
    std::string type;
    std::string bytes; // as writeBinary made them
};

using KeptStatement = std::variant<AddAttrRecord, AttrRecord, RawData>;

struct KeptNode {
    MObjectHandle node;
    std::string originalType; // of an unknown node; empty for nodes of known types
    std::vector<KeptStatement> statements;
};

struct KeptConnection {
    MObjectHandle source;
    std::string sourcePlug; // below the node, with leading dot
    MObjectHandle destination;
    std::string destinationPlug;
};

class KeptStatements {
public:
    KeptNode& of(const MObject& node);
    const KeptNode* find(const MObject& node) const;
    void connect(KeptConnection connection) { connections_.push_back(std::move(connection)); }
    // Of nodes that are in the scene.
    std::vector<const KeptNode*> all() const;
    std::vector<KeptConnection> connections() const;
    void clear();

private:
    std::unordered_map<unsigned, std::vector<KeptNode>> nodes_; // by hash code of the handle
    std::vector<KeptConnection> connections_;
};

// Of the one scene.
KeptStatements& keptStatements();

} // namespace host
