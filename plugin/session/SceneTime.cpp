#include "plugin/session/SceneTime.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/Timeline.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {

void updateNodeTime(BaseNode& node, int frame) {
    PluginState& state = pluginState();
    bool markersRefreshed = false;
    if (state.timeline) {
        state.timeline->timeChanged();
        if (state.timeline->areMarkersVisible()) {
            refreshTimeline();
            markersRefreshed = state.timeline->areMarkersVisible();
        }
    }
    // Refreshing the markers has brought the active layer up to date, of the active node only.
    if (const auto document = node.layerManager())
        document->timeChanged(frame, markersRefreshed && &node == activeNode());
    if (state.transformContext && !MAnimControl::isPlaying())
        state.transformContext->timeChanged();
}

} // namespace

int currentFrame() {
    return currentIntTime();
}

void propagateCurrentTime() {
    const int frame = currentFrame();
    for (BaseNode* node : allNodes())
        updateNodeTime(*node, frame);
}

} // namespace vellum
