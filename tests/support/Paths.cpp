#include "support/Paths.h"

// Only this source is compiled with the paths of the checkout and of its build folder, so that the
// others compile to the same in every checkout.

namespace support {

QString sourcePath(const QString& relative) {
    return QStringLiteral(VELLUM_SOURCE_DIR "/") + relative;
}

QString hostPath() {
    return QStringLiteral(VELLUM_HOST_PATH);
}

QString pluginPath() {
    return QStringLiteral(VELLUM_PLUGIN_PATH);
}

QString testPluginPath() {
    return QStringLiteral(TEST_PLUGIN_PATH);
}

} // namespace support
