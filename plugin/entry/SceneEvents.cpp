#include "plugin/entry/SceneEvents.h"

#include "document/Changes.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "plugin/entry/NodeWatch.h"
#include "plugin/entry/SaveGuard.h"
#include "plugin/session/CameraNames.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneTime.h"
#include "plugin/session/Timeline.h"

#include <maya/MEventMessage.h>
#include <maya/MFileIO.h>
#include <maya/MFnDagNode.h>
#include <maya/MMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MObject.h>
#include <maya/MSceneMessage.h>
#include <maya/MString.h>

#include <memory>
#include <vector>

namespace vellum {

namespace {

/// While a file is read, nodes stand without their data; "SceneOpened" makes up for what is missed.
bool isReading() {
    return MFileIO::isReadingFile();
}

void onSelectionChanged(void*) {
    tell(Change::Selection);
}

void onTimeChanged(void*) {
    if (!isReading())
        propagateCurrentTime();
}

// The moment stays, but other frames may share its number now.
void onTimeUnitChanged(void*) {
    if (!isReading())
        timeUnitChanged();
}

/// Another scene: those of its cameras have the names that its drawings know.
void onNewScene(void*) {
    pluginState().cameraNames = std::make_shared<CameraNames>();
    drawingsChanged(Change::Drawings);
}

/// Of several drawings only one is drawn on, and nothing in the view tells which.
void sayWhichIsDrawnOn() {
    const std::vector<BaseNode*> nodes = allNodes();
    const BaseNode* active = activeAmong(nodes);
    if (nodes.size() < 2 || !active)
        return;
    const MString name = MFnDagNode(active->thisMObject()).partialPathName();
    report::warning(QString::fromLatin1("The scene has ") + QString::number(nodes.size()) +
                    QString::fromLatin1(" drawings now. The one that is drawn on is ") +
                    fromMaya(name) + QLatin1Char('.'));
}

void onImported(void*) {
    const auto names = pluginState().cameraNames;
    const bool broughtDrawings = names && names->imported() > 0;
    drawingsChanged(Change::Drawings);
    if (broughtDrawings) {
        sayWhichIsDrawnOn();
        warnOfCoincidingFrames();
    }
}

void onNameChanged(MObject& node, const MString& before, void*) {
    if (const auto names = pluginState().cameraNames)
        names->nodeRenamed(node, fromMaya(before));
}

void onNamespaceRenamed(const MString&, const MString&, void*) {
    if (const auto names = pluginState().cameraNames)
        names->namesMoved();
}

void onQuit(void*) {
    tearDownInterface();
}

void onUndoOrRedo(void*) {
    if (const auto names = pluginState().cameraNames)
        names->look();
    drawingsChanged(Change::Stepped);
}

/// The file would lack the text, and nothing would ask to save it any more.
void beforeSaveCheck(bool* allowed, void*) {
    UnfinishedWork* work = pluginState().unfinished;
    *allowed = !work || work->settleText();
    if (!*allowed)
        report::error(
            QStringLiteral("Scene not saved: the text that is being typed cannot be committed."));
}

/// Never refused: what saves a scene now and then, or copies nodes, is told in this way.
void beforeExportCheck(bool* allowed, void*) {
    *allowed = true;
    UnfinishedWork* work = pluginState().unfinished;
    if (work && !work->settleText())
        report::warning(QStringLiteral(
            "Exported without the text that is being typed: it cannot be committed."));
}

void forgetUnfinished(void*) {
    if (UnfinishedWork* work = pluginState().unfinished)
        work->forget();
}

struct Check {
    MSceneMessage::Message message;
    MMessage::MCheckFunction handler;
};

constexpr Check kChecks[] = {
    {MSceneMessage::kBeforeSaveCheck, beforeSaveCheck},
    {MSceneMessage::kBeforeExportCheck, beforeExportCheck},
};

constexpr MSceneMessage::Message kSceneGoes[] = {
    MSceneMessage::kBeforeNew,
    MSceneMessage::kAfterNew,
    MSceneMessage::kBeforeOpen,
};

/// What is typed or drawn is in the scene before that is written, and goes with it.
void installUnfinishedEvents(MCallbackIdArray& ids) {
    MStatus status;
    const auto keep = [&](MCallbackId id) {
        if (status == MS::kSuccess)
            ids.append(id);
    };
    for (const Check& check : kChecks)
        keep(MSceneMessage::addCheckCallback(check.message, check.handler, nullptr, &status));
    for (const MSceneMessage::Message message : kSceneGoes)
        keep(MSceneMessage::addCallback(message, forgetUnfinished, nullptr, &status));
}

struct Event {
    const char* name;
    MMessage::MBasicFunction handler;
};

constexpr Event kEvents[] = {
    {"SelectionChanged", onSelectionChanged},
    {"timeChanged", onTimeChanged},
    {"timeUnitChanged", onTimeUnitChanged},
    {"SceneOpened", onNewScene},
    {"quitApplication", onQuit},
    {"Undo", onUndoOrRedo},
    {"Redo", onUndoOrRedo},
    // Drawings go with their scene and come with an import, and Maya may tell so by no other event.
    {"NewSceneOpened", onNewScene},
    {"SceneImported", onImported},
};

} // namespace

void installSceneEvents() {
    pluginState().cameraNames = std::make_shared<CameraNames>();
    MObject everyNode;
    for (const MCallbackId id : {MNodeMessage::addNameChangedCallback(everyNode, onNameChanged),
                                 MSceneMessage::addNamespaceRenamedCallback(onNamespaceRenamed)})
        pluginState().callbackIds.append(id);
    for (const Event& event : kEvents) {
        MStatus status;
        const MCallbackId id =
            MEventMessage::addEventCallback(event.name, event.handler, nullptr, &status);
        if (status == MS::kSuccess)
            pluginState().callbackIds.append(id);
    }
    installNodeWatch(pluginState().callbackIds);
    installUnfinishedEvents(pluginState().callbackIds);
    installSaveGuard(pluginState().callbackIds);
}

MStatus removeSceneEvents() {
    const MStatus status = MMessage::removeCallbacks(pluginState().callbackIds);
    if (status == MS::kSuccess) {
        pluginState().callbackIds.clear();
        removeNodeWatch();
    }
    return status;
}

void tearDownInterface() {
    panels().cancelDialog(); // what it shows for trial is not to be saved
    // The overlay is a child of Maya's time slider and would survive with it.
    delete pluginState().timeline;
    pluginState().timeline = nullptr;
    panels().closeAll();
    saveSettings();
}

} // namespace vellum
