// The sub-menus that send layers to another camera.
#pragma once

class QMenu;
class QObject;
class QString;

namespace vellum {

/// Adds a sub-menu of all cameras of the scene but one. Choosing one calls the slot, which asks
/// chosenCamera() for it.
void addCameras(QMenu& menu, const QString& title, const QString& except, QObject* receiver,
                const char* slot);

/// What the sender of a signal stands for; empty when it is no entry of such a sub-menu.
QString chosenCamera(const QObject* sender);

} // namespace vellum
