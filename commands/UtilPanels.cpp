#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/session/Panels.h"

namespace vellum::util {

namespace {

MStatus statusOf(bool done) {
    return done ? MS::kSuccess : MS::kFailure;
}

} // namespace

MStatus openLayerProperties(const MArgDatabase&, const char*) {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    const auto document = node->layerManager();
    const QString camera = document->currentCamera();
    const int layer = document->activeLayerIndex(camera);
    if (camera.isEmpty() || layer < 0)
        return MS::kFailure;
    return statusOf(panels().openLayerProperties(camera, layer));
}

MStatus refreshLayerManager(const MArgDatabase&, const char*) {
    tell(Change::LayersAsked);
    return MS::kSuccess;
}

MStatus refreshToolbox(const MArgDatabase&, const char*) {
    if (const auto color = panels().toolboxColor())
        script::execute(command::drawColor(*color), true);
    return MS::kSuccess;
}

MStatus resetInterface(const MArgDatabase&, const char*) {
    return statusOf(panels().resetInterface());
}

MStatus doNothing(const MArgDatabase&, const char*) {
    return MS::kSuccess;
}

} // namespace vellum::util
