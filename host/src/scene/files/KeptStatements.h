#pragma once
#include "scene/text/SceneRecords.h"

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <set>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

// What files said that this scene has no use for: attributes of unknown nodes and types, data of
// missing plug-ins, whole statements. Kept beside the nodes so that saving writes it again.
namespace host {

struct RawData {
    std::string plug;
    std::string type;
    std::string bytes; // as writeBinary made them
};

using KeptStatement = std::variant<AddAttrRecord, AttrRecord, RawData>;

struct KeptNode {
    MObjectHandle node;
    std::string originalType;              // of an unknown node; empty for nodes of known types
    bool shared = false;                   // the file made it only where it was not there yet
    std::string uuid;                      // the `rename -uid` of the file
    std::string lock;                      // its `lockNode`
    std::vector<AddAttrRecord> added = {}; // of attributes that the node has now, as written
    std::vector<KeptStatement> statements = {};
    // Details of the tangents of a curve, and its keys then: they fit while these are the same.
    std::vector<AttrRecord> tangents = {};
    std::string keys;
};

struct KeptConnection {
    MObjectHandle source;
    std::string sourcePlug; // below the node, with leading dot
    MObjectHandle destination;
    std::string destinationPlug;
    std::vector<Token> flags;
};

// The parts of a file, in this order, in which a whole statement can stand.
enum class StatementPlace { Head, Settings, Nodes, Connections };

struct KeptText {
    std::string text;
    StatementPlace place = StatementPlace::Head;
    MObjectHandle after; // among the nodes: the one it stood behind
};

class KeptStatements {
public:
    KeptNode& of(const MObject& node);
    const KeptNode* find(const MObject& node) const;
    // What is kept of one node becomes that of another, which takes its place.
    void move(const MObject& from, const MObject& to);
    void connect(KeptConnection connection) { connections_.push_back(std::move(connection)); }
    void add(KeptText text) { texts_.push_back(std::move(text)); }
    // Of nodes that are in the scene.
    std::vector<KeptNode*> all();
    std::vector<KeptConnection> connections() const;
    const std::vector<KeptText>& texts() const { return texts_; }
    std::set<std::string> uuids();
    void clear();

private:
    std::unordered_map<unsigned, std::vector<KeptNode>> nodes_; // by hash code of the handle
    std::vector<KeptConnection> connections_;
    std::vector<KeptText> texts_;
};

// Of the one scene.
KeptStatements& keptStatements();

} // namespace host
