#include "commands/UtilActions.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/session/ActiveNode.h"
#include "plugin/session/Panels.h"

#include <QHash>

namespace vellum::util {

namespace {

MStatus statusOf(bool done) {
    return done ? MS::kSuccess : MS::kFailure;
}

} // namespace

MStatus showPanel(const MArgDatabase&, const char* flag) {
    static const QHash<QString, Panel> byFlag{{QStringLiteral("-lm"), Panel::LayerManager},
                                              {QStringLiteral("-tb"), Panel::Toolbox},
                                              {QStringLiteral("-to"), Panel::ToolOptions},
                                              {QStringLiteral("-cp"), Panel::ColorPalette},
                                              {QStringLiteral("-rtt"), Panel::RetimingTool}};
    return statusOf(panels().show(byFlag.value(QString::fromLatin1(flag))));
}

MStatus openDialog(const MArgDatabase&, const char* flag) {
    static const QHash<QString, Dialog> byFlag{{QStringLiteral("-nl"), Dialog::NewLayer},
                                               {QStringLiteral("-gs"), Dialog::GhostingSettings},
                                               {QStringLiteral("-pr"), Dialog::Preferences},
                                               {QStringLiteral("-ab"), Dialog::About}};
    return statusOf(panels().open(byFlag.value(QString::fromLatin1(flag))));
}

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
