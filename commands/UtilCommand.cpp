#include "commands/UtilCommand.h"

#include "commands/UtilActions.h"
#include "plugin/base/Report.h"
#include "plugin/base/ToolTable.h"

#include <QColor>

#include <maya/MIntArray.h>

namespace vellum {

namespace {

/// Null when the flag does nothing in the mode of the call.
UtilHandler handlerOf(const FlagRow<UtilAction>& row, const MArgDatabase& args) {
    const UtilAction& action = row.action;
    UtilHandler handler = action.create;
    if (!handler && args.isEdit())
        handler = action.edit;
    else if (!handler && args.isQuery())
        handler = action.query;
    // In a query no flag has arguments.
    const bool incomplete = args.isQuery() && !row.arguments.empty();
    return incomplete && handler != action.query ? nullptr : handler;
}

} // namespace

void* UtilCommand::creator() {
    return new UtilCommand;
}

MSyntax UtilCommand::newSyntax() {
    MSyntax syntax;
    addFlags(syntax, utilFlags());
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
    const auto* row = firstFlag(utilFlags(), parsed, [](const UtilAction&) { return true; });
    const UtilHandler handler = row ? handlerOf(*row, parsed) : nullptr;
    if (!handler)
        return refuse(QStringLiteral("Invalid command parameters"), MS::kInvalidParameter);
    return handler(parsed, row->shortName);
}

namespace {

using Flags = FlagTable<UtilAction>;

constexpr auto U = MSyntax::kUnsigned;
constexpr auto L = MSyntax::kLong;
constexpr auto S = MSyntax::kString;

Flags contextFlags() {
    using namespace util;
    return {
        {"-d", "-draw", {}, {activateDraw}},
        {"-t", "-transform", {}, {activateTransform}},
        {"-dc", "-drawColor", {U, U, U}, {nullptr, setDrawColor, queryDrawColor}},
    };
}

/// Choices first, then options. Where a call has several, the choice of a typed tool counts last.
Flags toolFlags() {
    Flags flags;
    const auto addChoices = [&flags](bool typed) {
        for (const ToolInfo& info : kTools) {
            const auto [shortName, longName] = info.toolFlag;
            if ((info.kind == ToolKind::Text) == typed)
                flags.push_back({shortName, longName, {}, {util::chooseTool}});
        }
    };
    addChoices(false);
    addChoices(true);
    for (const ToolInfo& info : kTools) {
        const auto [shortName, longName] = info.optionsFlag;
        flags.push_back(
            {shortName, longName, util::toolOptionArguments(info), {util::setToolOptions}});
    }
    return flags;
}

Flags displayFlags() {
    using namespace util;
    return {
        {"-gp", "-ghostPrevious", {L}, {nullptr, setGhost, queryGhost}},
        {"-gn", "-ghostNext", {L}, {nullptr, setGhost, queryGhost}},
        {"-gpc", "-ghostPreviousCount", {U}, {nullptr, setGhostCount, queryGhostCount}},
        {"-gnc", "-ghostNextCount", {U}, {nullptr, setGhostCount, queryGhostCount}},
        {"-gco", "-ghostColorOverride", {U}, {nullptr, setGhostOverride, queryGhostOverride}},
        {"-gcp", "-ghostColorPrevious", {U, U, U}, {nullptr, setGhostColor, queryGhostColor}},
        {"-gcn", "-ghostColorNext", {U, U, U}, {nullptr, setGhostColor, queryGhostColor}},
        {"-tfd", "-timelineFrameDisplay", {U}, {nullptr, setTimelineDisplay, queryTimelineDisplay}},
        {"-rtd", "-refreshTimelineDisplay", {}, {refreshTimelineDisplay}},
        {"-fv", "-floatingViewport", {}, {floatingView}},
        {"-fvm", "-floatingViewportMove", {S}, {floatingViewMove}},
    };
}

Flags panelFlags() {
    using namespace util;
    return {
        {"-lm", "-layerManager", {}, {showPanel<Panel::LayerManager>}},
        {"-rlm", "-refreshLayerManager", {}, {refreshLayerManager}},
        {"-tb", "-toolbox", {}, {showPanel<Panel::Toolbox>}},
        {"-to", "-toolOptions", {}, {showPanel<Panel::ToolOptions>}},
        {"-rtb", "-refreshToolbox", {}, {refreshToolbox}},
        {"-cp", "colorPalette", {}, {showPanel<Panel::ColorPalette>}},
        {"-rtt", "retimingTool", {}, {showPanel<Panel::RetimingTool>}},
        {"-nl", "-newLayer", {}, {openDialog<Dialog::NewLayer>}},
        {"-lp", "-layerProperties", {}, {openLayerProperties}},
        {"-gs", "-ghostingSettings", {}, {openDialog<Dialog::GhostingSettings>}},
        {"-rvi", "-reelviewImport", {}, {openReelviewImport}},
        {"-rui", "-resetUI", {}, {resetInterface}},
        {"-pr", "-preferences", {}, {openDialog<Dialog::Preferences>}},
        {"-ab", "-about", {}, {openDialog<Dialog::About>}},
    };
}

Flags allFlags() {
    Flags all;
    for (const Flags& part : {contextFlags(), toolFlags(), displayFlags(), panelFlags()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace

const FlagTable<UtilAction>& utilFlags() {
    static const Flags table = allFlags();
    return table;
}

namespace util {

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
