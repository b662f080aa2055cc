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

void handTimeOn(Changes before) {
    const std::vector<BaseNode*> nodes = allNodes();
    const BaseNode* active = activeAmong(nodes);
    if (before)
        tell(before);
    const int frame = currentFrame();
    for (const BaseNode* node : nodes) {
        // The markers have brought the active layer up to date, where there are any.
        if (const auto document = node->layerManager())
            document->timeChanged(frame, node == active);
    }
    PluginState& state = pluginState();
    if (!nodes.empty() && state.transformContext && !MAnimControl::isPlaying())
        state.transformContext->timeChanged();
}

} // namespace

int currentFrame() {
    return currentIntTime();
}

void propagateCurrentTime() {
    TimelineMarkers* timeline = pluginState().timeline;
    if (timeline)
        timeline->timeChanged();
    handTimeOn(timeline && timeline->areMarkersVisible() ? Change::Time : Changes());
}

void drawingsChanged(Change happened) {
    if (TimelineMarkers* timeline = pluginState().timeline)
        timeline->timeChanged();
    handTimeOn({});
    tell(happened);
}

} // namespace vellum
