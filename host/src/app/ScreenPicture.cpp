#include "app/ScreenPicture.h"

#include "app/Targets.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace host {

QImage grabScreen(const QString& window) {
    QRect area;
    if (window.isEmpty()) {
        for (const QWidget* each : QApplication::topLevelWidgets()) {
            if (each->isVisible() && !each->isMinimized())
                area |= each->frameGeometry();
        }
    } else {
        const QList<QWidget*> windows = windowsNamed(window);
        if (windows.size() == 1)
            area = windows.first()->frameGeometry();
    }
    QScreen* screen = QApplication::primaryScreen();
    area &= screen->geometry();
    if (area.isEmpty())
        return {};
    return screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
}

} // namespace host
