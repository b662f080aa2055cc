#include "plugin/session/SceneEnvironment.h"

#include "plugin/session/CameraNames.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/PluginState.h"

namespace vellum {

bool SceneEnvironment::cameraExists(const QString& camera) const {
    return vellum::cameraExists(camera);
}

QString SceneEnvironment::currentCamera() const {
    return vellum::currentCamera();
}

void SceneEnvironment::settleCameraNames() {
    // Held while it works: who it tells may unload the plug-in.
    if (const auto names = pluginState().cameraNames)
        names->settle();
}

} // namespace vellum
