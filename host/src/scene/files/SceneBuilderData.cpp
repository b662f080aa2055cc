#include "scene/api/PluginTypes.h"
#include "scene/files/BuilderState.h"
#include "scene/files/DeviceStream.h"
#include "scene/files/PluginSource.h"
#include "scene/text/PlugText.h"

#include <maya/MArgList.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnPluginData.h>
#include <maya/MPxData.h>

#include <algorithm>

// The builder's part for plug-in data. They are what a scene can least do without: their bytes are
// most of the file, so damage is most likely there, and their own readers keep what is whole.
namespace host {

namespace {

// The places of a node that hold plug-in data.
std::vector<MPlug> holdersOf(const MObject& node) {
    std::vector<MPlug> holders;
    const MFnDependencyNode function(node);
    for (unsigned i = 0; i < function.attributeCount(); ++i) {
        MStatus status;
        const MPlug plug = function.findPlug(function.attribute(i), false, &status);
        if (status && plugKind(plug) == PlugKind::Plugin)
            holders.push_back(plug);
    }
    return holders;
}

bool contains(const std::vector<std::string>& list, const std::string& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

} // namespace

bool SceneBuilder::isPluginData(const std::string& type) const {
    MTypeId id;
    const auto& missing = state_->memory.missingPlugins;
    return dataTypeKnown(type, id) ||
           std::any_of(missing.begin(), missing.end(), [&](const Requirement& requirement) {
               return contains(requirement.dataTypes, type);
           });
}

void SceneBuilder::salvageAttr(AttrRecord record) {
    if (isPluginData(record.type))
        setAttr(std::move(record));
}

// The one place that data of a registered type can mean when the name of theirs is damaged.
std::vector<MPlug> SceneBuilder::dataPlugs(const std::string& wanted, const std::string& type) {
    MTypeId id;
    if (!dataTypeKnown(type, id))
        return {};
    std::vector<MPlug> holders = holdersOf(state_->current);
    if (holders.size() != 1)
        return {};
    error("No place " + wanted + " for data of type " + type + "; they go to " +
          holders.front().partialName().asChar());
    return holders;
}

// Makes a node for data whose own was lost with its damaged statement.
bool SceneBuilder::makeHome(const std::string& type) {
    const auto plugin = pluginSource().ofDataType(type);
    if (!plugin)
        return false;
    for (const std::string& nodeType : plugin->nodeTypes) {
        NodeRecord record;
        record.type = nodeType;
        record.name = nodeType + "1";
        createNode(record);
        if (!state_->current.isNull() && holdersOf(state_->current).size() == 1) {
            error("The node of data of type " + type + " is lost; " + state_->currentPath() +
                  " takes them");
            return true;
        }
    }
    loseNode();
    return false;
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
    else if (position < arguments.length())
        error("The data of " + name + " end before the statement: " +
              std::to_string(arguments.length() - position) + " words are left over");
    // Also after a failure: what was read is kept.
    placeData(plug, object);
    return true;
}

void SceneBuilder::setData(const std::string& plugPath, const std::string& type, QIODevice& device,
                           std::uint64_t length) {
    State& state = *state_;
    if (state.current.isNull() && !makeHome(type)) {
        warningOnce("no node", "Attributes skipped: their node is not known");
        return;
    }
    MTypeId id;
    std::vector<MPlug> plugs;
    if (!state.unknown())
        plugs = findPlugs(state.current, plugPath);
    if (plugs.empty() && !state.unknown())
        plugs = dataPlugs(plugPath, type);
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

} // namespace host
