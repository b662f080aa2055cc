#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "plugins/PluginLoader.h"

#include <QDir>

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

Value loadPlugin(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-qt", "-quiet").flag("-a", "-allPlugins").objects(0, -1);
    const ParsedFlags parsed = flags.parse(call);
    Strings names = parsed.objectNames();
    if (parsed.isSet("-allPlugins"))
        for (const std::string& name : pluginLoader().namesOnPath())
            names.push_back(name);
    Strings loaded;
    std::string problems;
    for (const std::string& name : names) {
        std::string error;
        const std::string result = pluginLoader().load(name, error, parsed.isSet("-quiet"));
        if (result.empty())
            problems += (problems.empty() ? "" : "\n") + error;
        else
            loaded.push_back(result);
    }
    if (!problems.empty())
        throw ScriptError(problems);
    return loaded;
}

Value unloadPlugin(const CommandCall& call) {
    static const Flags flags = Flags().flag("-f", "-force").objects(1, -1);
    const ParsedFlags parsed = flags.parse(call);
    Strings unloaded;
    for (const std::string& given : parsed.objectNames()) {
        const PluginRecord* const plugin = pluginLoader().find(given);
        const std::string name = plugin ? plugin->name : given;
        std::string error;
        if (!pluginLoader().unload(given, parsed.isSet("-force"), error))
            throw ScriptError(error);
        unloaded.push_back(name);
    }
    return unloaded;
}

Strings toolsOf(const PluginRecord& plugin) {
    Strings names;
    for (const PluginRecord::Tool& tool : plugin.tools)
        names.push_back(tool.contextCommand);
    return names;
}

Value ofAll(const ParsedFlags& parsed) {
    Strings result;
    for (const PluginRecord* plugin : pluginLoader().all()) {
        if (parsed.isSet("-pluginsInUse") && !pluginLoader().inUse(*plugin))
            continue;
        result.push_back(plugin->name);
        if (parsed.isSet("-pluginsInUse"))
            result.push_back(plugin->version);
    }
    return result;
}

Value pluginInfo(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-l", "-loaded")
                                   .flag("-r", "-registered")
                                   .flag("-ls", "-listPlugins")
                                   .flag("-piu", "-pluginsInUse")
                                   .flag("-uo", "-unloadOk")
                                   .flag("-v", "-version")
                                   .flag("-vd", "-vendor")
                                   .flag("-av", "-apiVersion")
                                   .flag("-p", "-path")
                                   .flag("-n", "-name")
                                   .flag("-c", "-command")
                                   .flag("-t", "-tool")
                                   .flag("-dn", "-dependNode")
                                   .flag("-d", "-data")
                                   .flag("-a", "-autoload", {ArgKind::Boolean})
                                   .query()
                                   .edit()
                                   .objects(0, 1);
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isEdit())
        return Value(); // autoload is a preference of an installation; the host keeps none
    if (parsed.isSet("-listPlugins") || parsed.isSet("-pluginsInUse"))
        return ofAll(parsed);
    const PluginRecord* const plugin = pluginLoader().find(parsed.object());
    if (parsed.isSet("-loaded") || parsed.isSet("-registered"))
        return plugin != nullptr;
    if (parsed.isSet("-autoload"))
        return false;
    if (!plugin)
        throw ScriptError("Plug-in, \"" + parsed.object() + "\", is not loaded.");
    if (parsed.isSet("-unloadOk"))
        return !pluginLoader().inUse(*plugin) && !pluginLoader().isRunning(*plugin);
    if (parsed.isSet("-version"))
        return plugin->version;
    if (parsed.isSet("-vendor"))
        return plugin->vendor;
    if (parsed.isSet("-apiVersion"))
        return plugin->requiredApiVersion;
    if (parsed.isSet("-path"))
        return plugin->fileName;
    if (parsed.isSet("-name"))
        return plugin->name;
    if (parsed.isSet("-command"))
        return Strings(plugin->commands);
    if (parsed.isSet("-tool"))
        return toolsOf(*plugin);
    if (parsed.isSet("-dependNode"))
        return Strings(plugin->nodeTypes);
    if (parsed.isSet("-data"))
        return Strings(plugin->dataTypes);
    throw ScriptError("No query flag of 'pluginInfo' was specified.");
}

} // namespace

void registerPluginInfoCommands() {
    script::registerCommand("loadPlugin", loadPlugin);
    script::registerCommand("unloadPlugin", unloadPlugin);
    script::registerCommand("pluginInfo", pluginInfo);
}

} // namespace host
