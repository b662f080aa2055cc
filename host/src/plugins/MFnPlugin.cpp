#define MNoPluginEntry
#define MNoVersionString
#include "foundation/Faults.h"
#include "foundation/UndoQueue.h"
#include "plugins/PluginObject.h"
#include "plugins/PluginServices.h"
#include "scene/api/PluginTypes.h"
#include "script/PluginCommands.h"

#include <QFileInfo>

#include <maya/MFnPlugin.h>

#include <algorithm>

using host::pluginOf;
using host::PluginRecord;

namespace {

void report(MStatus* to, MStatus::MStatusCode code) {
    if (to)
        *to = MStatus(code);
}

template <class Text> MString textOf(const MObject& object, MStatus* status, Text text) {
    const PluginRecord* const plugin = pluginOf(object);
    report(status, plugin ? MS::kSuccess : MS::kFailure);
    return plugin ? MString(text(*plugin).c_str()) : MString();
}

template <class List, class Item> bool removeItem(List& list, const Item& item) {
    const auto found = std::find(list.begin(), list.end(), item);
    if (found == list.end())
        return false;
    list.erase(found);
    return true;
}

} // namespace

MFnPlugin::MFnPlugin() = default;
MFnPlugin::~MFnPlugin() = default;

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version,
                     const char* requiredApiVersion, MStatus* ReturnStatus) {
    const MStatus status =
        host::faults::due("MFnPlugin") ? MStatus(MS::kFailure) : setObject(object);
    if (ReturnStatus)
        *ReturnStatus = status;
    PluginRecord* const plugin = pluginOf(object);
    // While unloading, the constructor without texts must not wipe out what is known.
    if (!status || !plugin || plugin->initialized)
        return;
    plugin->vendor = vendor;
    plugin->version = version;
    plugin->requiredApiVersion = requiredApiVersion;
}

MFn::Type MFnPlugin::type() const {
    return MFn::kPlugin;
}

MString MFnPlugin::vendor(MStatus* status) const {
    return textOf(object(), status, [](const PluginRecord& plugin) { return plugin.vendor; });
}

MString MFnPlugin::version(MStatus* status) const {
    return textOf(object(), status, [](const PluginRecord& plugin) { return plugin.version; });
}

MString MFnPlugin::apiVersion(MStatus* status) const {
    return textOf(object(), status,
                  [](const PluginRecord& plugin) { return plugin.requiredApiVersion; });
}

MString MFnPlugin::name(MStatus* status) const {
    return textOf(object(), status, [](const PluginRecord& plugin) { return plugin.name; });
}

MString MFnPlugin::loadPath(MStatus* status) const {
    return textOf(object(), status, [](const PluginRecord& plugin) {
        return QFileInfo(QString::fromStdString(plugin.fileName)).absolutePath().toStdString();
    });
}

MStatus MFnPlugin::setName(const MString& newName, bool allowRename) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || newName.length() == 0)
        return MS::kFailure;
    std::string name = newName.asChar();
    for (int number = 1;; ++number) {
        const PluginRecord* const other = host::pluginLoader().find(name);
        if (!other || other == plugin)
            break;
        if (!allowRename)
            return MS::kFailure;
        name = newName.asChar() + std::to_string(number);
    }
    plugin->name = name;
    return MS::kSuccess;
}

MStatus MFnPlugin::setVersion(const MString& newVersion) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin)
        return MS::kFailure;
    plugin->version = newVersion.asChar();
    return MS::kSuccess;
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   MCreateSyntaxFunction createSyntaxFunction) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || !creatorFunction || host::faults::due("registerCommand", commandName.asChar()))
        return MS::kFailure;
    if (!host::script::registerPluginCommand(commandName.asChar(), creatorFunction,
                                             createSyntaxFunction, plugin->name))
        return MS::kInvalidParameter;
    plugin->commands.emplace_back(commandName.asChar());
    return MS::kSuccess;
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName) {
    PluginRecord* const plugin = pluginOf(object());
    if (host::faults::due("deregisterCommand", commandName.asChar()))
        return MS::kFailure;
    if (!plugin || !removeItem(plugin->commands, commandName.asChar()))
        return MS::kInvalidParameter;
    return host::script::unregisterPluginCommand(commandName.asChar()) ? MS::kSuccess
                                                                       : MS::kFailure;
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName,
                                          MCreatorFunction creatorFunction) {
    return registerContextCommand(commandName, creatorFunction, MString(), nullptr, nullptr);
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName,
                                          MCreatorFunction creatorFunction,
                                          const MString& toolCmdName,
                                          MCreatorFunction toolCmdCreator,
                                          MCreateSyntaxFunction toolCmdSyntax) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || !creatorFunction ||
        host::faults::due("registerContextCommand", commandName.asChar()))
        return MS::kFailure;
    MStatus status = MS::kSuccess;
    if (host::pluginServices().registerContextCommand)
        status = host::pluginServices().registerContextCommand(
            commandName.asChar(), creatorFunction, toolCmdName.asChar(), toolCmdCreator,
            toolCmdSyntax);
    if (status)
        plugin->tools.push_back({commandName.asChar(), toolCmdName.asChar()});
    return status;
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName) {
    return deregisterContextCommand(commandName, MString());
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName,
                                            const MString& toolCmdName) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || host::faults::due("deregisterContextCommand", commandName.asChar()))
        return MS::kFailure;
    const auto found =
        std::find_if(plugin->tools.begin(), plugin->tools.end(), [&](const auto& tool) {
            return commandName == tool.contextCommand.c_str() &&
                   toolCmdName == tool.toolCommand.c_str();
        });
    if (found == plugin->tools.end())
        return MS::kInvalidParameter;
    MStatus status = MS::kSuccess;
    if (host::pluginServices().deregisterContextCommand)
        status = host::pluginServices().deregisterContextCommand(commandName.asChar(),
                                                                 toolCmdName.asChar());
    if (status)
        plugin->tools.erase(found);
    return status;
}

MStatus MFnPlugin::registerNode(const MString& typeName, const MTypeId& typeId,
                                MCreatorFunction creatorFunction, MInitializeFunction initFunction,
                                MPxNode::Type type, const MString* classification) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || !creatorFunction || host::faults::due("registerNode", typeName.asChar()))
        return MS::kFailure;
    const MStatus status =
        host::addNodeType(typeName.asChar(), typeId, creatorFunction, initFunction, type,
                          classification ? classification->asChar() : "", plugin->name);
    if (status) {
        plugin->nodeTypes.emplace_back(typeName.asChar());
        plugin->nodeIds.push_back(typeId.id());
    }
    return status;
}

MStatus MFnPlugin::deregisterNode(const MTypeId& typeId) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin)
        return MS::kFailure;
    const auto found = std::find(plugin->nodeIds.begin(), plugin->nodeIds.end(), typeId.id());
    if (found == plugin->nodeIds.end())
        return MS::kInvalidParameter;
    const auto type = plugin->nodeTypes.begin() + (found - plugin->nodeIds.begin());
    if (host::nodesOfTypeExist(*type) || host::faults::due("deregisterNode", *type))
        return MS::kFailure;
    // Deleted nodes of the type may wait on the queue for an undo.
    host::undoQueue().flush();
    host::removeNodeType(*type);
    plugin->nodeTypes.erase(type);
    plugin->nodeIds.erase(found);
    return MS::kSuccess;
}

MStatus MFnPlugin::registerData(const MString& typeName, const MTypeId& typeId,
                                MCreatorFunction creatorFunction, MPxData::Type type) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin || !creatorFunction || host::faults::due("registerData", typeName.asChar()))
        return MS::kFailure;
    const MStatus status =
        host::addDataType(typeName.asChar(), typeId, creatorFunction, type, plugin->name);
    if (status) {
        plugin->dataTypes.emplace_back(typeName.asChar());
        plugin->dataIds.push_back(typeId.id());
    }
    return status;
}

MStatus MFnPlugin::deregisterData(const MTypeId& typeId) {
    PluginRecord* const plugin = pluginOf(object());
    if (!plugin)
        return MS::kFailure;
    const auto found = std::find(plugin->dataIds.begin(), plugin->dataIds.end(), typeId.id());
    if (found == plugin->dataIds.end())
        return MS::kInvalidParameter;
    const auto type = plugin->dataTypes.begin() + (found - plugin->dataIds.begin());
    if (host::faults::due("deregisterData", *type))
        return MS::kFailure;
    host::removeDataType(*type);
    plugin->dataTypes.erase(type);
    plugin->dataIds.erase(found);
    return MS::kSuccess;
}

MObject MFnPlugin::findPlugin(const MString& pluginName) {
    PluginRecord* const plugin = host::pluginLoader().find(pluginName.asChar());
    return plugin ? host::pluginObject(*plugin) : MObject::kNullObj;
}

bool MFnPlugin::isNodeRegistered(const MString& typeName) {
    return host::nodeTypeKnown(typeName.asChar());
}
