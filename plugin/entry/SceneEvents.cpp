#include "plugin/entry/SceneEvents.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "plugin/entry/DocumentLink.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneTime.h"
#include "plugin/session/Timeline.h"

#include <maya/M3dView.h>
#include <maya/MEventMessage.h>
#include <maya/MFileIO.h>
#include <maya/MMessage.h>

namespace vellum {

namespace {

void refreshLayerManager() {
    if (BaseNode* node = activeNode()) {
        refreshInterface(*node->layerManager());
        M3dView::scheduleRefreshAllViews();
    } else {
        panels().clearLayerManager();
    }
}

/// While a file is read, nodes stand without their data; "SceneOpened" makes up for what is missed.
bool isReading() {
    return MFileIO::isReadingFile();
}

void onSelectionChanged(void*) {
    if (isReading())
        return;
    refreshTimeline();
    if (!activeNode())
        panels().clearLayerManager();
}

void onTimeChanged(void*) {
    if (!isReading())
        propagateCurrentTime();
}

// The moment stays, but other frames may share its number now.
void onTimeUnitChanged(void*) {
    if (isReading())
        return;
    propagateCurrentTime();
    refreshTimeline();
}

void onSceneOpened(void*) {
    propagateCurrentTime();
    refreshTimeline();
    refreshLayerManager();
}

void onNewScene(void*) {
    refreshTimeline();
    refreshLayerManager();
}

void onQuit(void*) {
    tearDownInterface();
}

// A drawing that comes back may have been away while time went on.
void onUndoOrRedo(void*) {
    propagateCurrentTime();
    refreshTimeline();
    refreshLayerManager();
}

struct Event {
    const char* name;
    MMessage::MBasicFunction handler;
};

constexpr Event kEvents[] = {
    {"SelectionChanged", onSelectionChanged},
    {"timeChanged", onTimeChanged},
    {"timeUnitChanged", onTimeUnitChanged},
    {"SceneOpened", onSceneOpened},
    {"quitApplication", onQuit},
    {"Undo", onUndoOrRedo},
    {"Redo", onUndoOrRedo},
    // Drawings go with their scene and come with an import, and Maya may tell so by no other event.
    {"NewSceneOpened", onNewScene},
    {"SceneImported", onSceneOpened},
};

} // namespace

void installSceneEvents() {
    for (const Event& event : kEvents) {
        MStatus status;
        const MCallbackId id =
            MEventMessage::addEventCallback(event.name, event.handler, nullptr, &status);
        if (status == MS::kSuccess)
            pluginState().callbackIds.append(id);
    }
}

MStatus removeSceneEvents() {
    const MStatus status = MMessage::removeCallbacks(pluginState().callbackIds);
    if (status == MS::kSuccess)
        pluginState().callbackIds.clear();
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
