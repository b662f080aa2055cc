#include "plugin/entry/SceneEvents.h"

#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
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
#include <maya/MMessage.h>
#include <maya/MNodeMessage.h>
#include <maya/MObject.h>
#include <maya/MSceneMessage.h>
#include <maya/MString.h>

#include <memory>

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

void onImported(void*) {
    if (const auto names = pluginState().cameraNames)
        names->imported();
    drawingsChanged(Change::Drawings);
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
    // The overlay is a child of Maya's time slider and would survive with it.
    delete pluginState().timeline;
    pluginState().timeline = nullptr;
    panels().closeAll();
    saveSettings();
}

} // namespace vellum
