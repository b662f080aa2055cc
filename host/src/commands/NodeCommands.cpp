#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "commands/TransformParts.h"
#include "scene/api/PluginTypes.h"
#include "scene/text/CurveText.h"
#include "scene/text/NodeText.h"
#include "scene/text/PlugText.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPluginData.h>
#include <maya/MGlobal.h>
#include <maya/MMatrix.h>
#include <maya/MPxData.h>

#include <algorithm>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

Value createNode(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-n", "-name", {ArgKind::String})
                                   .flag("-p", "-parent", {ArgKind::String})
                                   .flag("-s", "-shared")
                                   .flag("-ss", "-skipSelect")
                                   .objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    const std::string type = parsed.object();
    if (!nodeTypeCreatable(type))
        throw ScriptError("Unknown object type: " + type);
    MObject parent;
    if (parsed.isSet("-parent"))
        parent = nodeNamed(parsed.getString("-parent"));
    if (parsed.isSet("-shared")) {
        MSelectionList list;
        MObject existing;
        if (list.add(parsed.getString("-name").c_str()) && list.getDependNode(0, existing) &&
            MFnDependencyNode(existing).typeName() == type.c_str())
            return nameOf(existing);
    }
    MObject made;
    MObject top;
    const std::string name = parsed.getString("-name");
    if (!nodeTypeInDag(type)) {
        made = top = MFnDependencyNode().create(type.c_str(), name.c_str());
    } else if (parent.isNull() && nodeTypeIsShape(type)) {
        // A shape needs a transform; the name given is the shape's.
        top = MFnDagNode().create("transform", freeName(type + "#").c_str());
        const std::string above = MFnDependencyNode(top).name().asChar();
        made = MFnDagNode().create(type.c_str(), (name.empty() ? shapeName(above) : name).c_str(),
                                   top);
    } else {
        made = top = MFnDagNode().create(type.c_str(), name.c_str(), parent);
    }
    if (made.isNull())
        throw ScriptError("Could not create node of type " + type);
    recordCreation("createNode", {top});
    if (!parsed.isSet("-skipSelect"))
        selectNodes({made});
    return nameOf(made);
}

// A name with a star or question mark stands for every node it matches but the default ones.
Strings matching(const Strings& names) {
    Strings result;
    for (const std::string& name : names) {
        if (name.find_first_of("*?") == std::string::npos) {
            result.push_back(nameOf(nodeNamed(name)));
            continue;
        }
        MSelectionList list;
        list.add(name.c_str());
        for (unsigned i = 0; i < list.length(); ++i) {
            MObject node;
            list.getDependNode(i, node);
            if (!MFnDependencyNode(node).isDefaultNode())
                result.push_back(nameOf(node));
        }
        if (list.length() == 0)
            throw ScriptError("No object matches name: " + name);
    }
    return result;
}

// A transform that only carries the shape goes with it.
MObject withTransform(const MObject& node) {
    if (!isShape(node))
        return node;
    const MObject above = MFnDagNode(node).parent(0);
    return !above.hasFn(MFn::kWorld) && MFnDagNode(above).childCount() == 1 ? above : node;
}

// A step of its own before the deletion, so that undoing selects the nodes when they are back.
void deselect(const std::vector<MObject>& nodes) {
    MSelectionList before;
    MGlobal::getActiveSelectionList(before);
    MSelectionList gone;
    for (const MObject& node : nodes)
        gone.add(node);
    MGlobal::setActiveSelectionList(gone, MGlobal::kRemoveFromList);
    recordSelection(before);
}

Value deleteCommand(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-all", "-all").flag("-ch", "-constructionHistory").objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isSet("-constructionHistory"))
        return Value(); // primitives keep their history
    const Strings names = matching(namesOrSelection(parsed));
    std::vector<MObject> nodes;
    for (const std::string& name : names) {
        const MObject node = nodeNamed(name);
        if (MFnDependencyNode(node).isDefaultNode())
            throw ScriptError("Cannot delete default node: " + name);
        if (MFnDependencyNode(node).isLocked())
            throw ScriptError("Cannot delete locked node '" + name + "'.");
        nodes.push_back(node);
    }
    const auto modifier = std::make_shared<MDagModifier>();
    for (const MObject& node : nodes) {
        const bool underAnother =
            std::any_of(nodes.begin(), nodes.end(), [&](const MObject& other) {
                return other.hasFn(MFn::kDagNode) && node.hasFn(MFn::kDagNode) && other != node &&
                       MFnDagNode(node).isChildOf(other);
            });
        if (!underAnother && !modifier->deleteNode(withTransform(node)))
            throw ScriptError("Could not delete " + nameOf(node));
    }
    deselect(nodes);
    doAndRecord("delete", modifier, "Could not delete the nodes.");
    return Value();
}

std::string selectedNode() {
    const Strings names = selectedNames();
    if (names.empty())
        throw ScriptError("Nothing is selected. Select an object or specify its name.");
    return names.front();
}

Value rename(const CommandCall& call) {
    static const Flags flags = Flags().flag("-is", "-ignoreShape").objects(1, 2);
    const ParsedFlags parsed = flags.parse(call);
    Strings names = parsed.objectNames();
    if (names.size() == 1)
        names.insert(names.begin(), selectedNode());
    MObject node = nodeNamed(names[0]);
    if (names[1].empty())
        throw ScriptError("New name has no legal characters.");
    if (MFnDependencyNode(node).isDefaultNode() || MFnDependencyNode(node).isLocked())
        throw ScriptError("Cannot rename a locked or read-only node: " + names[0]);
    const std::string before = MFnDependencyNode(node).name().asChar();
    const auto modifier = std::make_shared<MDagModifier>();
    modifier->renameNode(node, names[1].c_str());
    // A shape that is named after its transform keeps being so.
    if (node.hasFn(MFn::kTransform) && !parsed.isSet("-ignoreShape")) {
        const MFnDagNode dag(node);
        for (unsigned i = 0; i < dag.childCount(); ++i) {
            const MObject child = dag.child(i);
            const std::string name = MFnDependencyNode(child).name().asChar();
            if (isShape(child) && (name == shapeName(before) || name == before + "Shape"))
                modifier->renameNode(child, shapeName(names[1]).c_str());
        }
    }
    doAndRecord("rename", modifier, "Could not rename " + names[0]);
    return nameOf(node);
}

MDagPath pathOf(const MObject& node) {
    MDagPath path;
    MDagPath::getAPathTo(node, path);
    return path;
}

// Sets the channels so that the transform stands where it stood in the world.
void keepPlace(const MObject& node, const MMatrix& world) {
    const MDagPath path = pathOf(node);
    setParts(path, decompose(world * path.exclusiveMatrixInverse()));
}

Value parent(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-w", "-world").flag("-r", "-relative").flag("-s", "-shape").objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    Strings names = namesOrSelection(parsed);
    MObject target;
    if (!parsed.isSet("-world")) {
        if (names.size() < 2)
            throw ScriptError("Not enough objects or values.");
        target = nodeNamed(names.back());
        names.pop_back();
        if (!target.hasFn(MFn::kTransform))
            throw ScriptError("Cannot parent to a shape: " + nameOf(target));
    }
    for (const std::string& name : names)
        nodeToParent(name, target); // all of them, before the first one moves
    Strings result;
    for (const std::string& name : names) {
        const MObject node = nodeToParent(name, target);
        const MMatrix before = pathOf(node).inclusiveMatrix();
        const auto modifier = std::make_shared<MDagModifier>();
        modifier->reparentNode(node, target);
        if (!modifier->doIt())
            throw ScriptError("Could not parent " + name);
        const bool moves = node.hasFn(MFn::kTransform) && !parsed.isSet("-relative");
        TransformParts local;
        if (moves) {
            local = partsOf(pathOf(node));
            keepPlace(node, before);
        }
        recordStep(
            "parent",
            [=] {
                modifier->undoIt();
                if (moves)
                    setParts(pathOf(node), local);
            },
            [=] {
                modifier->doIt();
                if (moves)
                    keepPlace(node, before);
            });
        result.push_back(nameOf(node));
    }
    return result;
}

// Nodes outside the DAG: the same type with the same values; connections stay with the original.
MObject duplicateDependNode(const MObject& node) {
    const MFnDependencyNode function(node);
    const MObject copy = MFnDependencyNode().create(function.typeName(), function.name());
    if (copy.isNull())
        return copy;
    NodeText text = describeNode(node);
    std::string ignored;
    for (const AddAttrRecord& added : text.added) {
        const MObject attribute = makeAttribute(added.arguments, copy, ignored);
        if (!attribute.isNull())
            MFnDependencyNode(copy).addAttribute(attribute);
    }
    for (const AttrRecord& record : text.values)
        if (record.hasValue && !(isCurve(copy) && textToCurve(copy, record, ignored)))
            textToValue(findPlugs(copy, record.plug), record, ignored);
    for (const DataRecord& data : text.data) {
        MFnPluginData from(data.source.asMObject());
        MFnPluginData to;
        const MObject holder = to.create(from.typeId());
        std::vector<MPlug> plugs = findPlugs(copy, data.plug);
        if (holder.isNull() || plugs.empty() || !from.constData())
            continue;
        to.data()->copy(*from.constData());
        plugs.front().setMObject(holder);
    }
    return copy;
}

Value duplicate(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-n", "-name", {ArgKind::String})
                                   .flag("-rr", "-returnRootsOnly")
                                   .objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    std::vector<MObject> made;
    Strings result;
    for (const std::string& name : namesOrSelection(parsed)) {
        const MObject node = nodeNamed(name);
        const MObject copy =
            node.hasFn(MFn::kDagNode) ? MFnDagNode(node).duplicate() : duplicateDependNode(node);
        if (copy.isNull())
            throw ScriptError("Could not duplicate " + name);
        if (parsed.isSet("-name"))
            MFnDependencyNode(copy).setName(parsed.getString("-name").c_str());
        made.push_back(copy);
        result.push_back(nameOf(copy));
    }
    recordCreation("duplicate", made);
    selectNodes(made);
    return result;
}

Value objExists(const CommandCall& call) {
    static const Flags flags = Flags().objects(1, 1);
    const std::string name = flags.parse(call).object();
    try {
        if (name.find('.', name.rfind('|') + 1) != std::string::npos)
            return !plugsNamed(name).empty();
    } catch (const ScriptError&) {
        return false;
    }
    MSelectionList list;
    return list.add(name.c_str()) && list.length() > 0;
}

Value nodeType(const CommandCall& call) {
    static const Flags flags = Flags().flag("-itn", "-isTypeName").objects(1, 1);
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isSet("-isTypeName"))
        return nodeTypeKnown(parsed.object());
    std::string name = parsed.object();
    name.resize(std::min(name.find('.', name.rfind('|') + 1), name.size()));
    return MFnDependencyNode(nodeNamed(name)).typeName().asChar();
}

} // namespace

void registerNodeCommands() {
    script::registerCommand("createNode", createNode);
    script::registerCommand("delete", deleteCommand);
    script::registerCommand("rename", rename);
    script::registerCommand("parent", parent);
    script::registerCommand("duplicate", duplicate);
    script::registerCommand("objExists", objExists);
    script::registerCommand("nodeType", nodeType);
}

} // namespace host
