#include "plugin/session/SceneTime.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/Timeline.h"

#include <QStringList>

#include <maya/MAnimControl.h>

#include <memory>
#include <set>

namespace vellum {

namespace {

std::vector<BaseNode*> handTimeOn(Changes before) {
    std::vector<BaseNode*> nodes = allNodes();
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
    return nodes;
}

/// The numbers that several frames of the layer share; `hidden`: how many frames cannot be reached
/// by their number.
QStringList sharedNumbers(const Layer& layer, int& hidden) {
    QStringList shared;
    hidden = 0;
    for (int i = 1; i < layer.frameCount(); ++i) {
        const int number = toIntTime(layer.frameAt(i)->time());
        if (number != toIntTime(layer.frameAt(i - 1)->time()))
            continue;
        ++hidden;
        const QString text = QString::number(number);
        if (shared.isEmpty() || shared.last() != text)
            shared.append(text);
    }
    return shared;
}

void warnOf(const Layer& layer, const QString& camera) {
    constexpr int longest = 10;
    int hidden = 0;
    QStringList shared = sharedNumbers(layer, hidden);
    if (shared.isEmpty())
        return;
    const bool isLong = shared.size() > longest;
    if (isLong)
        shared = shared.mid(0, longest);
    report::warning(QString::fromLatin1("Layer ") + layer.name() + QString::fromLatin1(" of ") +
                    camera + QString::fromLatin1(": in this time unit ") + QString::number(hidden) +
                    QString::fromLatin1(" of its frames share a number with another one (") +
                    shared.join(QString::fromLatin1(", ")) +
                    QString::fromLatin1(isLong ? ", ...)." : ")."));
}

void warnOf(const std::vector<BaseNode*>& nodes) {
    std::set<const LayerManager*> seen; // nodes may share a document
    for (const BaseNode* node : nodes) {
        const auto document = node->layerManager();
        if (!document || !seen.insert(document.get()).second)
            continue;
        for (const QString& camera : document->cameras()) {
            for (int i = 0; i < document->cameraLayerCount(camera); ++i)
                warnOf(*document->layer(camera, i), camera);
        }
    }
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

void timeUnitChanged() {
    if (TimelineMarkers* timeline = pluginState().timeline)
        timeline->timeChanged();
    const std::vector<BaseNode*> nodes = handTimeOn({});
    tell(Change::Time);
    warnOf(nodes);
}

void warnOfCoincidingFrames() {
    warnOf(allNodes());
}

} // namespace vellum
