#include "ui/layers/CameraMenu.h"

#include "plugin/session/Cameras.h"
#include "ui/NameText.h"

#include <QAction>
#include <QMenu>

namespace vellum {

void addCameras(QMenu& menu, const QString& title, const QString& except, QObject* receiver,
                const char* slot) {
    // The blanks make the menu wide enough to be aimed at.
    QMenu* list = menu.addMenu(title + QString(9, QLatin1Char(' ')));
    for (const QString& camera : cameraNames()) {
        if (camera == except)
            continue;
        QAction* entry = list->addAction(menuText(camera));
        entry->setData(camera);
        QObject::connect(entry, SIGNAL(triggered()), receiver, slot);
    }
}

QString chosenCamera(const QObject* sender) {
    const auto* entry = qobject_cast<const QAction*>(sender);
    return entry ? entry->data().toString() : QString();
}

} // namespace vellum
