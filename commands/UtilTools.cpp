#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/base/ToolTable.h"
#include "plugin/session/PluginState.h"

#include <QLatin1String>

#include <algorithm>
#include <cassert>
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

/// What the tool that is left still commits is a step to undo, the change of tool is none.
MStatus take(const QString& contextName) {
    if (UnfinishedWork* work = pluginState().unfinished)
        work->finish();
    return script::execute(command::setToolTo(contextName)) ? MS::kSuccess : MS::kFailure;
}

bool isOf(const FlagNames& names, const char* flag) {
    return QLatin1String(names.shortName) == QLatin1String(flag);
}

/// Tool meant by a "...Tool" or "...Options" flag, of which the table of actions has no others.
const ToolInfo& toolOfFlag(const char* flag) {
    const auto found = std::find_if(kTools.begin(), kTools.end(), [flag](const ToolInfo& info) {
        return isOf(info.toolFlag, flag) || isOf(info.optionsFlag, flag);
    });
    assert(found != kTools.end());
    return *found;
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
    settings().activeTool = toolOfFlag(flag).tool;
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

std::vector<MSyntax::MArgType> toolOptionArguments(const ToolInfo& info) {
    std::vector<MSyntax::MArgType> types{MSyntax::kUnsigned, MSyntax::kUnsigned};
    if (info.hardness.keep != Keep::Nowhere)
        types.push_back(MSyntax::kUnsigned);
    if (info.tablet.keep != Keep::Nowhere)
        types.push_back(MSyntax::kUnsigned);
    if (info.factoryFont)
        types.push_back(MSyntax::kString);
    return types;
}

MStatus setToolOptions(const MArgDatabase& args, const char* flag) {
    const ToolInfo& info = toolOfFlag(flag);
    unsigned next = 0; // as toolOptionArguments() lists them
    setToolSize(info.tool, optionArgument(args, flag, next++));
    setToolOpacity(info.tool, optionArgument(args, flag, next++));
    if (info.hardness.keep != Keep::Nowhere)
        setToolHardness(info.tool, optionArgument(args, flag, next++));
    if (info.tablet.keep != Keep::Nowhere)
        setToolTabletEnabled(info.tool, unsignedArgument(args, flag, next++) != 0);
    if (info.factoryFont)
        settings().of(info.tool).fontFamily = stringArgument(args, flag, next++);
    tell(Change::ToolOptions);
    return MS::kSuccess;
}

} // namespace vellum::util
