#pragma once
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

#include <functional>
#include <string>
#include <vector>

// What registration of a plug-in's tools needs from the interface room, which fills the entries
// when it starts. Without an interface an empty entry takes the registration and forgets it, as
// contexts cannot be used there.
namespace host {

struct PluginServices {
    using Creator = void* (*)();
    using SyntaxCreator = MSyntax (*)();

    // Adds the command that makes a context. `toolCommand` is empty and its creators null for the
    // plain form. kInvalidParameter when a name is taken.
    std::function<MStatus(const std::string& name, Creator creator, const std::string& toolCommand,
                          Creator toolCreator, SyntaxCreator toolSyntax)>
        registerContextCommand;
    std::function<MStatus(const std::string& name, const std::string& toolCommand)>
        deregisterContextCommand;

    // Called with each context command of a plug-in before that is unloaded: a tool it made must
    // not stay current; the select tool takes over and toolOffCleanup runs.
    std::function<void(const std::string& contextCommand)> leaveToolsOf;

    // Called when a plug-in is about to be unloaded, before its own uninitializePlugin: deletes
    // what was made of its code elsewhere (draw overrides, user data).
    std::function<void(const std::string& plugin)> beforeUnload;

    // Removes draw override creators whose code lies in the library and returns their
    // classifications: what the plug-in forgot to deregister.
    std::function<std::vector<std::string>(const std::string& libraryFile)> dropDrawOverrides;
};

PluginServices& pluginServices();

} // namespace host
