// What each flag of rvVellumUtil does, in the order in which the flags are looked for.
#pragma once

#include "commands/FlagTable.h"
#include "plugin/session/Panels.h"

#include <QColor>

#include <maya/MArgDatabase.h>
#include <maya/MStatus.h>

namespace vellum {

struct ToolInfo;

using UtilHandler = MStatus (*)(const MArgDatabase& args, const char* flag);

/// A flag runs `create`, or, when it has `edit` and `query`, one of those by the mode of the call.
struct UtilAction {
    UtilHandler create = nullptr;
    UtilHandler edit = nullptr;
    UtilHandler query = nullptr;
};

const FlagTable<UtilAction>& utilFlags();

// The actions, by subject.
namespace util {

// tools, see UtilTools.cpp
MStatus activateDraw(const MArgDatabase& args, const char* flag);
MStatus activateTransform(const MArgDatabase& args, const char* flag);
MStatus chooseTool(const MArgDatabase& args, const char* flag);
MStatus setDrawColor(const MArgDatabase& args, const char* flag);
MStatus queryDrawColor(const MArgDatabase& args, const char* flag);
MStatus setToolOptions(const MArgDatabase& args, const char* flag);
/// What the tool's "...Options" flag takes.
std::vector<MSyntax::MArgType> toolOptionArguments(const ToolInfo& info);

// ghosts, time slider and views, see UtilDisplay.cpp
MStatus setGhost(const MArgDatabase& args, const char* flag);
MStatus queryGhost(const MArgDatabase& args, const char* flag);
MStatus setGhostCount(const MArgDatabase& args, const char* flag);
MStatus queryGhostCount(const MArgDatabase& args, const char* flag);
MStatus setGhostOverride(const MArgDatabase& args, const char* flag);
MStatus queryGhostOverride(const MArgDatabase& args, const char* flag);
MStatus setGhostColor(const MArgDatabase& args, const char* flag);
MStatus queryGhostColor(const MArgDatabase& args, const char* flag);
MStatus setTimelineDisplay(const MArgDatabase& args, const char* flag);
MStatus queryTimelineDisplay(const MArgDatabase& args, const char* flag);
MStatus refreshTimelineDisplay(const MArgDatabase& args, const char* flag);
MStatus floatingView(const MArgDatabase& args, const char* flag);
MStatus floatingViewMove(const MArgDatabase& args, const char* flag);

// panels and dialogs, see UtilPanels.cpp
/// In batch mode false, after saying that there is no user interface.
bool hasInterface();
template <Panel panel> MStatus showPanel(const MArgDatabase&, const char*) {
    return hasInterface() && panels().show(panel) ? MS::kSuccess : MS::kFailure;
}
template <Dialog dialog> MStatus openDialog(const MArgDatabase&, const char*) {
    return hasInterface() && panels().open(dialog) ? MS::kSuccess : MS::kFailure;
}
MStatus openLayerProperties(const MArgDatabase& args, const char* flag);
MStatus refreshLayerManager(const MArgDatabase& args, const char* flag);
MStatus refreshToolbox(const MArgDatabase& args, const char* flag);
MStatus resetInterface(const MArgDatabase& args, const char* flag);
/// Succeeds in batch mode too, where there is nothing to do.
MStatus openReelviewImport(const MArgDatabase& args, const char* flag);

/// Reads three colour components; false, after reporting, when one is above 255.
bool readColor(const MArgDatabase& args, const char* flag, QColor& color);
void setColorResult(const QColor& color);

} // namespace util

} // namespace vellum
