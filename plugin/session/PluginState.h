// State of the process: everything that lives from load to unload and belongs to no node. One
// object, owned here, filled and emptied by the entry, so a second load starts clean.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include <maya/MCallbackIdArray.h>

#include <atomic>
#include <cstddef>
#include <memory>

namespace vellum {

class CameraNames;
class Panels;
class TimelineMarkers;

/// A tool that is told when the scene's time changes while it is current.
class TimeListener {
public:
    virtual ~TimeListener() = default;
    virtual void timeChanged() = 0;
};

/// A tool that may hold something unfinished: a stroke, a text being typed.
class UnfinishedWork {
public:
    virtual ~UnfinishedWork() = default;
    /// Commits it, as a step of its own. Nothing happens when there is none. A text that has
    /// nowhere to go stays where it is.
    virtual void finish() = 0;
    /// The same for a text alone: a stroke goes on as long as the button is down. False, after
    /// saying why unless that has been said of this text, when it has nowhere to go.
    virtual bool settleText() = 0;
    /// Forgets it: it goes with its scene.
    virtual void forget() = 0;
};

struct PluginState {
    bool interactive = false; ///< false in batch mode: no widget is ever made then
    bool menuSourced = false; ///< Maya knows the main menu's procedures, and there is a menu bar
    MCallbackIdArray callbackIds;
    std::size_t registered = 0; ///< entries of the entry's table that Maya knows
    int playbackJob = -1;       ///< number of the script job, -1 when there is none

    QPointer<QWidget> timeControl;       ///< Maya's time slider, cached
    TimelineMarkers* timeline = nullptr; ///< overlay over timeControl, clears this when it dies

    std::shared_ptr<CameraNames> cameraNames; ///< from load to unload

    Panels* panels = nullptr; ///< reached through panels(); not owned
    int modalDialogs = 0;     ///< of ours, open now: counted by ModalScope

    bool drawToolActive = false;              ///< the draw context is the current tool
    TimeListener* transformContext = nullptr; ///< while it is the current tool; not owned
    UnfinishedWork* unfinished = nullptr;     ///< the draw context, likewise

    QString drawContextName; ///< context made by the first activation, empty before
    QString transformContextName;

    // Written by the event filter on the main thread, read by the sampling thread.
    std::atomic<float> tabletPressure{1.0F};  ///< 0..1, 1 without a tablet
    std::atomic<bool> tabletEraser{false};    ///< the pen's eraser end is in use
    std::atomic<bool> pressureAwaited{false}; ///< a pen is down that has not told its pressure yet
};

/// The one object.
PluginState& pluginState();

/// Called by the entry only, at load and after unload: back to the initial values.
void resetPluginState();

} // namespace vellum
