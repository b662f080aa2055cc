#include "plugin/session/DrawingTarget.h"

#include "document/IntTime.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/SceneTime.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {

void reportNoLayer() {
    report::error(QStringLiteral("A layer does not exist for the current camera"));
}

void reportNoStaticFrame() {
    report::error(
        QStringLiteral("Static layer: A frame is required at or before the current time."));
}

/// Makes the camera's first layer when the preferences allow. False: the stroke is dropped.
bool provideFirstLayer(LayerManager& document, const QString& camera, DrawingTarget& target) {
    if (document.cameraLayerCount(camera) > 0)
        return true;
    if (!settings().automaticallyAddFirstLayer) {
        reportNoLayer();
        return false;
    }
    if (settings().alwaysDisplayNewLayerDialog) {
        script::execute(command::util(QStringLiteral("-newLayer")));
        return false;
    }
    return target.added.addLayer(document, 0);
}

bool requireUnlocked(const LayerManager& document, const QString& camera, int layer) {
    if (document.layerState(camera, layer) != LayerState::Locked)
        return true;
    report::error(QStringLiteral("Active layer is locked."));
    return false;
}

/// False, after reporting, when the camera's active layer refuses to be drawn on.
bool acceptsDrawing(const LayerManager& document, const QString& camera, int layer) {
    if (!requireActiveLayer(document, camera))
        return false;
    if (!document.layerVisible(camera, layer)) {
        report::error(QStringLiteral("Active layer is not visible."));
        return false;
    }
    return requireUnlocked(document, camera, layer);
}

/// False, after reporting, when the camera's active layer shows no frame now.
bool requireFrame(const LayerManager& document, const QString& camera, int layer) {
    if (document.currentFrame(camera))
        return true;
    if (document.layerState(camera, layer) == LayerState::Static)
        reportNoStaticFrame();
    else
        report::error(QStringLiteral("A frame is required at or before the current time."));
    return false;
}

/// Makes a frame where the active layer has none to draw into. False: refused and reported.
bool provideFrame(LayerManager& document, const QString& camera, int layer, DrawingTarget& target) {
    if (document.hasFrameAtCurrentTime(camera))
        return true;
    if (document.layerState(camera, layer) == LayerState::Static) {
        const int time = settings().defaultStaticFrameTime;
        if (!settings().insertDefaultStaticFrame || time > currentFrame()) {
            reportNoStaticFrame();
            return false;
        }
        target.added.addFrame(document, fromIntTime(time));
    } else {
        target.added.addFrame(document, MAnimControl::currentTime());
    }
    return true;
}

} // namespace

bool requireActiveLayer(const LayerManager& document, const QString& camera) {
    if (document.activeLayerIndex(camera) >= 0)
        return true;
    if (document.cameraLayerCount(camera) == 0)
        reportNoLayer();
    else
        report::error(QStringLiteral("An active layer does not exist."));
    return false;
}

bool requireDrawing(const LayerManager& document, const QString& camera) {
    const int layer = document.activeLayerIndex(camera);
    return acceptsDrawing(document, camera, layer) && requireFrame(document, camera, layer);
}

void reportUnfinished(LayerManager& document, const QString& camera) {
    const int layer = document.activeLayerIndex(camera);
    if (!requireActiveLayer(document, camera) || !requireUnlocked(document, camera, layer) ||
        !requireFrame(document, camera, layer))
        return;
    const bool isThere = document.currentStroke() && document.strokeCamera() == camera;
    report::error(isThere
                      ? QStringLiteral("The frames of the layer have changed since.")
                      : QStringLiteral("There is no stroke to commit for camera: %1").arg(camera));
}

DrawingTarget drawingTarget(BaseNode& node, const QString& camera) {
    DrawingTarget target{nullptr, TargetAdditions(camera)};
    const ChangeGroup group;
    const auto document = node.layerManager();
    if (camera.isEmpty() || !document || !provideFirstLayer(*document, camera, target))
        return target;
    const int layer = document->activeLayerIndex(camera);
    if (acceptsDrawing(*document, camera, layer) && provideFrame(*document, camera, layer, target))
        target.frame = document->currentFrame(camera);
    return target;
}

} // namespace vellum
