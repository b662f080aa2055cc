#pragma once
#include <maya/MObject.h>
#include <maya/MPxData.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>
#include <maya/MTypeId.h>

#include <string>
#include <vector>

// Node and data types as plug-ins bring them and scene files name them.
namespace host {

// Also of types that only others derive from, such as "shape".
bool nodeTypeKnown(const std::string& type);
bool nodeTypeCreatable(const std::string& type);
bool nodeTypeIsShape(const std::string& type);
// The type itself or one that derives from it.
bool nodeIsOfType(const MObject& node, const std::string& type);
bool nodeTypeInDag(const std::string& type);
bool dataTypeKnown(const std::string& type, MTypeId& id);

// Registration; kInvalidParameter when the name or the id is taken.
MStatus addNodeType(const std::string& type, const MTypeId& id, void* (*creator)(),
                    MStatus (*initialize)(), MPxNode::Type kind, const std::string& classification,
                    const std::string& plugin);
MStatus addDataType(const std::string& type, const MTypeId& id, void* (*creator)(),
                    MPxData::Type kind, const std::string& plugin);
void removeNodeType(const std::string& type);
void removeDataType(const std::string& type);

// Of exactly this type, in the scene.
bool nodesOfTypeExist(const std::string& type);
void deleteNodesOfType(const std::string& type);

} // namespace host
