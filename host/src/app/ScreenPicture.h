#pragma once

#include <QImage>
#include <QString>

namespace host {

/// What the screen shows now of the program's windows, or of the one with this title, object or
/// class name: with all that lies over it. Null when there is no such window. Other programs'
/// windows that lie between come into the picture as well.
QImage grabScreen(const QString& window);

} // namespace host
