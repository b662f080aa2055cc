// Where the programs under test and the files of the checkout are.
#pragma once

#include <QString>

namespace support {

/// A file of the checkout, named from its root, e.g. "docs/commands.md".
QString sourcePath(const QString& relative);
QString hostPath();       ///< the program vellum-host
QString pluginPath();     ///< the plug-in's library
QString testPluginPath(); ///< the library the host's own tests load

} // namespace support
