#include "plugins/PluginLoader.h"

#include "foundation/Faults.h"
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "plugins/CallStack.h"
#include "plugins/PluginObject.h"
#include "plugins/PluginServices.h"
#include "scene/api/PluginTypes.h"
#include "scene/files/FileIO.h"
#include "script/PluginCommands.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <maya/MTypes.h>

#include <algorithm>
#include <cstdlib>

namespace host {

namespace {

using EntryPoint = MStatus (*)(MObject);

// An entry point may be a C or a C++ function; the latter goes by its mangled name.
EntryPoint entryPoint(QLibrary& library, const char* name, const char* mangled) {
    QFunctionPointer found = library.resolve(mangled);
    if (!found)
        found = library.resolve(name);
    return reinterpret_cast<EntryPoint>(found);
}

EntryPoint initializer(QLibrary& library) {
#if defined(_MSC_VER)
    return entryPoint(library, "initializePlugin", "?initializePlugin@@YA?AVMStatus@@VMObject@@@Z");
#else
    return entryPoint(library, "initializePlugin", "_Z16initializePlugin7MObject");
#endif
}

EntryPoint uninitializer(QLibrary& library) {
#if defined(_MSC_VER)
    return entryPoint(library, "uninitializePlugin",
                      "?uninitializePlugin@@YA?AVMStatus@@VMObject@@@Z");
#else
    return entryPoint(library, "uninitializePlugin", "_Z18uninitializePlugin7MObject");
#endif
}

const char* libraryExtension() {
#if defined(_WIN32)
    return ".mll";
#elif defined(__APPLE__)
    return ".bundle";
#else
    return ".so";
#endif
}

bool hasLibraryExtension(const QString& name) {
    return name.endsWith(QLatin1String(".so")) || name.endsWith(QLatin1String(".mll")) ||
           name.endsWith(QLatin1String(".bundle"));
}

QString libraryName(const std::string& nameOrPath) {
    const QString name = QString::fromStdString(nameOrPath);
    return hasLibraryExtension(name) ? name : name + QLatin1String(libraryExtension());
}

std::string onPath(const QString& name) {
    const QString path = qEnvironmentVariable("MAYA_PLUG_IN_PATH");
    for (const QString& folder : path.split(QDir::listSeparator(), Qt::SkipEmptyParts)) {
        const QFileInfo info(QDir(folder).filePath(name));
        if (info.isFile())
            return info.absoluteFilePath().toStdString();
    }
    return {};
}

std::string baseName(const std::string& nameOrPath) {
    const QString name = QFileInfo(QString::fromStdString(nameOrPath)).fileName();
    if (!hasLibraryExtension(name))
        return name.toStdString();
    return name.left(name.lastIndexOf(QLatin1Char('.'))).toStdString();
}

std::string quotedName(const std::string& name) {
    return "Plug-in, \"" + name + "\", ";
}

// A plug-in built for another release may load and then corrupt memory, so it is refused here.
bool builtForThisRelease(QLibrary& library, std::string& error) {
    const auto* version = reinterpret_cast<const char*>(library.resolve("MApiVersion"));
    constexpr int yearDivisor = 10000;
    if (!version || std::atoi(version) / yearDivisor == MAYA_API_VERSION / yearDivisor)
        return true;
    error = "was built for API version " + std::string(version) + ", this is " +
            std::to_string(MAYA_API_VERSION);
    return false;
}

} // namespace

PluginLoader::PluginLoader() = default;
PluginLoader::~PluginLoader() = default;

PluginLoader& pluginLoader() {
    static PluginLoader* const loader = new PluginLoader; // plug-ins outlive static destruction
    return *loader;
}

PluginServices& pluginServices() {
    static PluginServices services;
    return services;
}

std::string PluginLoader::locate(const std::string& nameOrPath) const {
    const QString name = libraryName(nameOrPath);
    const QFileInfo here(name);
    if (!nameOrPath.empty() && here.isFile())
        return here.absoluteFilePath().toStdString();
    return name.contains(QLatin1Char('/')) ? std::string() : onPath(name);
}

std::vector<std::string> PluginLoader::namesOnPath() const {
    std::vector<std::string> names;
    const QString path = qEnvironmentVariable("MAYA_PLUG_IN_PATH");
    const QStringList pattern{QLatin1Char('*') + QLatin1String(libraryExtension())};
    for (const QString& folder : path.split(QDir::listSeparator(), Qt::SkipEmptyParts))
        for (const QString& file : QDir(folder).entryList(pattern, QDir::Files, QDir::Name))
            names.push_back(baseName(file.toStdString()));
    return names;
}

bool PluginLoader::isOnPath(const std::string& name) const {
    return !name.empty() && !onPath(libraryName(name)).empty();
}

std::string PluginLoader::load(const std::string& nameOrPath, std::string& error, bool quiet) {
    if (const PluginRecord* loaded = find(nameOrPath)) {
        if (!quiet)
            report::warning(quotedName(loaded->name) + "is already loaded. Skipping load.");
        return loaded->name;
    }
    const std::string path = locate(nameOrPath);
    if (path.empty()) {
        error = quotedName(nameOrPath) + "was not found on MAYA_PLUG_IN_PATH.";
        return {};
    }
    auto plugin = std::make_unique<PluginRecord>();
    plugin->name = baseName(path);
    plugin->fileName = path;
    plugin->library = std::make_unique<QLibrary>(QString::fromStdString(path));
    plugin->library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!plugin->library->load()) {
        error = "Unable to dynamically load: " + path + "\n" +
                plugin->library->errorString().toStdString();
        return {};
    }
    PluginRecord& record = *plugin;
    plugins_.push_back(std::move(plugin));
    if (initialize(record, error))
        return record.name;
    dropLeftovers(record);
    record.library->unload();
    plugins_.pop_back();
    return {};
}

bool PluginLoader::initialize(PluginRecord& plugin, std::string& error) {
    const EntryPoint start = initializer(*plugin.library);
    if (!start || !uninitializer(*plugin.library)) {
        error = quotedName(plugin.name) + "has no initializePlugin or no uninitializePlugin.";
        return false;
    }
    std::string mismatch;
    if (!builtForThisRelease(*plugin.library, mismatch)) {
        error = quotedName(plugin.name) + mismatch + ".";
        return false;
    }
    const MStatus status = start(pluginObject(plugin));
    plugin.initialized = bool(status);
    if (!status)
        error =
            "initializePlugin of \"" + plugin.name + "\" failed: " + status.errorString().asChar();
    return plugin.initialized;
}

bool PluginLoader::inUse(const PluginRecord& plugin) const {
    for (const std::string& type : plugin.nodeTypes)
        if (nodesOfTypeExist(type))
            return true;
    return false;
}

bool PluginLoader::isRunning(const PluginRecord& plugin) {
    return isOnCallStack(reinterpret_cast<const void*>(uninitializer(*plugin.library)));
}

bool PluginLoader::unload(const std::string& name, bool force, std::string& error) {
    PluginRecord* plugin = find(name);
    if (!plugin) {
        error = quotedName(baseName(name)) + "is not loaded.";
        return false;
    }
    if (inUse(*plugin) && !force) {
        error = quotedName(plugin->name) + "cannot be unloaded because it is still in use";
        return false;
    }
    if (isRunning(*plugin)) {
        error = quotedName(plugin->name) +
                "cannot be unloaded because it is still in use: a call of it has not returned";
        return false;
    }
    for (const PluginRecord::Tool& tool : plugin->tools)
        if (pluginServices().leaveToolsOf && !faults::due("leaveToolsOf"))
            pluginServices().leaveToolsOf(tool.contextCommand);
    const Requirement requirement{plugin->name, plugin->version, plugin->nodeTypes,
                                  plugin->dataTypes};
    const QByteArray nodes = fileIO().takeNodes(plugin->nodeTypes);
    // Deleted nodes and finished commands on the queue are objects of the plug-in's code.
    undoQueue().flush();
    if (pluginServices().beforeUnload)
        pluginServices().beforeUnload(plugin->name);
    const bool gone = runUninitialize(*plugin, error);
    if (gone) {
        dropLeftovers(*plugin);
        plugin->library->unload();
        plugins_.erase(std::find_if(plugins_.begin(), plugins_.end(),
                                    [plugin](const auto& each) { return each.get() == plugin; }));
    }
    const auto& types = requirement.nodeTypes;
    if (!nodes.isEmpty() && !std::all_of(types.begin(), types.end(), nodeTypeKnown))
        fileIO().memory().missingPlugins.push_back(requirement);
    fileIO().putBack(nodes);
    return gone;
}

bool PluginLoader::runUninitialize(PluginRecord& plugin, std::string& error) {
    const EntryPoint stop = uninitializer(*plugin.library);
    const MStatus status = stop(pluginObject(plugin));
    if (status)
        return true;
    error =
        "uninitializePlugin of \"" + plugin.name + "\" failed: " + status.errorString().asChar();
    return false;
}

// What a plug-in forgot to deregister would point into code that is gone.
void PluginLoader::dropLeftovers(PluginRecord& plugin) {
    const auto forgotten = [&plugin](const std::string& what) {
        if (plugin.initialized)
            report::warning(quotedName(plugin.name) + "did not deregister " + what);
    };
    for (const PluginRecord::Tool& tool : plugin.tools) {
        forgotten("context command " + tool.contextCommand);
        if (pluginServices().deregisterContextCommand)
            pluginServices().deregisterContextCommand(tool.contextCommand, tool.toolCommand);
    }
    for (const std::string& command : plugin.commands) {
        forgotten("command " + command);
        script::unregisterPluginCommand(command);
    }
    for (const std::string& type : plugin.nodeTypes) {
        forgotten("node type " + type);
        deleteNodesOfType(type);
        removeNodeType(type);
    }
    for (const std::string& type : plugin.dataTypes) {
        forgotten("data type " + type);
        removeDataType(type);
    }
    if (pluginServices().dropDrawOverrides)
        for (const std::string& override : pluginServices().dropDrawOverrides(plugin.fileName))
            forgotten("the draw override of " + override);
    plugin.tools.clear();
    plugin.commands.clear();
    plugin.nodeTypes.clear();
    plugin.dataTypes.clear();
}

PluginRecord* PluginLoader::find(const std::string& nameOrPath) {
    const std::string base = baseName(nameOrPath);
    for (const auto& plugin : plugins_)
        if (plugin->name == nameOrPath || plugin->name == base || plugin->fileName == nameOrPath)
            return plugin.get();
    return nullptr;
}

PluginRecord* PluginLoader::findByNodeType(const std::string& type) {
    for (const auto& plugin : plugins_)
        if (std::count(plugin->nodeTypes.begin(), plugin->nodeTypes.end(), type) > 0)
            return plugin.get();
    return nullptr;
}

PluginRecord* PluginLoader::findByDataType(const std::string& type) {
    for (const auto& plugin : plugins_)
        if (std::count(plugin->dataTypes.begin(), plugin->dataTypes.end(), type) > 0)
            return plugin.get();
    return nullptr;
}

std::vector<PluginRecord*> PluginLoader::all() {
    std::vector<PluginRecord*> result;
    for (const auto& plugin : plugins_)
        result.push_back(plugin.get());
    return result;
}

} // namespace host
