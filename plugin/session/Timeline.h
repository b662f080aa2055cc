// Frame markers on Maya's time slider, as the rest of the plug-in drives them. Main thread only.
#pragma once

#include <QList>

#include <optional>
#include <utility>

namespace vellum {

class LayerManager;

/// The overlay over the time slider, seen from below. The widget itself is made higher up and
/// stands in PluginState while it lives.
class TimelineMarkers {
public:
    virtual ~TimelineMarkers() = default;

    virtual void setFrameTimes(const QList<int>& times) = 0; ///< whole frames, duplicates allowed
    virtual void setMarkersVisible(bool visible) = 0;
    virtual bool areMarkersVisible() const = 0;
    virtual void setEnabled(bool enabled) = 0; ///< the draw tool became or stopped being current
    virtual void timeChanged() = 0;

    /// Frames by which the dragged range has moved so far, and that range as it was, [start, end);
    /// empty when no range is being moved.
    struct RangeMove {
        int offset = 0;
        double start = 0.0;
        double end = 0.0;
    };
    virtual std::optional<RangeMove> rangeMove() const = 0;
};

/// Shows the frames of the active layer of a drawing's current camera, or hides the markers, as the
/// display mode asks; without a drawing they are hidden. Does nothing without an overlay.
void refreshTimeline(LayerManager* drawing);

/// Called by the draw tool when it becomes and stops being current.
void setDrawToolActive(bool active);

} // namespace vellum
