// Cameras of the scene, as far as the document has to do with them. Main thread only.
#pragma once

#include <QString>

namespace vellum {

/// Whether the scene has a camera whose transform has this name; when not, the user is told.
bool requireSceneCamera(const QString& camera);

} // namespace vellum
