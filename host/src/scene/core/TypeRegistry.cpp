#include "scene/core/TypeRegistry.h"

#include "scene/core/BuiltInTypes.h"
#include "scene/core/Node.h"

#include <algorithm>

namespace host {

TypeRegistry& typeRegistry() {
    static TypeRegistry registry;
    return registry;
}

TypeRegistry::TypeRegistry() {
    addBuiltInTypes(*this);
}

const NodeType* TypeRegistry::node(const std::string& name) const {
    const auto found = nodes_.find(name);
    return found == nodes_.end() ? nullptr : &found->second;
}

const NodeType* TypeRegistry::node(unsigned id) const {
    for (const auto& [name, type] : nodes_) {
        if (type.id == id && id != 0)
            return &type;
    }
    return nullptr;
}

bool TypeRegistry::inherits(const std::string& name, const std::string& ancestor) const {
    for (const NodeType* type = node(name); type; type = node(type->base)) {
        if (type->name == ancestor)
            return true;
    }
    return false;
}

bool TypeRegistry::isDag(const std::string& name) const {
    return inherits(name, "dagNode");
}

std::vector<std::string> TypeRegistry::nodeTypes() const {
    std::vector<std::string> names;
    for (const auto& [name, type] : nodes_) {
        if (!type.abstractType)
            names.push_back(name);
    }
    return names;
}

void TypeRegistry::addBuiltIn(NodeType type) {
    if (const NodeType* base = node(type.base)) {
        type.attributes.insert(type.attributes.begin(), base->attributes.begin(),
                               base->attributes.end());
        type.functions.insert(type.functions.end(), base->functions.begin(), base->functions.end());
        type.functions.push_back(base->apiType);
        if (!type.make)
            type.make = base->make;
    }
    const std::string name = type.name;
    nodes_[name] = std::move(type);
}

MStatus TypeRegistry::addPluginNode(NodeType type, MPxNode::Type kind, MStatus (*initialize)()) {
    if (type.name.empty() || node(type.name) || node(type.id) || current_)
        return MS::kInvalidParameter;
    switch (kind) {
    case MPxNode::kDependNode:
        type.base = "node";
        type.apiType = MFn::kPluginDependNode;
        break;
    case MPxNode::kLocatorNode:
        type.base = "locator";
        type.apiType = MFn::kPluginLocatorNode;
        break;
    default:
        return MS::kNotImplemented;
    }
    const NodeType& base = *node(type.base);
    type.make = base.make;
    type.attributes = base.attributes;
    type.functions = base.functions;
    type.functions.push_back(base.apiType);
    current_ = &type;
    const MStatus status = initialize ? initialize() : MStatus(MS::kSuccess);
    current_ = nullptr;
    if (!status)
        return status;
    const std::string name = type.name;
    nodes_[name] = std::move(type);
    return MS::kSuccess;
}

MStatus TypeRegistry::addAttributeToCurrent(AttributePtr attribute) {
    if (!current_ || !attribute)
        return MS::kFailure;
    for (const AttributePtr& other : current_->attributes) {
        if (other->name == attribute->name || other->shortName == attribute->shortName)
            return MS::kFailure;
    }
    if (!attribute->parent.lock()) // children come with their compound
        current_->attributes.push_back(std::move(attribute));
    return MS::kSuccess;
}

bool TypeRegistry::removeNode(const std::string& name) {
    const NodeType* type = node(name);
    return type && !type->plugin.empty() && nodes_.erase(name) > 0;
}

MStatus TypeRegistry::addData(const DataType& type) {
    if (type.name.empty() || data(type.name) || data(type.id))
        return MS::kInvalidParameter;
    data_[type.name] = type;
    return MS::kSuccess;
}

bool TypeRegistry::removeData(const std::string& name) {
    return data_.erase(name) > 0;
}

const DataType* TypeRegistry::data(const std::string& name) const {
    const auto found = data_.find(name);
    return found == data_.end() ? nullptr : &found->second;
}

const DataType* TypeRegistry::data(unsigned id) const {
    for (const auto& [name, type] : data_) {
        if (type.id == id)
            return &type;
    }
    return nullptr;
}

NodePtr TypeRegistry::make(const std::string& name) const {
    const NodeType* type = node(name);
    if (!type || type->abstractType || !type->make)
        return nullptr;
    NodePtr made = type->make(*type);
    if (type->creator)
        NodeAccess::attach(*made, static_cast<MPxNode*>(type->creator()));
    return made;
}

} // namespace host
