#include "document/SceneCamera.h"

#include "document/DocumentObserver.h"
#include "plugin/base/Report.h"

namespace vellum {

bool requireSceneCamera(const QString& camera) {
    const bool exists = documentObserver().cameraExists(camera);
    if (!exists)
        report::error(QStringLiteral("Camera does not exist: %1").arg(camera));
    return exists;
}

} // namespace vellum
