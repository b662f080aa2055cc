#include "plugin/session/SceneEnvironment.h"

#include "plugin/session/Cameras.h"

namespace vellum {

bool SceneEnvironment::cameraExists(const QString& camera) const {
    return vellum::cameraExists(camera);
}

QString SceneEnvironment::currentCamera() const {
    return vellum::currentCamera();
}

} // namespace vellum
