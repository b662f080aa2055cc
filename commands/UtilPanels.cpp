#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"

namespace vellum::util {

namespace {

MStatus statusOf(bool done) {
    return done ? MS::kSuccess : MS::kFailure;
}

} // namespace

bool hasInterface() {
    if (pluginState().interactive)
        return true;
    report::error(QStringLiteral("There is no user interface in batch mode."));
    return false;
}

MStatus openLayerProperties(const MArgDatabase&, const char*) {
    if (!hasInterface())
        return MS::kFailure;
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
    return statusOf(hasInterface() && panels().resetInterface());
}

MStatus openReelviewImport(const MArgDatabase&, const char*) {
    if (pluginState().interactive)
        panels().open(Dialog::ReelviewImport);
    return MS::kSuccess;
}

} // namespace vellum::util
