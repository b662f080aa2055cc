#include "scene/files/SceneBuilder.h"

#include "foundation/Report.h"
#include "scene/api/PluginTypes.h"
#include "scene/core/TimeState.h"
#include "scene/files/DeviceStream.h"
#include "scene/files/KeptStatements.h"
#include "scene/files/PluginSource.h"
#include "scene/files/SceneSink.h"
#include "scene/files/SceneWalk.h"
#include "scene/text/CurveText.h"
#include "scene/text/NodeText.h"
#include "scene/text/PlugText.h"
#include "scene/text/UnitNames.h"
#include "scene/text/Words.h"

#include <maya/MArgList.h>
#include <maya/MDGModifier.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPluginData.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxData.h>
#include <maya/MSelectionList.h>
#include <maya/MTime.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace host {

namespace {

constexpr const char* settingsNode = "sceneConfigurationScriptNode";
constexpr int mostMessages = 200; // a badly damaged file would otherwise give one for each line

MObject nodeInScene(const std::string& path) {
    MSelectionList list;
    MObject node;
    if (!path.empty() && list.add(path.c_str()) && list.length() == 1)
        list.getDependNode(0, node);
    return node;
}

std::string lastPart(const std::string& path) {
    const std::size_t bar = path.rfind('|');
    return bar == std::string::npos ? path : path.substr(bar + 1);
}

// Whether a path, whole (from the first "|") or in part, means the node of that whole path.
bool means(const std::string& path, const std::string& full) {
    if (path.compare(0, 1, "|") == 0)
        return path == full;
    const std::string tail = "|" + path;
    return full.size() >= tail.size() &&
           full.compare(full.size() - tail.size(), tail.size(), tail) == 0;
}

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

} // namespace

struct SceneBuilder::State {
    SceneMemory& memory;
    FilePlace place;
    bool importing = false;
    ReadResult result;
    int shown = 0;
    std::set<std::string> shownOnce;

    MObject current;
    bool inSettings = false; // the current node is the one that only carries playback settings
    // Nodes the file made and their whole paths in the file, by their last name; several may share
    // it under different parents.
    std::multimap<std::string, std::pair<std::string, MObjectHandle>> made;
    std::map<std::string, double> playback;
    std::optional<double> currentFrame;
    std::optional<Units> sceneUnits; // to put back after an import

    bool unknown() const {
        const KeptNode* kept = keptStatements().find(current);
        return kept && !kept->originalType.empty();
    }
    void keep(KeptStatement statement) {
        keptStatements().of(current).statements.push_back(std::move(statement));
    }
    MObject resolve(const std::string& path) const;
    std::string pathInFile(const MObject& node, const std::string& path) const;
    std::string currentPath() const { return nodePath(current); }
};

// A path of the file. What the file made comes first: on import it may be called otherwise now.
MObject SceneBuilder::State::resolve(const std::string& path) const {
    if (path.compare(0, 1, ":") == 0)
        return nodeInScene(path.substr(1));
    const auto [first, last] = made.equal_range(lastPart(path));
    for (auto each = first; each != last; ++each)
        if (means(path, each->second.first) && each->second.second.isValid())
            return each->second.second.object();
    return nodeInScene(path);
}

// Whole path in the file of a node that `path` means there; the scene's own for one it did not
// make.
std::string SceneBuilder::State::pathInFile(const MObject& node, const std::string& path) const {
    const auto [first, last] = made.equal_range(lastPart(path));
    for (auto each = first; each != last; ++each)
        if (each->second.second.isValid() && each->second.second.object() == node)
            return each->second.first;
    const std::string own = nodePath(node);
    return own.compare(0, 1, "|") == 0 ? own : "|" + own;
}

SceneBuilder::SceneBuilder(std::string fileName, bool importing, SceneMemory& memory)
    : state_(new State{memory,
                       {std::move(fileName), 0, true},
                       importing,
                       {},
                       0,
                       {},
                       {},
                       false,
                       {},
                       {},
                       {},
                       {}}) {
}

SceneBuilder::~SceneBuilder() = default;

void SceneBuilder::setPlace(std::uint64_t line, bool isLine) {
    state_->place.line = line;
    state_->place.isLine = isLine;
}

void SceneBuilder::error(const std::string& message) {
    ++state_->result.errors;
    if (++state_->shown <= mostMessages)
        report::error(describe(state_->place) + ": " + message);
}

void SceneBuilder::warning(const std::string& message) {
    ++state_->result.warnings;
    if (++state_->shown <= mostMessages)
        report::warning(describe(state_->place) + ": " + message);
}

void SceneBuilder::warningOnce(const std::string& key, const std::string& message) {
    if (state_->shownOnce.insert(key).second)
        warning(message);
    else
        ++state_->result.warnings;
}

void SceneBuilder::requirement(Requirement requirement) {
    std::string problem;
    if (pluginSource().provide(requirement.plugin, problem))
        return;
    warning("The scene requires a plug-in that is missing: " + problem);
    state_->memory.missingPlugins.push_back(std::move(requirement));
}

void SceneBuilder::units(const Units& units) {
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
}

void SceneBuilder::createNode(const NodeRecord& record) {
    loseNode();
    if (record.type == "script" && record.name == settingsNode) {
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
        else if (!parent.hasFn(MFn::kDagNode))
            parent = MObject::kNullObj;
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
        node = MFnDagNode().create(type.c_str(), record.name.c_str(), parent);
    else
        node = MFnDependencyNode().create(type.c_str(), record.name.c_str());
    if (node.isNull()) {
        error("Could not create node '" + record.name + "' of type " + record.type);
        return;
    }
    if (type != record.type)
        keptStatements().of(node).originalType = record.type;
    // A shape made without parent comes with a transform of its own; the statements mean the shape.
    state_->current = node;
    const std::string above =
        parent.isNull() ? std::string() : state_->pathInFile(parent, record.parent);
    state_->made.emplace(record.name,
                         std::make_pair(above + "|" + record.name, MObjectHandle(node)));
}

void SceneBuilder::selectNode(const std::string& name) {
    loseNode();
    if (name == settingsNode) {
        state_->inSettings = true;
        return;
    }
    state_->current = state_->resolve(name);
    if (state_->current.isNull())
        warningOnce("select " + name, "No object matches name: " + name);
}

void SceneBuilder::addAttr(AddAttrRecord attribute) {
    if (state_->current.isNull())
        return;
    if (state_->unknown()) {
        state_->keep(std::move(attribute));
        return;
    }
    std::string problem;
    const MObject made = makeAttribute(attribute.arguments, state_->current, problem);
    if (!made.isNull() && MFnDependencyNode(state_->current).addAttribute(made))
        return;
    warningOnce("addAttr " + problem, problem);
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
    if (state.current.isNull()) {
        warningOnce("no node", "Attributes skipped: their node is not known");
        return;
    }
    if (state.unknown()) {
        state.keep(std::move(record));
        return;
    }
    const MFnDependencyNode node(state.current);
    if (node.isDefaultNode() && node.name() == "time1" && record.values.size() == 1) {
        double frame = 0;
        if (record.plug == ".o" && parseNumber(record.values[0].text, frame))
            state.currentFrame = frame;
        return;
    }
    std::string problem;
    if (isCurve(state.current) && textToCurve(state.current, record, problem)) {
        if (!problem.empty())
            error(state.currentPath() + record.plug + ": " + problem);
        return;
    }
    if (isCurve(state.current) && isTangentDetail(record.plug)) {
        // Kept as they stand they would no longer fit once a key is added or removed.
        warningOnce("tangents", "Tangent directions and weights of animation curves are not kept");
        return;
    }
    const std::vector<MPlug> plugs = findPlugs(state.current, record.plug);
    if (plugs.empty()) {
        const std::string type = node.typeName().asChar();
        warningOnce("attribute " + type + record.plug,
                    "Attribute " + record.plug + " of " + type +
                        " is not known here; it is kept as it stands in the file");
        state.keep(std::move(record));
        return;
    }
    applyAttr(plugs, std::move(record));
}

// Values first: a lock in the same statement is meant for afterwards.
void SceneBuilder::applyAttr(std::vector<MPlug> plugs, AttrRecord record) {
    std::string problem;
    if (record.hasValue && plugKind(plugs.front()) == PlugKind::plugin) {
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

// Moves the words into the argument list one by one, so that the text of a big drawing is held
// about once. False when the whole statement was kept for later or is no good.
bool SceneBuilder::readTokens(MPlug plug, AttrRecord& record) {
    MTypeId id;
    if (!dataTypeKnown(record.type, id)) {
        warningOnce("data " + record.type,
                    "Unrecognized data type '" + record.type + "'; preserving the data.");
        state_->keep(std::move(record));
        return false;
    }
    MFnPluginData holder;
    MObject object = holder.create(id);
    MPxData* const data = object.isNull() ? nullptr : holder.data();
    if (!data) {
        error("Could not create data of type " + record.type);
        return false;
    }
    const std::string name = state_->currentPath() + record.plug;
    MArgList arguments;
    arguments.addArg(MString(record.plug.c_str()));
    arguments.addArg(MString("-type"));
    arguments.addArg(MString(record.type.c_str()));
    unsigned position = arguments.length();
    for (Token& token : record.values) {
        arguments.addArg(MString(token.text.c_str(), int(token.text.size())));
        std::string().swap(token.text);
    }
    if (record.values.empty())
        return true;
    if (!data->readASCII(arguments, position))
        error("The data of " + name + " could not be read completely");
    // Also after a failure: what was read is kept.
    placeData(plug, object);
    return true;
}

void SceneBuilder::setData(const std::string& plugPath, const std::string& type, QIODevice& device,
                           std::uint64_t length) {
    State& state = *state_;
    if (state.current.isNull()) {
        warningOnce("no node", "Attributes skipped: their node is not known");
        return;
    }
    MTypeId id;
    std::vector<MPlug> plugs;
    if (!state.unknown())
        plugs = findPlugs(state.current, plugPath);
    if (plugs.empty() || !dataTypeKnown(type, id)) {
        if (!state.unknown())
            warningOnce("data " + type,
                        "Unrecognized data type '" + type + "'; preserving the data.");
        state.keep(RawData{plugPath, type, device.read(qint64(length)).toStdString()});
        return;
    }
    MFnPluginData holder;
    MObject object = holder.create(id);
    MPxData* const data = object.isNull() ? nullptr : holder.data();
    if (!data || length > 0xffffffffu) {
        error("Could not create data of type " + type);
        return;
    }
    DeviceReadBuffer buffer(device, length);
    std::istream stream(&buffer);
    if (!data->readBinary(stream, unsigned(length)))
        error("The data of " + state.currentPath() + plugPath + " could not be read completely");
    placeData(plugs.front(), object);
}

void SceneBuilder::connect(const std::string& source, const std::string& destination) {
    const auto split = [this](const std::string& path, MObject& node, std::string& plug) {
        const std::size_t dot = path.find('.', path.rfind('|') + 1);
        if (dot == std::string::npos)
            return false;
        node = state_->resolve(path.substr(0, dot));
        plug = path.substr(dot);
        return !node.isNull();
    };
    MObject from, to;
    std::string fromPlug, toPlug;
    if (!split(source, from, fromPlug) || !split(destination, to, toPlug)) {
        warningOnce("connect " + source + destination,
                    "Connection skipped, a node is missing: " + source + " to " + destination);
        return;
    }
    const std::vector<MPlug> sources = findPlugs(from, fromPlug);
    const std::vector<MPlug> destinations = findPlugs(to, toPlug);
    if (sources.size() != 1 || destinations.size() != 1) {
        keptStatements().connect({MObjectHandle(from), fromPlug, MObjectHandle(to), toPlug});
        return;
    }
    if (destinations.front().source() == sources.front())
        return;
    MDGModifier modifier;
    if (!modifier.connect(sources.front(), destinations.front()) || !modifier.doIt())
        error("Could not connect " + source + " to " + destination);
}

void SceneBuilder::rename(const std::string& newName) {
    if (!state_->current.isNull())
        MFnDependencyNode(state_->current).setName(newName.c_str());
}

void SceneBuilder::parent(const std::vector<std::string>& names) {
    if (names.size() < 2)
        return;
    const MObject parent = state_->resolve(names.back());
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        MObject child = state_->resolve(names[i]);
        if (parent.isNull() || child.isNull() || !parent.hasFn(MFn::kDagNode) ||
            !child.hasFn(MFn::kDagNode) || !MFnDagNode(parent).addChild(child))
            error("Could not parent " + names[i] + " to " + names.back());
    }
}

ReadResult SceneBuilder::finish() {
    State& state = *state_;
    if (state.shown > mostMessages)
        report::warning(state.place.file + ": " + std::to_string(state.shown - mostMessages) +
                        " further messages not shown");
    if (state.sceneUnits) {
        const Units units = *state.sceneUnits;
        this->units(units);
    }
    if (!state.importing) {
        const auto frame = [](double value) { return MTime(value, MTime::uiUnit()); };
        const auto has = [&](const char* flag) { return state.playback.count(flag) > 0; };
        timeline::Range range = timeline::range();
        if (has("-ast"))
            range.animationStart = frame(state.playback["-ast"]);
        if (has("-aet"))
            range.animationEnd = frame(state.playback["-aet"]);
        if (has("-min"))
            range.start = frame(state.playback["-min"]);
        if (has("-max"))
            range.end = frame(state.playback["-max"]);
        timeline::setRange(range);
        if (state.currentFrame)
            timeline::setCurrent(frame(*state.currentFrame));
    }
    return state.result;
}

} // namespace host
