#include "commands/SceneCommandSupport.h"

#include "commands/SceneCommands.h"
#include "scene/core/Scene.h"
#include "scene/core/SceneState.h"
#include "scene/files/SceneWalk.h"
#include "scene/text/PlugText.h"

#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>

#include <cctype>

namespace host {

using script::ScriptError;

namespace {

class FunctionStep : public UndoStep {
public:
    FunctionStep(std::string label, std::function<void()> undo, std::function<void()> redo)
        : label_(std::move(label)), undo_(std::move(undo)), redo_(std::move(redo)) {}
    bool undo() override {
        undo_();
        return true;
    }
    bool redo() override {
        redo_();
        return true;
    }
    std::string label() const override { return label_; }

private:
    std::string label_;
    std::function<void()> undo_;
    std::function<void()> redo_;
};

MSelectionList listNamed(const std::string& name) {
    MSelectionList list;
    if (scene().find(name.substr(0, name.find('.'))).size() > 1)
        throw ScriptError("More than one object matches name: " + name);
    if (name.empty() || !list.add(name.c_str()) || list.length() == 0)
        throw ScriptError("No object matches name: " + name);
    return list;
}

} // namespace

MObject nodeNamed(const std::string& name) {
    MObject node;
    if (!listNamed(name).getDependNode(0, node) || node.isNull())
        throw ScriptError("No object matches name: " + name);
    return node;
}

MObject nodeToParent(const std::string& name, const MObject& target) {
    const MObject node = nodeNamed(name);
    if (!node.hasFn(MFn::kDagNode))
        throw ScriptError("Only DAG nodes have a parent: " + name);
    if (!target.isNull() && (node == target || MFnDagNode(target).isChildOf(node)))
        throw ScriptError("Cannot parent an object to one of its children.");
    return node;
}

MDagPath pathNamed(const std::string& name) {
    MDagPath path;
    if (!listNamed(name).getDagPath(0, path))
        throw ScriptError("No object matches name: " + name);
    return path;
}

std::vector<MPlug> plugsNamed(const std::string& name) {
    const std::size_t dot = name.find('.', name.rfind('|') + 1);
    if (dot == std::string::npos)
        throw ScriptError("No attribute was specified.");
    std::vector<MPlug> plugs = findPlugs(nodeNamed(name.substr(0, dot)), name.substr(dot));
    if (plugs.empty())
        throw ScriptError("No object matches name: " + name);
    return plugs;
}

MPlug plugNamed(const std::string& name) {
    const std::vector<MPlug> plugs = plugsNamed(name);
    if (plugs.size() > 1)
        throw ScriptError("More than one attribute matches name: " + name);
    return plugs.front();
}

std::vector<std::string> selectedNames(bool fullPaths) {
    MSelectionList list;
    MGlobal::getActiveSelectionList(list);
    std::vector<std::string> names;
    for (unsigned i = 0; i < list.length(); ++i) {
        MObject node;
        if (list.getDependNode(i, node))
            names.push_back(nameOf(node, fullPaths));
    }
    return names;
}

std::vector<std::string> namesOrSelection(const script::ParsedFlags& parsed) {
    std::vector<std::string> names = parsed.objectNames();
    if (names.empty())
        names = selectedNames();
    if (names.empty())
        throw ScriptError("Nothing is selected. Select objects or specify their names.");
    return names;
}

std::string nameOf(const MObject& node, bool fullPath) {
    if (!fullPath || !node.hasFn(MFn::kDagNode))
        return nodePath(node);
    return MFnDagNode(node).fullPathName().asChar();
}

std::string shapeName(const std::string& transform) {
    std::size_t end = transform.size();
    while (end > 0 && std::isdigit(static_cast<unsigned char>(transform[end - 1])))
        --end;
    return transform.substr(0, end) + "Shape" + transform.substr(end);
}

std::string freeName(const std::string& pattern) {
    if (pattern.empty() || pattern.back() != '#')
        return pattern;
    const std::string stem = pattern.substr(0, pattern.size() - 1);
    for (int number = 1;; ++number) {
        const std::string name = stem + std::to_string(number);
        MSelectionList list;
        if (!list.add(name.c_str()) || list.length() == 0)
            return name;
    }
}

bool isShape(const MObject& node) {
    return node.hasFn(MFn::kDagNode) && !node.hasFn(MFn::kTransform) && !node.hasFn(MFn::kWorld);
}

std::unique_ptr<UndoStep> makeStep(const std::string& label, std::function<void()> undo,
                                   std::function<void()> redo) {
    return std::make_unique<FunctionStep>(label, std::move(undo), std::move(redo));
}

void recordStep(const std::string& label, std::function<void()> undo, std::function<void()> redo) {
    const auto modifying = [](std::function<void()> work) {
        return [work = std::move(work)] {
            work();
            setSceneModified(true);
        };
    };
    setSceneModified(true);
    undoQueue().record(makeStep(label, modifying(std::move(undo)), modifying(std::move(redo))));
}

void doAndRecord(const std::string& label, const std::shared_ptr<MDagModifier>& modifier,
                 const std::string& failure) {
    if (!modifier->doIt()) {
        modifier->undoIt();
        throw ScriptError(failure);
    }
    recordStep(
        label, [modifier] { modifier->undoIt(); }, [modifier] { modifier->doIt(); });
}

void recordCreation(const std::string& label, const std::vector<MObject>& nodes) {
    const auto removal = std::make_shared<MDagModifier>();
    const auto prepared = std::make_shared<bool>(false);
    recordStep(
        label,
        [removal, prepared, nodes] {
            if (!*prepared)
                for (MObject node : nodes)
                    removal->deleteNode(node);
            *prepared = true;
            removal->doIt();
        },
        [removal] { removal->undoIt(); });
}

void recordSelection(const MSelectionList& before) {
    MSelectionList after;
    MGlobal::getActiveSelectionList(after);
    undoQueue().record(makeStep(
        "select", [before] { MGlobal::setActiveSelectionList(before); },
        [after] { MGlobal::setActiveSelectionList(after); }));
}

void selectNodes(const std::vector<MObject>& nodes) {
    MSelectionList before;
    MGlobal::getActiveSelectionList(before);
    MSelectionList chosen;
    for (MObject node : nodes)
        chosen.add(node);
    MGlobal::setActiveSelectionList(chosen);
    recordSelection(before);
}

void registerSceneCommands() {
    registerFileCommands();
    registerPluginInfoCommands();
    registerNodeCommands();
    registerListCommands();
    registerAttributeCommands();
    registerTransformCommands();
    registerMakeCommands();
    registerTimeCommands();
}

} // namespace host
