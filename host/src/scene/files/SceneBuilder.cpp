#include "scene/files/SceneBuilder.h"

#include "foundation/Report.h"
#include "scene/api/PluginTypes.h"
#include "scene/core/TimeState.h"
#include "scene/files/BuilderState.h"
#include "scene/files/PluginSource.h"
#include "scene/text/CurveText.h"
#include "scene/text/NodeText.h"
#include "scene/text/PlugText.h"
#include "scene/text/StatementText.h"
#include "scene/text/UnitNames.h"
#include "scene/text/Words.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MTime.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace host {

namespace {

// The numbers of `playbackOptions -min 1 -max 24 …`, which is all such a text may hold.
std::map<std::string, double> playbackNumbers(const std::string& text) {
    std::map<std::string, double> numbers;
    std::size_t at = 0;
    std::vector<std::string> words;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find_first_of(" \t\n;", at), text.size());
        if (end > at)
            words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    if (words.empty() || words[0] != "playbackOptions" || words.size() % 2 == 0)
        return {};
    for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
        double value = 0;
        if (!parseNumber(words[i + 1], value))
            return {};
        numbers[words[i]] = value;
    }
    return numbers;
}

// A shape without a parent comes with a transform of its own; the shape is what is meant.
MObject createInDag(const std::string& type, const std::string& name, const MObject& parent) {
    const MObject made = MFnDagNode().create(type.c_str(), name.c_str(), parent);
    const bool isShape = !made.isNull() && MFnDependencyNode(made).typeName() != type.c_str();
    return isShape ? MFnDagNode(made).child(0) : made;
}

} // namespace

SceneBuilder::SceneBuilder(std::string fileName, bool importing, SceneMemory& memory)
    : state_(new State(memory, std::move(fileName), importing)) {
    if (importing)
        state_->uuids = keptStatements().uuids();
}

SceneBuilder::~SceneBuilder() = default;

void SceneBuilder::setPlace(std::uint64_t line, bool isLine) {
    state_->place.line = line;
    state_->place.isLine = isLine;
}

void SceneBuilder::error(const std::string& message) {
    ++state_->result.errors;
    if (++state_->shown <= kMostMessages)
        report::error(describe(state_->place) + ": " + message);
}

void SceneBuilder::warning(const std::string& message) {
    ++state_->result.warnings;
    if (++state_->shown <= kMostMessages)
        report::warning(describe(state_->place) + ": " + message);
}

void SceneBuilder::warningOnce(const std::string& key, const std::string& message) {
    if (state_->shownOnce.insert(key).second)
        warning(message);
    else
        ++state_->result.warnings;
}

void SceneBuilder::requirement(Requirement requirement) {
    state_->reach(StatementPlace::Settings);
    std::string problem;
    if (pluginSource().provide(requirement.plugin, problem))
        return;
    auto& missing = state_->memory.missingPlugins;
    const auto same = [&](const Requirement& other) {
        return other.plugin == requirement.plugin && other.nodeTypes == requirement.nodeTypes &&
               other.dataTypes == requirement.dataTypes;
    };
    if (std::any_of(missing.begin(), missing.end(), same))
        return; // real files say some of them twice
    warning("The scene requires a plug-in that is missing: " + problem);
    missing.push_back(std::move(requirement));
}

void SceneBuilder::units(const Units& units) {
    state_->reach(StatementPlace::Settings);
    if (state_->importing && !state_->sceneUnits)
        state_->sceneUnits = Units{linearName(MDistance::uiUnit()), angleName(MAngle::uiUnit()),
                                   timeName(MTime::uiUnit())};
    MDistance::Unit linear = MDistance::uiUnit();
    MAngle::Unit angle = MAngle::uiUnit();
    MTime::Unit time = MTime::uiUnit();
    if ((!units.linear.empty() && !linearFromName(units.linear, linear)) ||
        (!units.angle.empty() && !angleFromName(units.angle, angle)) ||
        (!units.time.empty() && !timeFromName(units.time, time)))
        error("Unknown unit: " + units.linear + " " + units.angle + " " + units.time);
    MDistance::setUIUnit(linear);
    MAngle::setUIUnit(angle);
    timeline::setUnit(time);
}

void SceneBuilder::fileInfo(const std::string& key, const std::string& value) {
    state_->reach(StatementPlace::Settings);
    if (state_->importing)
        return;
    auto& list = state_->memory.fileInfo;
    const auto known =
        std::find_if(list.begin(), list.end(), [&](const auto& each) { return each.first == key; });
    if (known == list.end())
        list.emplace_back(key, value);
    else
        known->second = value;
}

void SceneBuilder::loseNode() {
    state_->current = MObject::kNullObj;
    state_->inSettings = false;
    state_->orphaned = false;
}

// A node of an unknown type joins the hierarchy as soon as another is to stand below it.
MObject SceneBuilder::inDag(const MObject& node) {
    if (node.hasFn(MFn::kDagNode))
        return node;
    const KeptNode* kept = keptStatements().find(node);
    if (!kept || kept->originalType.empty())
        return MObject::kNullObj;
    const std::string name = MFnDependencyNode(node).name().asChar();
    MObject going = node;
    MGlobal::deleteNode(going);
    const MObject made = MFnDagNode().create("unknownTransform", name.c_str(), MObject::kNullObj);
    keptStatements().move(node, made);
    for (auto& [last, entry] : state_->made)
        if (entry.second == MObjectHandle(node))
            entry.second = MObjectHandle(made);
    if (state_->lastMade == MObjectHandle(node))
        state_->lastMade = MObjectHandle(made);
    return made;
}

void SceneBuilder::createNode(const NodeRecord& record) {
    state_->reach(StatementPlace::Nodes);
    loseNode();
    if (record.type == "script" && record.name == kSettingsNode) {
        state_->inSettings = true;
        return;
    }
    if (record.shared) {
        const MObject existing = nodeInScene(record.name);
        if (!existing.isNull() && MFnDependencyNode(existing).typeName() == record.type.c_str()) {
            state_->current = existing;
            return;
        }
    }
    MObject parent;
    if (!record.parent.empty()) {
        parent = state_->resolve(record.parent);
        if (parent.isNull())
            error("Parent of node '" + record.name + "' not found: " + record.parent);
        else
            parent = inDag(parent);
    }
    std::string type = record.type;
    if (!nodeTypeCreatable(type)) {
        warningOnce("type " + type, "Unrecognized node type '" + type + "' for node '" +
                                        record.name +
                                        "'; preserving node information in this scene.");
        type = record.parent.empty() ? "unknown" : "unknownDag";
    }
    MObject node;
    if (nodeTypeInDag(type))
        node = createInDag(type, record.name, parent);
    else
        node = MFnDependencyNode().create(type.c_str(), record.name.c_str());
    if (node.isNull()) {
        error("Could not create node '" + record.name + "' of type " + record.type);
        return;
    }
    if (type != record.type)
        keptStatements().of(node).originalType = record.type;
    if (record.shared)
        keptStatements().of(node).shared = true;
    state_->current = node;
    state_->lastMade = MObjectHandle(node);
    const std::string above =
        parent.isNull() ? std::string() : state_->pathInFile(parent, record.parent);
    state_->made.emplace(record.name,
                         std::make_pair(above + "|" + record.name, MObjectHandle(node)));
}

void SceneBuilder::selectNode(const std::string& name) {
    state_->reach(StatementPlace::Nodes);
    loseNode();
    if (name == kSettingsNode) {
        state_->inSettings = true;
        return;
    }
    state_->current = state_->resolve(name);
    if (!state_->current.isNull())
        return;
    warningOnce("select", "Attributes of nodes that are not there, such as " + name +
                              ", are kept as they stand in the file");
    keepUnknown(statementText({word("select"), word("-ne"), nameToken(name)}));
}

void SceneBuilder::addAttr(AddAttrRecord attribute) {
    if (state_->current.isNull()) {
        std::vector<Token> tokens = {word("\taddAttr")};
        tokens.insert(tokens.end(), attribute.arguments.begin(), attribute.arguments.end());
        keepOrphan(tokens);
        return;
    }
    if (state_->unknown()) {
        state_->keep(std::move(attribute));
        return;
    }
    std::string problem;
    const MObject made = makeAttribute(attribute.arguments, state_->current, problem);
    if (!made.isNull() && MFnDependencyNode(state_->current).addAttribute(made)) {
        keptStatements().of(state_->current).added.push_back(std::move(attribute));
        return;
    }
    warningOnce("addAttr " + problem, problem + "; it is kept as it stands in the file");
    state_->keep(std::move(attribute));
}

void SceneBuilder::setAttr(AttrRecord record) {
    State& state = *state_;
    if (record.plug.compare(0, 1, ".") != 0) {
        const std::size_t dot = record.plug.find('.');
        selectNode(record.plug.substr(0, dot));
        record.plug = dot == std::string::npos ? std::string() : record.plug.substr(dot);
    }
    if (state.inSettings) {
        if ((record.plug == ".b" || record.plug == ".before") && record.values.size() == 1)
            state.playback = playbackNumbers(record.values[0].text);
        return;
    }
    if (state.current.isNull() && keepOrphan(attributeTokens(record)))
        return;
    if (state.current.isNull() && !(isPluginData(record.type) && makeHome(record.type)))
        warningOnce("no node", "Attributes skipped: their node is not known");
    else if (state.unknown())
        state.keep(std::move(record));
    else
        setKnownAttr(std::move(record));
}

bool SceneBuilder::setCurveAttr(AttrRecord& record) {
    std::string problem;
    if (record.plug == ".tan" || record.plug == ".wgt") {
        state_->keep(std::move(record));
        return true;
    }
    if (isTangentDetail(record.plug)) {
        keptStatements().of(state_->current).tangents.push_back(std::move(record));
        return true;
    }
    if (!textToCurve(state_->current, record, problem))
        return false;
    if (!problem.empty())
        error(state_->currentPath() + record.plug + ": " + problem);
    return true;
}

void SceneBuilder::setKnownAttr(AttrRecord record) {
    State& state = *state_;
    const MFnDependencyNode node(state.current);
    double frame = 0;
    if (node.isDefaultNode() && node.name() == "time1" && record.plug == ".o" &&
        record.values.size() == 1 && parseNumber(record.values[0].text, frame)) {
        state.currentFrame = frame;
        return;
    }
    if (isCurve(state.current) && setCurveAttr(record))
        return;
    std::vector<MPlug> plugs = findPlugs(state.current, record.plug);
    if (plugs.empty())
        plugs = dataPlugs(record.plug, record.type);
    if (!plugs.empty()) {
        applyAttr(plugs, std::move(record));
        return;
    }
    const std::string type = node.typeName().asChar();
    warningOnce("attribute " + type + record.plug,
                "Attribute " + record.plug + " of " + type +
                    " is not known here; it is kept as it stands in the file");
    state.keep(std::move(record));
}

// Values first: a lock in the same statement is meant for afterwards.
void SceneBuilder::applyAttr(std::vector<MPlug> plugs, AttrRecord record) {
    std::string problem;
    if (record.hasValue && plugKind(plugs.front()) == PlugKind::Plugin) {
        if (!readTokens(plugs.front(), record))
            return;
    } else if (record.hasValue && !textToValue(plugs, record, problem))
        error(state_->currentPath() + record.plug + ": " + problem);
    for (MPlug& plug : plugs) {
        if (record.keyable)
            plug.setKeyable(*record.keyable);
        if (record.channelBox)
            plug.setChannelBox(*record.channelBox);
        if (record.locked)
            plug.setLocked(*record.locked);
    }
}

} // namespace host
