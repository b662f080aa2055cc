#include "support/TestProgram.h"

#include "support/PrivateDisplay.h"
#include "support/PrivateFolders.h"
#include "ui/StartUp.h"

#include <QApplication>
#include <QStringList>

#include <gtest/gtest.h>
#include <memory>

namespace support {

namespace {

QtMessageHandler previousHandler = nullptr;

// Warnings of the display platform, not of this code.
bool isExpected(const QString& text) {
    static const QStringList expected = {
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

int runTests(int argc, char** argv, Windows windows) {
    ::testing::InitGoogleTest(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const PrivateFolders folders;
    std::unique_ptr<PrivateDisplay> display;
    if (windows == Windows::OnPrivateDisplay) {
        display = std::make_unique<PrivateDisplay>();
        if (!display->isReady())
            return 1;
    } else {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    host::prepareApplication();
    QApplication application(argc, argv);
    previousHandler = qInstallMessageHandler(onQtMessage);
    const int result = RUN_ALL_TESTS();
    qInstallMessageHandler(previousHandler);
    return result;
}

} // namespace support
