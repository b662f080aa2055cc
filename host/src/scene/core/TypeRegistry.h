// Node and data types by name and id: the host's own and those of plug-ins.
#pragma once

#include <maya/MFn.h>
#include <maya/MPxData.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

class Attribute;
class Node;

struct NodeType {
    std::string name;
    unsigned id = 0;
    std::string base; ///< type it inherits attributes from; "" for none
    MFn::Type apiType = MFn::kDependencyNode;
    std::vector<MFn::Type> functions; ///< what fits besides apiType; of the base types too
    bool abstractType = false;        ///< only there to be inherited from
    std::string classification;
    std::string plugin; ///< owner; "" for the host's own
    void* (*creator)() = nullptr;
    std::function<std::shared_ptr<Node>(const NodeType&)> make; ///< of the host's own types
    std::vector<std::shared_ptr<Attribute>> attributes;         ///< inherited ones first
};

struct DataType {
    std::string name;
    unsigned id = 0;
    std::string plugin;
    void* (*creator)() = nullptr;
};

class TypeRegistry {
public:
    TypeRegistry();

    const NodeType* node(const std::string& name) const;
    const NodeType* node(unsigned id) const;
    bool isDag(const std::string& name) const;
    /// Whether the type is, or inherits from, the other.
    bool inherits(const std::string& name, const std::string& ancestor) const;
    std::vector<std::string> nodeTypes() const;

    /// Runs `initialize`, whose MPxNode::addAttribute calls add to the type. kInvalidParameter when
    /// name or id is taken; the status of initialize when that fails. Nothing stays on failure.
    MStatus addPluginNode(NodeType type, MPxNode::Type kind, MStatus (*initialize)());
    bool removeNode(const std::string& name);

    MStatus addData(const DataType& type);
    bool removeData(const std::string& name);
    const DataType* data(const std::string& name) const;
    const DataType* data(unsigned id) const;

    /// A node of the type, not in the scene; its postConstructor has not run. Null when there is no
    /// such type.
    std::shared_ptr<Node> make(const std::string& name) const;

    /// For MPxNode::addAttribute while a type is being initialised.
    MStatus addAttributeToCurrent(std::shared_ptr<Attribute> attribute);

    void addBuiltIn(NodeType type);

private:
    std::map<std::string, NodeType> nodes_;
    std::map<std::string, DataType> data_;
    NodeType* current_ = nullptr;
};

TypeRegistry& typeRegistry();

} // namespace host
