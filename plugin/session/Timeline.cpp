#include "plugin/session/Timeline.h"

#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/Settings.h"
#include "plugin/session/ActiveNode.h"
#include "plugin/session/PluginState.h"

#include <algorithm>
#include <limits>

namespace vellum {

namespace {

enum DisplayMode { Always = 0, WhileInUse = 1, Never = 2 };

bool wantsMarkers() {
    switch (settings().timelineFrameDisplay) {
    case Never:
        return false;
    case WhileInUse:
        return pluginState().drawToolActive || selectedNode();
    default:
        return true;
    }
}

/// The move itself is refused where it would leave the frame numbers.
int shifted(int time, int offset) {
    using Limit = std::numeric_limits<int>;
    const qint64 target = static_cast<qint64>(time) + offset;
    return static_cast<int>(std::clamp<qint64>(target, Limit::min(), Limit::max()));
}

} // namespace

void refreshTimeline(LayerManager* drawing) {
    TimelineMarkers* timeline = pluginState().timeline;
    if (!timeline)
        return;
    if (!drawing || !wantsMarkers()) {
        timeline->setMarkersVisible(false);
        return;
    }
    QList<int> times;
    drawing->collectFrameTimes(drawing->currentCamera(), times);
    const auto move = timeline->rangeMove();
    if (move && move->offset != 0) {
        for (int& time : times) {
            if (time >= move->start && time <= move->end)
                time = shifted(time, move->offset);
        }
    }
    timeline->setFrameTimes(times);
    timeline->setMarkersVisible(true);
}

void setDrawToolActive(bool active) {
    PluginState& state = pluginState();
    if (state.drawToolActive == active)
        return;
    state.drawToolActive = active;
    // A drag that ends here leaves the markers where it had taken them.
    const bool dragging = state.timeline && state.timeline->rangeMove();
    if (state.timeline)
        state.timeline->setEnabled(active);
    if (dragging || settings().timelineFrameDisplay == WhileInUse)
        tell(Change::DrawToolInUse);
}

} // namespace vellum
