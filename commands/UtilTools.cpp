#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/Tool.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/PluginState.h"

#include <QHash>
#include <algorithm>
#include <limits>

namespace vellum::util {

namespace {

/// Makes the tool context; one that was made once is used again until the unload.
MStatus provide(QString& contextName, const char* creationCommand) {
    // Only whether the query runs counts, not what it answers.
    if (contextName.isEmpty() || !script::execute(command::contextExists(contextName))) {
        contextName =
            script::executeString(QString::fromLatin1(creationCommand)).value_or(QString());
        if (contextName.isEmpty())
            return MS::kFailure;
    }
    return MS::kSuccess;
}

/// Undoable for the sake of the tool that is left: what it still commits is a step.
MStatus take(const QString& contextName) {
    return script::execute(command::setToolTo(contextName), false, true) ? MS::kSuccess
                                                                         : MS::kFailure;
}

/// Tool meant by a "...Tool" or "...Options" flag.
Tool toolOfFlag(const char* flag) {
    static const QHash<QString, Tool> tools{
        {QStringLiteral("-pt"), Tool::Pencil},    {QStringLiteral("-po"), Tool::Pencil},
        {QStringLiteral("-bt"), Tool::Brush},     {QStringLiteral("-bo"), Tool::Brush},
        {QStringLiteral("-et"), Tool::Eraser},    {QStringLiteral("-eo"), Tool::Eraser},
        {QStringLiteral("-tt"), Tool::Text},      {QStringLiteral("-txo"), Tool::Text},
        {QStringLiteral("-lt"), Tool::Line},      {QStringLiteral("-lo"), Tool::Line},
        {QStringLiteral("-at"), Tool::Arrow},     {QStringLiteral("-ao"), Tool::Arrow},
        {QStringLiteral("-elt"), Tool::Ellipse},  {QStringLiteral("-elo"), Tool::Ellipse},
        {QStringLiteral("-rt"), Tool::Rectangle}, {QStringLiteral("-ro"), Tool::Rectangle},
    };
    return tools.value(QString::fromLatin1(flag));
}

/// Script numbers are unsigned, options signed: what does not fit is just very large.
int optionArgument(const MArgDatabase& args, const char* flag, unsigned index) {
    constexpr auto largest = static_cast<unsigned>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(unsignedArgument(args, flag, index), largest));
}

} // namespace

MStatus activateDraw(const MArgDatabase&, const char*) {
    QString& name = pluginState().drawContextName;
    if (provide(name, kDrawContextCommand) != MS::kSuccess)
        return MS::kFailure;
    // The tool makes the node where there is none, but taking a tool is no step to undo and would
    // hide that one.
    if (allNodes().empty() && script::executeInt(command::contextExists(name)).value_or(0) != 0)
        script::execute(command::createNode(), true, true);
    return take(name);
}

MStatus activateTransform(const MArgDatabase&, const char*) {
    QString& name = pluginState().transformContextName;
    const MStatus status = provide(name, kTransformContextCommand);
    return status == MS::kSuccess ? take(name) : status;
}

MStatus chooseTool(const MArgDatabase& args, const char* flag) {
    const MStatus status = activateDraw(args, flag);
    if (status != MS::kSuccess)
        return status;
    settings().activeTool = static_cast<int>(toolOfFlag(flag));
    tell(Change::Tool);
    return MS::kSuccess;
}

MStatus setDrawColor(const MArgDatabase& args, const char* flag) {
    QColor color;
    if (!readColor(args, flag, color))
        return MS::kFailure;
    settings().activeColor = color;
    tell(Change::Color);
    return MS::kSuccess;
}

MStatus queryDrawColor(const MArgDatabase&, const char*) {
    setColorResult(settings().activeColor);
    return MS::kSuccess;
}

MStatus setToolOptions(const MArgDatabase& args, const char* flag) {
    const Tool tool = toolOfFlag(flag);
    const int number = static_cast<int>(tool);
    setToolSize(number, optionArgument(args, flag, 0));
    setToolOpacity(number, optionArgument(args, flag, 1));
    if (tool == Tool::Pencil) {
        setToolTabletEnabled(number, unsignedArgument(args, flag, 2) != 0);
    } else if (tool == Tool::Brush || tool == Tool::Eraser) {
        setToolHardness(number, optionArgument(args, flag, 2));
        setToolTabletEnabled(number, unsignedArgument(args, flag, 3) != 0);
    } else if (tool == Tool::Text) {
        settings().textFontFamily = stringArgument(args, flag, 2);
    }
    tell(Change::ToolOptions);
    return MS::kSuccess;
}

} // namespace vellum::util
