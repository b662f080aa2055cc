#include "document/SceneCamera.h"

#include "document/DocumentEnvironment.h"
#include "plugin/base/Report.h"

namespace vellum {

bool requireSceneCamera(const QString& camera) {
    const bool exists = documentEnvironment().cameraExists(camera);
    if (!exists)
        report::error(QStringLiteral("Camera does not exist: %1").arg(camera));
    return exists;
}

} // namespace vellum
