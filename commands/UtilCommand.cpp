#include "commands/UtilCommand.h"

#include "commands/UtilActions.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"

#include <QColor>
#include <maya/MArgDatabase.h>
#include <maya/MIntArray.h>

namespace vellum {

namespace {

/// Null when the flag does nothing in the mode of the call.
UtilHandler handlerOf(const UtilAction& action, const MArgDatabase& args) {
    UtilHandler handler = action.create;
    if (!handler && args.isEdit())
        handler = action.edit;
    else if (!handler && args.isQuery())
        handler = action.query;
    // In a query no flag has arguments.
    const bool incomplete = args.isQuery() && !action.arguments.empty();
    return incomplete && handler != action.query ? nullptr : handler;
}

} // namespace

void* UtilCommand::creator() {
    return new UtilCommand;
}

MSyntax UtilCommand::newSyntax() {
    MSyntax syntax;
    for (const UtilAction& action : utilActions()) {
        MSyntax::MArgType types[4] = {MSyntax::kNoArg, MSyntax::kNoArg, MSyntax::kNoArg,
                                      MSyntax::kNoArg};
        for (std::size_t i = 0; i < action.arguments.size(); ++i)
            types[i] = action.arguments[i];
        syntax.addFlag(action.shortName, action.longName, types[0], types[1], types[2], types[3]);
    }
    syntax.enableQuery(true);
    syntax.enableEdit(true);
    return syntax;
}

bool UtilCommand::isUndoable() const {
    return false;
}

MStatus UtilCommand::doIt(const MArgList& args) {
    MStatus status;
    const MArgDatabase parsed(syntax(), args, &status);
    if (status != MS::kSuccess)
        return status;
    for (const UtilAction& action : utilActions()) {
        if (!parsed.isFlagSet(action.shortName))
            continue;
        if (const UtilHandler handler = handlerOf(action, parsed))
            return handler(parsed, action.shortName);
        break;
    }
    report::error(QStringLiteral("Invalid command parameters"));
    return MS::kInvalidParameter;
}

const std::vector<UtilAction>& utilActions() {
    using namespace util;
    constexpr auto U = MSyntax::kUnsigned;
    constexpr auto L = MSyntax::kLong;
    constexpr auto S = MSyntax::kString;
    static const std::vector<UtilAction> table{
        {"-d", "-draw", {}, activateDraw, nullptr, nullptr},
        {"-t", "-transform", {}, activateTransform, nullptr, nullptr},
        {"-dc", "-drawColor", {U, U, U}, nullptr, setDrawColor, queryDrawColor},
        {"-pt", "-pencilTool", {}, chooseTool, nullptr, nullptr},
        {"-bt", "-brushTool", {}, chooseTool, nullptr, nullptr},
        {"-et", "-eraserTool", {}, chooseTool, nullptr, nullptr},
        {"-lt", "-lineTool", {}, chooseTool, nullptr, nullptr},
        {"-at", "-arrowTool", {}, chooseTool, nullptr, nullptr},
        {"-elt", "-ellipseTool", {}, chooseTool, nullptr, nullptr},
        {"-rt", "-rectangleTool", {}, chooseTool, nullptr, nullptr},
        {"-tt", "-textTool", {}, chooseTool, nullptr, nullptr},
        {"-po", "-pencilOptions", {U, U, U}, setToolOptions, nullptr, nullptr},
        {"-bo", "-brushOptions", {U, U, U, U}, setToolOptions, nullptr, nullptr},
        {"-eo", "-eraserOptions", {U, U, U, U}, setToolOptions, nullptr, nullptr},
        {"-txo", "-textOptions", {U, U, S}, setToolOptions, nullptr, nullptr},
        {"-lo", "-lineOptions", {U, U}, setToolOptions, nullptr, nullptr},
        {"-ao", "-arrowOptions", {U, U}, setToolOptions, nullptr, nullptr},
        {"-elo", "-ellipseOptions", {U, U}, setToolOptions, nullptr, nullptr},
        {"-ro", "-rectangleOptions", {U, U}, setToolOptions, nullptr, nullptr},
        {"-gp", "-ghostPrevious", {L}, nullptr, setGhost, queryGhost},
        {"-gn", "-ghostNext", {L}, nullptr, setGhost, queryGhost},
        {"-gpc", "-ghostPreviousCount", {U}, nullptr, setGhostCount, queryGhostCount},
        {"-gnc", "-ghostNextCount", {U}, nullptr, setGhostCount, queryGhostCount},
        {"-gco", "-ghostColorOverride", {U}, nullptr, setGhostOverride, queryGhostOverride},
        {"-gcp", "-ghostColorPrevious", {U, U, U}, nullptr, setGhostColor, queryGhostColor},
        {"-gcn", "-ghostColorNext", {U, U, U}, nullptr, setGhostColor, queryGhostColor},
        {"-tfd", "-timelineFrameDisplay", {U}, nullptr, setTimelineDisplay, queryTimelineDisplay},
        {"-rtd", "-refreshTimelineDisplay", {}, refreshTimelineDisplay, nullptr, nullptr},
        {"-fv", "-floatingViewport", {}, floatingView, nullptr, nullptr},
        {"-fvm", "-floatingViewportMove", {S}, floatingViewMove, nullptr, nullptr},
        {"-lm", "-layerManager", {}, showPanel, nullptr, nullptr},
        {"-rlm", "-refreshLayerManager", {}, refreshLayerManager, nullptr, nullptr},
        {"-tb", "-toolbox", {}, showPanel, nullptr, nullptr},
        {"-to", "-toolOptions", {}, showPanel, nullptr, nullptr},
        {"-rtb", "-refreshToolbox", {}, refreshToolbox, nullptr, nullptr},
        {"-cp", "colorPalette", {}, showPanel, nullptr, nullptr},
        {"-rtt", "retimingTool", {}, showPanel, nullptr, nullptr},
        {"-nl", "-newLayer", {}, openDialog, nullptr, nullptr},
        {"-lp", "-layerProperties", {}, openLayerProperties, nullptr, nullptr},
        {"-gs", "-ghostingSettings", {}, openDialog, nullptr, nullptr},
        {"-rvi", "-reelviewImport", {}, doNothing, nullptr, nullptr},
        {"-rui", "-resetUI", {}, resetInterface, nullptr, nullptr},
        {"-pr", "-preferences", {}, openDialog, nullptr, nullptr},
        {"-ab", "-about", {}, openDialog, nullptr, nullptr},
    };
    return table;
}

namespace util {

unsigned unsignedArgument(const MArgDatabase& args, const char* flag, unsigned index) {
    unsigned value = 0;
    args.getFlagArgument(flag, index, value);
    return value;
}

int intArgument(const MArgDatabase& args, const char* flag, unsigned index) {
    int value = 0;
    args.getFlagArgument(flag, index, value);
    return value;
}

QString stringArgument(const MArgDatabase& args, const char* flag, unsigned index) {
    MString value;
    args.getFlagArgument(flag, index, value);
    return fromMaya(value);
}

bool readColor(const MArgDatabase& args, const char* flag, QColor& color) {
    unsigned parts[3];
    for (unsigned i = 0; i < 3; ++i) {
        parts[i] = unsignedArgument(args, flag, i);
        if (parts[i] > 255) {
            report::error(QStringLiteral("Color values must be in the range of 0-255."));
            return false;
        }
    }
    color.setRgb(static_cast<int>(parts[0]), static_cast<int>(parts[1]),
                 static_cast<int>(parts[2]));
    return true;
}

void setColorResult(const QColor& color) {
    MIntArray result;
    result.append(color.red());
    result.append(color.green());
    result.append(color.blue());
    MPxCommand::setResult(result);
}

} // namespace util

} // namespace vellum
