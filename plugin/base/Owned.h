// Text that may outlive the plug-in. A literal, and every copy that shares it, lies in the
// plug-in's own memory, which goes when it is unloaded; Qt's font cache, QSettings' cache and
// whatever else the process keeps would point there for good. What is handed to them goes through
// here, and only through here.
#pragma once

#include <QString>

namespace vellum {

/// The same text in characters of its own.
inline QString owned(const QString& text) {
    return QString(text.constData(), text.size());
}

} // namespace vellum
