#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"

#include <QLatin1String>

#include <maya/MPxCommand.h>

#include <algorithm>

namespace vellum::util {

namespace {

bool is(const char* flag, const char* name) {
    return QLatin1String(flag) == QLatin1String(name);
}

bool& ghostSwitch(const char* flag) {
    return is(flag, "-gp") ? settings().ghostPrev : settings().ghostNext;
}

int& ghostCount(const char* flag) {
    return is(flag, "-gpc") ? settings().ghostPrevCount : settings().ghostNextCount;
}

QColor& ghostColor(const char* flag) {
    return is(flag, "-gcp") ? settings().ghostColorOverridePrev : settings().ghostColorOverrideNext;
}

MStatus ghostsChanged() {
    const BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    if (document)
        document->markCameraModified(document->currentCamera());
    tell(Change::Ghosting, document.get());
    return MS::kSuccess;
}

/// Undoable though this command is not: layers that were moved could never be brought back, and
/// nothing done to them before could be undone.
MStatus openFloatingView(const QString& sourceCamera) {
    if (!hasInterface()) // before a camera is made for a view that cannot be had
        return MS::kFailure;
    return script::execute(command::createFloatingView(sourceCamera), false, true) ? MS::kSuccess
                                                                                   : MS::kFailure;
}

} // namespace

MStatus setGhost(const MArgDatabase& args, const char* flag) {
    const int value = intArgument(args, flag, 0);
    bool& ghost = ghostSwitch(flag);
    ghost = value < 0 ? !ghost : value > 0;
    return ghostsChanged();
}

MStatus queryGhost(const MArgDatabase&, const char* flag) {
    MPxCommand::setResult(ghostSwitch(flag) ? 1 : 0);
    return MS::kSuccess;
}

MStatus setGhostCount(const MArgDatabase& args, const char* flag) {
    ghostCount(flag) = static_cast<int>(std::clamp(unsignedArgument(args, flag, 0), 1U, 9U));
    return ghostsChanged();
}

MStatus queryGhostCount(const MArgDatabase&, const char* flag) {
    MPxCommand::setResult(ghostCount(flag));
    return MS::kSuccess;
}

MStatus setGhostOverride(const MArgDatabase& args, const char* flag) {
    settings().ghostColorOverride = unsignedArgument(args, flag, 0) != 0;
    return ghostsChanged();
}

MStatus queryGhostOverride(const MArgDatabase&, const char*) {
    MPxCommand::setResult(settings().ghostColorOverride);
    return MS::kSuccess;
}

MStatus setGhostColor(const MArgDatabase& args, const char* flag) {
    QColor color;
    if (!readColor(args, flag, color))
        return MS::kFailure;
    ghostColor(flag) = color;
    return ghostsChanged();
}

MStatus queryGhostColor(const MArgDatabase&, const char* flag) {
    setColorResult(ghostColor(flag));
    return MS::kSuccess;
}

MStatus setTimelineDisplay(const MArgDatabase& args, const char* flag) {
    const unsigned mode = unsignedArgument(args, flag, 0);
    if (mode >= kTimelineDisplayCount) {
        report::error(QStringLiteral("Invalid timeline frame display option."));
        return MS::kFailure;
    }
    settings().timelineFrameDisplay = static_cast<TimelineDisplay>(mode);
    tell(Change::TimelineDisplay);
    return MS::kSuccess;
}

MStatus queryTimelineDisplay(const MArgDatabase&, const char*) {
    MPxCommand::setResult(numberOf(settings().timelineFrameDisplay));
    return MS::kSuccess;
}

MStatus refreshTimelineDisplay(const MArgDatabase&, const char*) {
    tell(Change::TimelineAsked);
    return MS::kSuccess;
}

MStatus floatingView(const MArgDatabase&, const char*) {
    return openFloatingView(QString());
}

MStatus floatingViewMove(const MArgDatabase& args, const char* flag) {
    const QString name = stringArgument(args, flag, 0);
    QStringList cameras = cameraNames();
    if (!name.isEmpty())
        return openFloatingView(cameras.contains(name) ? name : QString());
    const BaseNode* node = activeNode();
    if (!node)
        return openFloatingView(QString());
    cameras.removeAll(QString::fromLatin1(kFloatingCamera)); // its layers are there already
    const auto chosen = panels().chooseCamera(cameras, node->layerManager()->currentCamera());
    if (!chosen || chosen->isEmpty())
        return MS::kSuccess;
    return openFloatingView(*chosen);
}

} // namespace vellum::util
