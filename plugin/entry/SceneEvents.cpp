#include "plugin/entry/SceneEvents.h"

#include "document/Changes.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "plugin/entry/SaveGuard.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneTime.h"
#include "plugin/session/Timeline.h"

#include <maya/MEventMessage.h>
#include <maya/MFileIO.h>
#include <maya/MMessage.h>

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
        drawingsChanged(Change::Time);
}

void onDrawingsChanged(void*) {
    drawingsChanged(Change::Drawings);
}

void onQuit(void*) {
    tearDownInterface();
}

void onUndoOrRedo(void*) {
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
    {"SceneOpened", onDrawingsChanged},
    {"quitApplication", onQuit},
    {"Undo", onUndoOrRedo},
    {"Redo", onUndoOrRedo},
    // Drawings go with their scene and come with an import, and Maya may tell so by no other event.
    {"NewSceneOpened", onDrawingsChanged},
    {"SceneImported", onDrawingsChanged},
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
    installSaveGuard(pluginState().callbackIds);
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
