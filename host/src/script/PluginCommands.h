#pragma once

#include "script/Value.h"

#include <string>

class MPxCommand;
class MSyntax;

/// Commands that come from plug-ins, dispatched as the platform does it.
namespace host::script {

using CommandCreator = void* (*)();
using SyntaxCreator = MSyntax (*)();

/// Makes a plug-in command callable. `syntaxCreator` may be null (the command reads its own
/// argument list). `owner` is the plug-in's name. False when the name is taken.
bool registerPluginCommand(const std::string& name, CommandCreator creator,
                           SyntaxCreator syntaxCreator, const std::string& owner);

/// False when no plug-in has registered it. Flushes the undo queue when calls of the command are
/// on it: its code is about to go.
bool unregisterPluginCommand(const std::string& name);

/// Whether plug-in `owner` still has commands.
bool hasPluginCommands(const std::string& owner);

/// "" when the name is not a plug-in's command.
std::string pluginOfCommand(const std::string& name);

/// Hands a command object that already did its work to the undo queue, as after a successful doIt
/// (tool commands finalise themselves this way). Takes ownership; deletes it when it is not
/// undoable or nothing is being recorded.
void recordPluginCommand(MPxCommand* command, const std::string& label);

} // namespace host::script
