#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "scene/api/PluginTypes.h"
#include "scene/core/Scene.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <set>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

bool isOfTypes(const MObject& node, const Strings& types, bool exact) {
    if (types.empty())
        return true;
    return std::any_of(types.begin(), types.end(), [&](const std::string& type) {
        return MFnDependencyNode(node).typeName() == type.c_str() ||
               (!exact && nodeIsOfType(node, type));
    });
}

std::vector<MObject> allNodes(bool dagOnly) {
    std::vector<MObject> nodes;
    for (MItDag item(MItDag::kDepthFirst); !item.isDone(); item.next())
        if (!item.currentItem().hasFn(MFn::kWorld))
            nodes.push_back(item.currentItem());
    if (dagOnly)
        return nodes;
    for (MItDependencyNodes item(MFn::kInvalid); !item.isDone(); item.next())
        if (!item.thisNode().hasFn(MFn::kDagNode))
            nodes.push_back(item.thisNode());
    return nodes;
}

std::vector<MObject> nodesIn(const MSelectionList& list) {
    std::vector<MObject> nodes;
    for (unsigned i = 0; i < list.length(); ++i) {
        MObject node;
        if (list.getDependNode(i, node))
            nodes.push_back(node);
    }
    return nodes;
}

/// The nodes and all that is below them, each parent before its children.
std::vector<MObject> hierarchies(const std::vector<MObject>& tops) {
    std::vector<MObject> nodes;
    MItDag item(MItDag::kDepthFirst);
    for (const MObject& top : tops) {
        if (!top.hasFn(MFn::kDagNode))
            continue;
        for (item.reset(top, MItDag::kDepthFirst); !item.isDone(); item.next())
            nodes.push_back(item.currentItem());
    }
    return nodes;
}

bool asksSelection(const ParsedFlags& parsed) {
    return parsed.isSet("-selection") || parsed.isSet("-orderedSelection");
}

std::vector<MObject> chosenNodes(const ParsedFlags& parsed) {
    MSelectionList list;
    std::vector<MObject> nodes;
    if (!parsed.objects().empty()) {
        for (const std::string& name : parsed.objectNames())
            for (const NodePtr& node : scene().find(name))
                nodes.push_back(Access::make(node));
    } else if (!asksSelection(parsed)) {
        return allNodes(parsed.isSet("-dagObjects"));
    } else {
        MGlobal::getActiveSelectionList(list);
        return nodesIn(list);
    }
    if (asksSelection(parsed)) {
        MSelectionList selected;
        MGlobal::getActiveSelectionList(selected);
        nodes.erase(std::remove_if(nodes.begin(), nodes.end(),
                                   [&](const MObject& node) { return !selected.hasItem(node); }),
                    nodes.end());
    }
    return nodes;
}

bool isSwitchedOn(const MObject& node, const char* attribute) {
    MStatus status;
    const MPlug plug = MFnDependencyNode(node).findPlug(attribute, true, &status);
    return status && plug.asBool();
}

/// The flags that ask about the state of a node. Those of the DAG pass nothing else.
bool passesState(const MObject& node, const ParsedFlags& parsed) {
    const bool inDag = node.hasFn(MFn::kDagNode);
    MDagPath path;
    if (inDag)
        MDagPath::getAPathTo(node, path);
    const auto asksFor = [&](const char* flag, bool state) {
        return !parsed.isSet(flag) || (inDag && state);
    };
    if (parsed.isSet("-lockedNodes") && !MFnDependencyNode(node).isLocked())
        return false;
    if (parsed.isSet("-undeletable") && !MFnDependencyNode(node).isDefaultNode())
        return false;
    return asksFor("-visible", inDag && path.isVisible()) &&
           asksFor("-invisible", inDag && !path.isVisible()) &&
           asksFor("-templated", inDag && isSwitchedOn(node, "template")) &&
           asksFor("-untemplated", inDag && !isSwitchedOn(node, "template")) &&
           asksFor("-intermediateObjects", inDag && MFnDagNode(node).isIntermediateObject()) &&
           asksFor("-leaf", inDag && MFnDagNode(node).childCount() == 0) &&
           asksFor("-geometry", inDag && node.hasFn(MFn::kMesh));
}

bool passes(const MObject& node, const ParsedFlags& parsed, const Strings& types) {
    const bool inDag = node.hasFn(MFn::kDagNode);
    if (parsed.isSet("-dagObjects") && !inDag)
        return false;
    if (parsed.isSet("-shapes") && !isShape(node))
        return false;
    if (parsed.isSet("-transforms") && !node.hasFn(MFn::kTransform))
        return false;
    if (parsed.isSet("-cameras") && !node.hasFn(MFn::kCamera))
        return false;
    if (parsed.isSet("-assemblies") && (!inDag || MFnDagNode(node).parent(0).isNull() ||
                                        !MFnDagNode(node).parent(0).hasFn(MFn::kWorld)))
        return false;
    if (parsed.isSet("-defaultNodes") && !MFnDependencyNode(node).isDefaultNode())
        return false;
    if (parsed.isSet("-noIntermediate") && inDag && MFnDagNode(node).isIntermediateObject())
        return false;
    const Strings excluded = parsed.allStrings("-excludeType");
    if (!excluded.empty() && isOfTypes(node, excluded, false))
        return false;
    return passesState(node, parsed) && isOfTypes(node, types, parsed.isSet("-exactType"));
}

Value ls(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-sl", "-selection")
                                   .flag("-typ", "-type", {ArgKind::String})
                                   .flag("-et", "-exactType", {ArgKind::String})
                                   .flag("-ext", "-excludeType", {ArgKind::String})
                                   .multiUse("-typ")
                                   .multiUse("-et")
                                   .multiUse("-ext")
                                   .flag("-l", "-long")
                                   .flag("-dag", "-dagObjects")
                                   .flag("-s", "-shapes")
                                   .flag("-tr", "-transforms")
                                   .flag("-ca", "-cameras")
                                   .flag("-as", "-assemblies")
                                   .flag("-dn", "-defaultNodes")
                                   .flag("-ni", "-noIntermediate")
                                   .flag("-io", "-intermediateObjects")
                                   .flag("-v", "-visible")
                                   .flag("-iv", "-invisible")
                                   .flag("-tm", "-templated")
                                   .flag("-ut", "-untemplated")
                                   .flag("-lf", "-leaf")
                                   .flag("-g", "-geometry")
                                   .flag("-ln", "-lockedNodes")
                                   .flag("-ud", "-undeletable")
                                   // Without instances, components and namespaces that matter:
                                   .flag("-ap", "-allPaths")
                                   .flag("-an", "-absoluteName")
                                   .flag("-o", "-objectsOnly")
                                   .flag("-os", "-orderedSelection")
                                   .flag("-fl", "-flatten")
                                   .flag("-st", "-showType")
                                   .flag("-hd", "-head", {ArgKind::Int})
                                   .flag("-tl", "-tail", {ArgKind::Int})
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    Strings types = parsed.allStrings("-type");
    for (const std::string& type : parsed.allStrings("-exactType"))
        types.push_back(type);
    for (const std::string& type : types)
        if (!nodeTypeKnown(type))
            throw ScriptError("Unknown object type: " + type);
    std::vector<MObject> chosen = chosenNodes(parsed);
    // Asked about some, -dagObjects lists what is below them too.
    if (parsed.isSet("-dagObjects") && (!parsed.objects().empty() || asksSelection(parsed)))
        chosen = hierarchies(chosen);
    std::vector<MObject> nodes;
    for (const MObject& node : chosen)
        if (passes(node, parsed, types) &&
            std::find(nodes.begin(), nodes.end(), node) == nodes.end())
            nodes.push_back(node);
    const auto limit = [&](const char* flag) {
        return std::min(nodes.size(), std::size_t(std::max(0, parsed.getInt(flag))));
    };
    if (parsed.isSet("-head"))
        nodes.resize(limit("-head"));
    if (parsed.isSet("-tail"))
        nodes.erase(nodes.begin(), nodes.end() - std::ptrdiff_t(limit("-tail")));
    Strings result;
    for (const MObject& node : nodes) {
        result.push_back(nameOf(node, parsed.isSet("-long")));
        if (parsed.isSet("-showType"))
            result.emplace_back(MFnDependencyNode(node).typeName().asChar());
    }
    return result;
}

void addDescendents(const MObject& node, std::vector<MObject>& result) {
    const MFnDagNode function(node);
    for (unsigned i = 0; i < function.childCount(); ++i) {
        addDescendents(function.child(i), result);
        result.push_back(function.child(i));
    }
}

Value listRelatives(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-c", "-children")
                                   .flag("-p", "-parent")
                                   .flag("-ap", "-allParents")
                                   .flag("-s", "-shapes")
                                   .flag("-ad", "-allDescendents")
                                   .flag("-typ", "-type", {ArgKind::String})
                                   .multiUse("-typ")
                                   .flag("-f", "-fullPath")
                                   .flag("-pa", "-path")
                                   .flag("-ni", "-noIntermediate")
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    const Strings types = parsed.allStrings("-type");
    Strings names = parsed.objectNames();
    if (names.empty())
        names = selectedNames();
    Strings result;
    for (const std::string& name : names) {
        const MObject node = nodeNamed(name);
        if (!node.hasFn(MFn::kDagNode))
            continue;
        const MFnDagNode function(node);
        std::vector<MObject> relatives;
        if (parsed.isSet("-parent") || parsed.isSet("-allParents")) {
            for (unsigned i = 0; i < function.parentCount(); ++i)
                if (i == 0 || parsed.isSet("-allParents"))
                    relatives.push_back(function.parent(i));
        } else if (parsed.isSet("-allDescendents")) {
            addDescendents(node, relatives);
        } else {
            for (unsigned i = 0; i < function.childCount(); ++i)
                relatives.push_back(function.child(i));
        }
        for (const MObject& relative : relatives) {
            if (relative.hasFn(MFn::kWorld) || !isOfTypes(relative, types, false) ||
                (parsed.isSet("-shapes") && !isShape(relative)) ||
                (parsed.isSet("-noIntermediate") && MFnDagNode(relative).isIntermediateObject()))
                continue;
            if (parsed.isSet("-fullPath") || parsed.isSet("-path"))
                result.push_back(nameOf(relative, parsed.isSet("-fullPath")));
            else
                result.emplace_back(MFnDependencyNode(relative).name().asChar());
        }
    }
    return result;
}

Value listConnections(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-s", "-source", {ArgKind::Boolean})
                                   .flag("-d", "-destination", {ArgKind::Boolean})
                                   .flag("-p", "-plugs", {ArgKind::Boolean})
                                   .flag("-t", "-type", {ArgKind::String})
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    Strings result;
    for (const std::string& name : namesOrSelection(parsed)) {
        MPlugArray plugs;
        if (name.find('.') == std::string::npos) {
            MFnDependencyNode(nodeNamed(name)).getConnections(plugs);
        } else {
            for (const MPlug& plug : plugsNamed(name))
                plugs.append(plug);
        }
        for (unsigned i = 0; i < plugs.length(); ++i) {
            MPlugArray others;
            plugs[i].connectedTo(others, parsed.getBool("-source", true),
                                 parsed.getBool("-destination", true));
            for (unsigned j = 0; j < others.length(); ++j) {
                const MObject node = others[j].node();
                if (parsed.isSet("-type") && !isOfTypes(node, {parsed.getString("-type")}, false))
                    continue;
                result.push_back(parsed.getBool("-plugs")
                                     ? nameOf(node) + "." +
                                           others[j]
                                               .partialName(false, false, false, false, false, true)
                                               .asChar()
                                     : nameOf(node));
            }
        }
    }
    return result;
}

Value select(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-add", "-add")
                                   .flag("-d", "-deselect")
                                   .flag("-tgl", "-toggle")
                                   .flag("-r", "-replace")
                                   .flag("-cl", "-clear")
                                   .flag("-all", "-all")
                                   .flag("-ado", "-allDagObjects")
                                   .flag("-hi", "-hierarchy")
                                   .flag("-ne", "-noExpand")
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    MSelectionList before;
    MGlobal::getActiveSelectionList(before);
    MSelectionList chosen;
    for (const std::string& name : parsed.objectNames())
        if (!chosen.add(name.c_str()))
            throw ScriptError("No object matches name: " + name);
    if (parsed.isSet("-all") || parsed.isSet("-allDagObjects"))
        for (const MObject& node : allNodes(true))
            if (node.hasFn(MFn::kTransform) && MFnDagNode(node).parent(0).hasFn(MFn::kWorld) &&
                !MFnDependencyNode(node).isDefaultNode())
                chosen.add(node);
    if (parsed.isSet("-hierarchy")) {
        std::vector<MObject> below;
        for (const MObject& node : nodesIn(chosen))
            if (node.hasFn(MFn::kDagNode))
                addDescendents(node, below);
        for (const MObject& node : below)
            chosen.add(node, true);
    }
    MGlobal::ListAdjustment how = MGlobal::kReplaceList;
    if (parsed.isSet("-add"))
        how = MGlobal::kAddToList;
    else if (parsed.isSet("-deselect"))
        how = MGlobal::kRemoveFromList;
    else if (parsed.isSet("-toggle"))
        how = MGlobal::kXORWithList;
    if (parsed.isSet("-clear"))
        MGlobal::clearSelectionList();
    else if (!parsed.objects().empty() || parsed.isSet("-all") || parsed.isSet("-allDagObjects"))
        MGlobal::setActiveSelectionList(chosen, how);
    else
        throw ScriptError("Nothing to select was specified.");
    recordSelection(before);
    return Value();
}

} // namespace

void registerListCommands() {
    script::registerCommand("ls", ls);
    script::registerCommand("listRelatives", listRelatives);
    script::registerCommand("listConnections", listConnections);
    script::registerCommand("select", select);
}

} // namespace host
