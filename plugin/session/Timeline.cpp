#include "plugin/session/Timeline.h"

#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneNodes.h"

#include <algorithm>
#include <limits>

namespace vellum {

namespace {

bool wantsMarkers() {
    switch (settings().timelineFrameDisplay) {
    case TimelineDisplay::Always:
        break;
    case TimelineDisplay::WhileInUse:
        return pluginState().drawToolActive || selectedNode();
    case TimelineDisplay::Never:
        return false;
    }
    return true;
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
            if (time >= move->start && time < move->end)
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
    if (dragging || settings().timelineFrameDisplay == TimelineDisplay::WhileInUse)
        tell(Change::DrawToolInUse);
}

} // namespace vellum
