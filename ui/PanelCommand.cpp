#include "ui/PanelCommand.h"

#include "plugin/base/Script.h"

namespace vellum {

void issue(const PanelCommands& commands) {
    for (const PanelCommand& command : commands) {
        if (command.script.isEmpty())
            continue;
        if (command.when == PanelCommand::When::Idle)
            script::executeOnIdle(command.script, command.echo);
        else
            script::execute(command.script, command.echo, command.undo);
    }
}

} // namespace vellum
