#include "plugin/entry/DocumentLink.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/TimeSlider.h"
#include "plugin/session/Timeline.h"
#include "tools/interaction/TimeControlOverlay.h"

#include <maya/MAnimControl.h>
#include <maya/MFileIO.h>

namespace vellum {

namespace {

BaseNode* nodeOf(const LayerManager& manager) {
    for (BaseNode* node : allNodes()) {
        if (node->layerManager().get() == &manager)
            return node;
    }
    return nullptr;
}

} // namespace

void refreshInterface(LayerManager& manager) {
    panels().refreshLayerManager(manager);
    refreshTimeline();
}

void DocumentLink::documentChanged(LayerManager& manager) {
    // While a file is read, nodes stand without their data; "SceneOpened" refreshes it all.
    if (MFileIO::isReadingFile())
        return;
    refreshInterface(manager);
    if (BaseNode* node = nodeOf(manager))
        node->drawingChanged();
}

void DocumentLink::activeLayerOpacityChanged(float) {
    panels().refreshToolOptions();
}

void DocumentLink::timelineOverlayWanted() {
    if (!pluginState().interactive || pluginState().timeline)
        return;
    if (QWidget* slider = timeControlWidget())
        pluginState().timeline = new TimeControlOverlay(slider); // the slider's child
    else
        report::error(QStringLiteral("Failed to get time control widget."));
}

bool DocumentLink::cameraExists(const QString& camera) const {
    return vellum::cameraExists(camera);
}

QString DocumentLink::currentCamera() const {
    return vellum::currentCamera();
}

bool DocumentLink::isPlaying() const {
    return MAnimControl::isPlaying();
}

} // namespace vellum
