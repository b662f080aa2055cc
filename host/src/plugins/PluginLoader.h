#pragma once
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <memory>
#include <string>
#include <vector>

class QLibrary;

// Loading and unloading of plug-in libraries, and what is known of those that are loaded.
namespace host {

// One loaded plug-in. MFnPlugin works on these.
struct PluginRecord {
    std::string name;     // file name without extension, or as the plug-in renamed itself
    std::string fileName; // full path of the library
    std::string vendor = "Unknown";
    std::string version = "Unknown";
    std::string requiredApiVersion = "Any";
    std::vector<std::string> commands;
    std::vector<std::string> nodeTypes;
    std::vector<unsigned> nodeIds; // beside nodeTypes
    std::vector<std::string> dataTypes;
    std::vector<unsigned> dataIds; // beside dataTypes
    struct Tool {
        std::string contextCommand;
        std::string toolCommand;
    };
    std::vector<Tool> tools;
    bool initialized = false;
    std::unique_ptr<QLibrary> library;
};

// Main thread only.
class PluginLoader {
public:
    PluginLoader();
    ~PluginLoader();

    // `nameOrPath` with or without the extension of the platform; a name alone is looked for in
    // the working directory and along MAYA_PLUG_IN_PATH. Returns the plug-in's name. On failure
    // returns "" with `error` for the user; nothing of the plug-in stays. Loading what is loaded
    // already warns (unless quiet) and returns its name.
    std::string load(const std::string& nameOrPath, std::string& error, bool quiet = false);
    // Refuses while nodes or data of the plug-in's types are in the scene, unless forced: then
    // those nodes are deleted first. Refuses even so while the plug-in's code runs, as when one of
    // its commands, tools or callbacks has a modal dialog open.
    bool unload(const std::string& name, bool force, std::string& error);

    // By name, file name or path; null when it is not loaded.
    PluginRecord* find(const std::string& nameOrPath);
    PluginRecord* findByNodeType(const std::string& type);
    PluginRecord* findByDataType(const std::string& type);
    std::vector<PluginRecord*> all();
    // The library a name stands for along the search path; "" when there is none.
    std::string locate(const std::string& nameOrPath) const;
    // Of the libraries on MAYA_PLUG_IN_PATH, without their ending.
    std::vector<std::string> namesOnPath() const;
    // Whether MAYA_PLUG_IN_PATH has it; the working directory does not count.
    bool isOnPath(const std::string& name) const;
    bool inUse(const PluginRecord& plugin) const;
    // Whether a call into its library has not returned.
    static bool isRunning(const PluginRecord& plugin);

private:
    bool initialize(PluginRecord& plugin, std::string& error);
    bool runUninitialize(PluginRecord& plugin, std::string& error);
    void dropLeftovers(PluginRecord& plugin);

    std::vector<std::unique_ptr<PluginRecord>> plugins_;
};

PluginLoader& pluginLoader();

} // namespace host
