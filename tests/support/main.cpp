// Entry of every test program: Qt set up as in the host, and an unexpected Qt warning fails the
// test it happens in.
#include <QApplication>
#include <QStringList>

#include <gtest/gtest.h>
#include <memory>

#include "support/DisplayConnection.h"

#include "ui/StartUp.h"

namespace {

QtMessageHandler previousHandler = nullptr;

// Warnings of the display platform, not of this code.
bool isExpected(const QString& text) {
    static const QStringList expected = {
        "XDG_RUNTIME_DIR",
        "This plugin does not support",
        "propagateSizeHints",
        "QXcbConnection: XCB error",
        "libGL",
        "MESA",
    };
    for (const QString& part : expected) {
        if (text.contains(part))
            return true;
    }
    return false;
}

void onQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if ((type == QtWarningMsg || type == QtCriticalMsg) && !isExpected(text))
        ADD_FAILURE() << "Qt warning: " << text.toStdString();
    if (previousHandler)
        previousHandler(type, context, text);
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    host::prepareApplication();
    auto display = std::make_unique<support::DisplayConnection>();
    QApplication application(argc, argv);
    display.reset();
    previousHandler = qInstallMessageHandler(onQtMessage);
    const int result = RUN_ALL_TESTS();
    qInstallMessageHandler(previousHandler);
    return result;
}
