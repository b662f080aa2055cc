// The scene's cameras, by the name of their transform. Main thread only.
#pragma once

#include <QString>
#include <QStringList>

namespace vellum {

/// Camera of the active 3D view; empty when there is no such view.
QString currentCamera();

/// True when `name` is the transform name of a camera in the scene.
bool cameraExists(const QString& name);

/// Transform names of all cameras, in the order Maya iterates them.
QStringList cameraNames();

} // namespace vellum
