#include "ui/ToolboxCommands.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Settings.h"

namespace vellum::toolbox {

PanelCommands chooseTool(Tool tool) {
    return {PanelCommand::echoed(command::chooseTool(tool))};
}

PanelCommands switchGhostPrevious(const Settings& current) {
    return {PanelCommand::echoed(command::ghostPrevious(current.ghostPrev ? 0 : 1))};
}

PanelCommands switchGhostNext(const Settings& current) {
    return {PanelCommand::echoed(command::ghostNext(current.ghostNext ? 0 : 1))};
}

PanelCommands ghostPreviousCount(int count) {
    return {PanelCommand::echoed(command::ghostPreviousCount(count))};
}

PanelCommands ghostNextCount(int count) {
    return {PanelCommand::echoed(command::ghostNextCount(count))};
}

PanelCommands ghostingSettings() {
    return {PanelCommand::echoed(command::util(QStringLiteral("-ghostingSettings")))};
}

PanelCommands insertFrames(bool drawingExists) {
    if (!drawingExists)
        return {PanelCommand::onIdle(command::createNodeWithFrames())};
    return frames("-insert");
}

PanelCommands frames(const char* flag) {
    return {PanelCommand::echoed(command::frame(QString::fromLatin1(flag)))};
}

} // namespace vellum::toolbox
