#include "ui/GhostingCommands.h"

#include "plugin/base/CommandStrings.h"

namespace vellum {

PanelCommands ghostingCommands(const GhostingChoice& choice) {
    PanelCommands commands;
    for (const QString& script : {command::ghostPreviousCount(choice.previousCount),
                                  command::ghostNextCount(choice.nextCount),
                                  command::ghostColorOverride(choice.colorOverride),
                                  command::ghostColorPrevious(choice.previousColor),
                                  command::ghostColorNext(choice.nextColor)})
        commands.push_back(PanelCommand::echoed(script));
    return commands;
}

PanelCommands retimeCommands(const QString& buttonText, bool relative, bool moveToNext) {
    bool isNumber = false;
    const int frames = buttonText.left(buttonText.size() - 1).toInt(&isNumber, 10);
    if (!isNumber)
        return {};
    return {PanelCommand::echoedUndoable(command::retimeFrames(frames, relative, moveToNext))};
}

} // namespace vellum
