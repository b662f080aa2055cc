// A folder of the test process's own, in which it and the programs it starts keep preferences,
// temporary files and Qt's settings: neither the user's files nor another test's are touched.
#pragma once

#include <QTemporaryDir>

namespace support {

/// Sets the environment accordingly; the folder goes when this does.
class PrivateFolders {
public:
    PrivateFolders();

private:
    QTemporaryDir folder_;
};

} // namespace support
