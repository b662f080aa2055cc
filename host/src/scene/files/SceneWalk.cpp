#include "scene/files/SceneWalk.h"

#include "scene/core/Node.h"
#include "scene/core/TimeState.h"
#include "scene/files/KeptStatements.h"
#include "scene/files/PluginSource.h"
#include "scene/text/CurveText.h"
#include "scene/text/NodeText.h"
#include "scene/text/UnitNames.h"
#include "scene/text/Words.h"

#include <maya/MAngle.h>
#include <maya/MDagPath.h>
#include <maya/MDistance.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPluginData.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlugArray.h>
#include <maya/MPxData.h>
#include <maya/MTime.h>

#include <algorithm>
#include <map>
#include <utility>

namespace host {

namespace {

constexpr const char* kSettingsNode = "sceneConfigurationScriptNode";

struct WrittenNode {
    MObject node;
    NodeText text;
    const KeptNode* kept = nullptr;
    bool isDefault = false;
};

// Parents before children, then everything outside the DAG; each node once.
std::vector<MObject> nodesInOrder() {
    std::vector<MObject> nodes;
    std::set<unsigned> instanced;
    for (MItDag item(MItDag::kDepthFirst); !item.isDone(); item.next()) {
        const MObject node = item.currentItem();
        if (node.hasFn(MFn::kWorld))
            continue;
        if (MFnDagNode(node).parentCount() > 1 &&
            !instanced.insert(MObjectHandle(node).hashCode()).second)
            continue;
        nodes.push_back(node);
    }
    for (MItDependencyNodes item(MFn::kInvalid); !item.isDone(); item.next()) {
        const MObject node = item.thisNode();
        if (!node.hasFn(MFn::kDagNode))
            nodes.push_back(node);
    }
    return nodes;
}

// The long name that an addAttr gives.
std::string attributeName(const AddAttrRecord& attribute) {
    const std::vector<Token>& tokens = attribute.arguments;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (!tokens[i].quoted && (tokens[i].text == "-ln" || tokens[i].text == "-longName"))
            return tokens[i + 1].text;
    return {};
}

// A lock of the node shows as one of each of its attributes, but is a statement of its own.
NodeText describeUnlocked(const MObject& object) {
    const NodePtr node = Access::as<Node>(object);
    const bool locked = std::exchange(node->locked, false);
    NodeText text = describeNode(object);
    node->locked = locked;
    return text;
}

class Writer {
public:
    Writer(SceneSink& sink, const SceneMemory& memory, const std::set<std::string>& without)
        : sink_(sink), memory_(memory), without_(without) {}

    std::string write(const std::string& fileName) {
        collect();
        sink_.begin(fileName);
        writeKept(StatementPlace::Head);
        writeRequirements();
        writeUnits();
        for (const auto& [key, value] : memory_.fileInfo)
            sink_.fileInfo(key, value);
        writeKept(StatementPlace::Settings);
        writeKeptAfter(MObjectHandle());
        for (WrittenNode& node : nodes_) {
            if (!writeNode(node))
                return failed_;
            writeKeptAfter(MObjectHandle(node.node));
        }
        writeSettings();
        writeConnections();
        writeKept(StatementPlace::Connections);
        sink_.end(fileName);
        return {};
    }

    void writeOnly(const std::vector<std::string>& types) {
        collect();
        const auto isOther = [&types](const WrittenNode& written) {
            return !isOneOf(types, written.node);
        };
        nodes_.erase(std::remove_if(nodes_.begin(), nodes_.end(), isOther), nodes_.end());
        sink_.begin({});
        writeUnits();
        for (WrittenNode& node : nodes_)
            writeNode(node);
        for (const WrittenNode& written : nodes_)
            writeConnectionsOf(written.node, types);
        sink_.end({});
    }

private:
    static bool isOneOf(const std::vector<std::string>& types, const MObject& node) {
        const std::string type = MFnDependencyNode(node).typeName().asChar();
        return std::find(types.begin(), types.end(), type) != types.end();
    }

    void writeUnits() {
        sink_.units({linearName(MDistance::uiUnit()), angleName(MAngle::uiUnit()),
                     timeName(MTime::uiUnit())});
    }

    void collect() {
        for (const MObject& node : nodesInOrder()) {
            const MFnDependencyNode function(node);
            if (std::string(function.name().asChar()) == kSettingsNode)
                continue; // made anew from the playback settings
            WrittenNode written;
            written.node = node;
            written.text = describeUnlocked(node);
            written.kept = keptStatements().find(node);
            written.isDefault = function.isDefaultNode();
            nodes_.push_back(std::move(written));
        }
    }

    void writeRequirements() {
        std::map<std::string, Requirement> needed;
        const auto add = [](std::vector<std::string>& list, const std::string& name) {
            if (std::find(list.begin(), list.end(), name) == list.end())
                list.push_back(name);
        };
        const auto require = [&](const PluginSource::Plugin& plugin) -> Requirement& {
            Requirement& requirement = needed[plugin.name];
            requirement.plugin = plugin.name;
            requirement.version = plugin.version;
            return requirement;
        };
        for (const WrittenNode& written : nodes_) {
            const std::string type = MFnDependencyNode(written.node).typeName().asChar();
            if (const auto plugin = pluginSource().ofNodeType(type))
                add(require(*plugin).nodeTypes, type);
            for (const DataRecord& data : written.text.data)
                if (const auto plugin = pluginSource().ofDataType(data.type))
                    add(require(*plugin).dataTypes, data.type);
        }
        for (const auto& [name, requirement] : needed)
            sink_.requirement(requirement);
        // What of a scene goes back to a plug-in that is not here cannot be told.
        for (const Requirement& missing : memory_.missingPlugins)
            sink_.requirement(missing);
    }

    bool writeNode(WrittenNode& written) {
        const MFnDependencyNode function(written.node);
        const bool inDag = written.node.hasFn(MFn::kDagNode);
        if (written.isDefault && !inDag) {
            if (written.text.empty() && !written.kept)
                return true;
            sink_.selectNode(":" + std::string(function.name().asChar()));
        } else {
            NodeRecord record;
            record.type = function.typeName().asChar();
            if (written.kept && !written.kept->originalType.empty())
                record.type = written.kept->originalType;
            record.name = function.name().asChar();
            record.shared = written.isDefault || (written.kept && written.kept->shared);
            if (inDag) {
                const MObject parent = MFnDagNode(written.node).parent(0);
                if (!parent.isNull() && !parent.hasFn(MFn::kWorld))
                    record.parent = nodePath(parent);
            }
            sink_.createNode(record);
        }
        if (written.kept && !written.kept->uuid.empty())
            sink_.statement("\t" + written.kept->uuid);
        for (const AddAttrRecord& attribute : written.text.added)
            sink_.addAttr(asRead(written, attribute));
        const auto isOfData = [&](const AttrRecord& attribute) {
            return std::any_of(written.text.data.begin(), written.text.data.end(),
                               [&](const DataRecord& data) { return data.plug == attribute.plug; });
        };
        for (const AttrRecord& attribute : written.text.values)
            if (!isOfData(attribute))
                sink_.setAttr(attribute);
        if (!writeData(written))
            return false;
        // After the data: a lock would keep them out.
        for (const AttrRecord& attribute : written.text.values)
            if (isOfData(attribute))
                sink_.setAttr(attribute);
        if (!writeKept(written))
            return false;
        writeLock(written);
        return true;
    }

    bool writeData(WrittenNode& written) {
        for (DataRecord& data : written.text.data) {
            const std::string full = nodePath(written.node) + data.plug;
            if (without_.count(full) > 0)
                continue;
            MFnPluginData holder(data.source.asMObject());
            MPxData* const content = holder.data();
            if (content && !sink_.setData(data.plug, data.type, *content)) {
                failed_ = full;
                return false;
            }
        }
        return true;
    }

    // The file's own statement for an attribute, when it came from one, may say more.
    static const AddAttrRecord& asRead(const WrittenNode& written, const AddAttrRecord& now) {
        if (written.kept)
            for (const AddAttrRecord& before : written.kept->added)
                if (attributeName(before) == attributeName(now))
                    return before;
        return now;
    }

    void writeKept(StatementPlace place) {
        for (const KeptText& text : keptStatements().texts())
            if (text.place == place)
                sink_.statement(text.text);
    }

    // Those behind a node; an invalid one: behind none that is still there.
    void writeKeptAfter(const MObjectHandle& node) {
        for (const KeptText& text : keptStatements().texts())
            if (text.place == StatementPlace::Nodes &&
                (node.isValid() ? text.after == node : !text.after.isValid()))
                sink_.statement(text.text);
    }

    void writeLock(const WrittenNode& written) {
        const bool locked = MFnDependencyNode(written.node).isLocked();
        const std::string before = written.kept ? written.kept->lock : std::string();
        if (locked)
            sink_.statement(before.empty() ? "lockNode -l 1 ;" : before);
        else if (before.find("-l 1") == std::string::npos && !before.empty())
            sink_.statement(before);
    }

    bool writeKept(const WrittenNode& written) {
        if (!written.kept)
            return true;
        if (isCurve(written.node) && keysText(written.node) == written.kept->keys)
            for (const AttrRecord& tangents : written.kept->tangents)
                sink_.setAttr(tangents);
        for (const KeptStatement& statement : written.kept->statements) {
            if (const auto* added = std::get_if<AddAttrRecord>(&statement))
                sink_.addAttr(*added);
            else if (const auto* attribute = std::get_if<AttrRecord>(&statement))
                sink_.setAttr(*attribute);
            else if (const auto* raw = std::get_if<RawData>(&statement)) {
                const std::string full = nodePath(written.node) + raw->plug;
                if (without_.count(full) > 0 || sink_.setRawData(raw->plug, raw->type, raw->bytes))
                    continue;
                failed_ = full;
                return false;
            }
        }
        return true;
    }

    // Where Maya keeps them too: the time in the time node, the range in a script node.
    void writeSettings() {
        const auto frame = [](const MTime& time) { return formatNumber(time.as(MTime::uiUnit())); };
        AttrRecord now;
        now.plug = ".o";
        now.hasValue = true;
        now.values = {word(frame(timeline::current()))};
        sink_.selectNode(":time1");
        sink_.setAttr(now);

        NodeRecord node;
        node.type = "script";
        node.name = kSettingsNode;
        sink_.createNode(node);
        if (!memory_.settingsUuid.empty())
            sink_.statement("\t" + memory_.settingsUuid);
        AttrRecord range;
        range.plug = ".b";
        range.type = "string";
        range.hasValue = true;
        const timeline::Range times = timeline::range();
        range.values = {quoted("playbackOptions -min " + frame(times.start) + " -max " +
                               frame(times.end) + " -ast " + frame(times.animationStart) +
                               " -aet " + frame(times.animationEnd) + " ")};
        sink_.setAttr(range);
        AttrRecord type;
        type.plug = ".st";
        type.hasValue = true;
        type.values = {word("6")}; // run when the interface configuration is restored
        sink_.setAttr(type);
    }

    void writeConnections() {
        for (const WrittenNode& written : nodes_) {
            MPlugArray plugs;
            MFnDependencyNode(written.node).getConnections(plugs);
            for (unsigned i = 0; i < plugs.length(); ++i) {
                const MPlug destination = plugs[i];
                if (!destination.isDestination())
                    continue;
                const MPlug source = destination.source();
                if (source.isNull() ||
                    (written.isDefault && MFnDependencyNode(source.node()).isDefaultNode()))
                    continue;
                sink_.connect(plugPath(source), plugPath(destination), {});
            }
        }
        for (const KeptConnection& kept : keptStatements().connections())
            sink_.connect(nodePath(kept.source.object()) + kept.sourcePlug,
                          nodePath(kept.destination.object()) + kept.destinationPlug, kept.flags);
    }

    // Those among nodes of the types stand with their destination.
    void writeConnectionsOf(const MObject& node, const std::vector<std::string>& types) {
        MPlugArray plugs;
        MFnDependencyNode(node).getConnections(plugs);
        for (unsigned i = 0; i < plugs.length(); ++i) {
            if (plugs[i].isDestination())
                sink_.connect(plugPath(plugs[i].source()), plugPath(plugs[i]), {});
            MPlugArray fed;
            plugs[i].destinations(fed);
            for (unsigned k = 0; k < fed.length(); ++k)
                if (!isOneOf(types, fed[k].node()))
                    sink_.connect(plugPath(plugs[i]), plugPath(fed[k]), {});
        }
    }

    static std::string plugPath(const MPlug& plug) {
        return nodePath(plug.node()) + "." + plug.partialName().asChar();
    }

    SceneSink& sink_;
    const SceneMemory& memory_;
    const std::set<std::string>& without_;
    std::vector<WrittenNode> nodes_;
    std::string failed_;
};

} // namespace

std::string nodePath(const MObject& node) {
    if (!node.hasFn(MFn::kDagNode))
        return MFnDependencyNode(node).name().asChar();
    return MFnDagNode(node).partialPathName().asChar();
}

void writeNodes(SceneSink& sink, const std::vector<std::string>& types) {
    Writer(sink, SceneMemory(), {}).writeOnly(types);
}

std::string writeScene(SceneSink& sink, const std::string& fileName, const SceneMemory& memory,
                       const std::set<std::string>& without) {
    return Writer(sink, memory, without).write(fileName);
}

} // namespace host
