// The one road on which a change becomes known above: whoever changes something tells what, and one
// listener, connected by the entry, sees to all that shows it. Main thread only.
#pragma once

#include <QFlags>

#include <vector>

namespace vellum {

class LayerManager;

enum class Change : unsigned {
    // Of a drawing.
    Layers = 1U << 0,        ///< come, gone, moved, renamed, shown, (de)activated; current camera
    Frames = 1U << 1,        ///< come, gone, or at other moments
    Pixels = 1U << 2,        ///< of a frame
    Opacity = 1U << 3,       ///< of a layer
    ActiveOpacity = 1U << 4, ///< of the active layer of the current camera
    View = 1U << 5,          ///< only what a tool shows over it, or how it is shown
    Text = 1U << 18,         ///< being typed: it shows, and is in no frame yet

    // Of which drawing is the scene's.
    Drawings = 1U << 6,  ///< they may have come, gone or been read
    Stepped = 1U << 7,   ///< Maya has undone or redone a step, whoever's it was
    Selection = 1U << 8, ///< Maya's
    Time = 1U << 17,     ///< the scene's; markers follow a range that is dragged

    // Of the session.
    Tool = 1U << 9,
    Color = 1U << 10,
    ToolOptions = 1U << 11,
    Ghosting = 1U << 12,
    TimelineDisplay = 1U << 13, ///< when markers are shown
    DrawToolInUse = 1U << 14,   ///< it became, or stopped being, the current tool

    // Nothing changed, but someone wants to be sure.
    TimelineAsked = 1U << 15,
    LayersAsked = 1U << 16,
};
Q_DECLARE_FLAGS(Changes, Change)
Q_DECLARE_OPERATORS_FOR_FLAGS(Changes)

class ChangeListener {
public:
    virtual ~ChangeListener();

    /// All that was told since the last time, once; `drawings`: those it was told of, none of them
    /// twice. They may be read, not changed, from within.
    virtual void changed(Changes changes, const std::vector<LayerManager*>& drawings) = 0;
};

/// Tells the listener: at once, or at the end of the outermost group.
void tell(Changes changes, LayerManager* drawing = nullptr);

/// While one lives, changes are collected.
class ChangeGroup {
public:
    ChangeGroup();
    ~ChangeGroup();
    ChangeGroup(const ChangeGroup&) = delete;
    ChangeGroup& operator=(const ChangeGroup&) = delete;
};

/// Of a drawing that goes, nothing more is told.
void forgetChanges(const LayerManager& drawing);

/// It must live until another (or null) is connected. Not owned.
void setChangeListener(ChangeListener* listener);

} // namespace vellum
