#include "support/PrivateFolders.h"

#include <QDir>

namespace support {

PrivateFolders::PrivateFolders() {
    const QDir root(folder_.path());
    const struct {
        const char* variable;
        const char* folder;
    } folders[] = {
        {"TMPDIR", "tmp"},
        {"MAYA_APP_DIR", "maya"},
        {"XDG_CONFIG_HOME", "config"},
        {"XDG_RUNTIME_DIR", "runtime"},
    };
    for (const auto& [variable, folder] : folders) {
        root.mkdir(folder);
        qputenv(variable, QFile::encodeName(root.filePath(folder)));
    }
    QFile::setPermissions(root.filePath("runtime"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace support
