#pragma once

#include "script/Value.h"

#include <functional>
#include <string>
#include <vector>

namespace host::script {

/// One call of a command, as the interpreter hands it over. Valid during the call only.
struct CommandCall {
    std::string name;
    std::vector<Value> arguments; ///< evaluated; a flag such as -name is the string "-name"

    /// For each argument the variable it was read from, or null when it was an expression.
    /// For commands that change an array they are given (`tokenize`, `clear`).
    std::vector<Value*> variables;

    bool undoEnabled = true; ///< false: what the command does must not enter the undo queue
    bool echo = false;       ///< true: the caller wants commands and results shown

    std::string file; ///< where the call stands, for commands that show it
    int line = 0;

    /// Arguments with arrays taken apart, which is how commands see them.
    std::vector<Value> flattened() const;
};

/// Returns the result (None for none) or throws ScriptError.
using CommandFunction = std::function<Value(const CommandCall&)>;

/// Adds or replaces a command. `name` is what scripts call.
void registerCommand(const std::string& name, CommandFunction function);

/// False when there is no such command.
bool unregisterCommand(const std::string& name);

bool commandExists(const std::string& name);
std::vector<std::string> commandNames(); ///< sorted

/// Runs a command with evaluated arguments. Throws ScriptError; an unknown name is
/// `Cannot find procedure "NAME".`.
Value callCommand(const CommandCall& call);

} // namespace host::script
