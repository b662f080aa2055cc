#include "scene/api/PluginTypes.h"

#include "scene/core/Scene.h"
#include "scene/core/TypeRegistry.h"

#include <maya/MDGModifier.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlugArray.h>

#include <algorithm>

namespace host {

namespace {

std::vector<NodePtr> nodesOfType(const std::string& type) {
    std::vector<NodePtr> result;
    for (const NodePtr& node : scene().nodes())
        if (node->typeName() == type)
            result.push_back(node);
    return result;
}

// What feeds a node, such as its animation curves, would go with it.
void disconnectSources(const MObject& node) {
    MPlugArray plugs;
    MFnDependencyNode(node).getConnections(plugs);
    MDGModifier modifier;
    for (unsigned i = 0; i < plugs.length(); ++i)
        if (plugs[i].isDestination())
            modifier.disconnect(plugs[i].source(), plugs[i]);
    modifier.doIt();
}

} // namespace

bool nodeTypeKnown(const std::string& type) {
    return typeRegistry().node(type) != nullptr;
}

bool nodeTypeCreatable(const std::string& type) {
    const NodeType* const found = typeRegistry().node(type);
    return found && !found->abstractType;
}

bool nodeTypeInDag(const std::string& type) {
    return typeRegistry().isDag(type);
}

bool nodeTypeIsShape(const std::string& type) {
    return typeRegistry().inherits(type, "shape");
}

bool nodeIsOfType(const MObject& object, const std::string& type) {
    const auto node = Access::as<Node>(object);
    return node && typeRegistry().inherits(node->typeName(), type);
}

bool dataTypeKnown(const std::string& type, MTypeId& id) {
    const DataType* const found = typeRegistry().data(type);
    if (found)
        id = MTypeId(found->id);
    return found != nullptr;
}

MStatus addNodeType(const std::string& type, const MTypeId& id, void* (*creator)(),
                    MStatus (*initialize)(), MPxNode::Type kind, const std::string& classification,
                    const std::string& plugin) {
    NodeType entry;
    entry.name = type;
    entry.id = id.id();
    entry.creator = creator;
    entry.classification = classification;
    entry.plugin = plugin;
    return typeRegistry().addPluginNode(std::move(entry), kind, initialize);
}

MStatus addDataType(const std::string& type, const MTypeId& id, void* (*creator)(),
                    MPxData::Type kind, const std::string& plugin) {
    if (kind != MPxData::kData)
        return MS::kNotImplemented; // geometry data have no place here
    return typeRegistry().addData({type, id.id(), plugin, creator});
}

void removeNodeType(const std::string& type) {
    typeRegistry().removeNode(type);
}

void removeDataType(const std::string& type) {
    typeRegistry().removeData(type);
}

bool nodesOfTypeExist(const std::string& type) {
    return !nodesOfType(type).empty();
}

void deleteNodesOfType(const std::string& type) {
    for (const NodePtr& node : nodesOfType(type)) {
        if (!node->inScene())
            continue;
        disconnectSources(Access::make(node));
        scene().remove(node);
    }
}

} // namespace host
