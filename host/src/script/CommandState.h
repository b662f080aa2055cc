#pragma once

#include "script/Value.h"

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <optional>
#include <string>

namespace host::script {

/// What the host keeps with a plug-in command object.
struct CommandState {
    std::optional<MSyntax> syntax; ///< registered with the command
    std::string text;              ///< command string
    bool history = true;

    static CommandState& of(const MPxCommand& command) { return *command.state_; }
};

/// Collects the results and messages of the plug-in command that executes; innermost last.
class CommandExecution {
public:
    CommandExecution();
    ~CommandExecution();
    CommandExecution(const CommandExecution&) = delete;
    CommandExecution& operator=(const CommandExecution&) = delete;

    /// Null outside of a command.
    static CommandExecution* current();

    Value result;
    std::string lastError; ///< shown while it ran; "" for none

private:
    CommandExecution* outer_;
    int listener_;
};

} // namespace host::script
