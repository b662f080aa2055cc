// The program's end with panels, menus and dialogs open.
#include "support/HostProgram.h"
#include "support/Paths.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vellum::test {
namespace {

// Freed memory is overwritten in these, so that whoever still uses it is found out.
TEST(Quitting, EndsWellAfterAnyMenuAndUnderAnyDialog) {
    const char* const palette = "0.3 command rvVellumUtil -cp\n"
                                "0.5 click right on \"ColorPaletteDialog\" at 5 5\n";
    const char* const toolbox = "0.3 command rvVellumUtil -tb\n"
                                "0.5 click right on \"Ghost Next\"\n";
    const char* const reset = "1.0 command evalDeferred \"rvVellumUtil -rui\"\n"
                              "1.2 click left on \"Yes\" in \"Reset UI\"\n"
                              "1.4 click left on \"Cancel\"\n";
    const QByteArray sessions[] = {
        QByteArray(palette) + "0.7 key Escape\n",
        QByteArray(palette) + "0.7 click left on \"Customize...\"\n",
        QByteArray(palette) + "0.7 click left on \"Customize...\"\n" + reset,
        QByteArray(toolbox) + "0.7 click left on \"Settings...\"\n",
        QByteArray(toolbox) + "0.7 click left on \"Settings...\"\n" + reset,
    };
    for (const QByteArray& session : sessions) {
        SCOPED_TRACE(session.toStdString());
        QTemporaryDir directory;
        QFile file(directory.filePath(QStringLiteral("quit.session")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("vellum-session 1\nspace window\n" + session +
                   "2.0 command evalDeferred \"quit -force\"\n");
        file.close();
        support::HostProgram program({QStringLiteral("--plugin"), support::pluginPath(),
                                      QStringLiteral("--replay"), file.fileName()},
                                     {},
                                     {QStringLiteral("MAYA_APP_DIR"), directory.path(),
                                      QStringLiteral("MALLOC_PERTURB_"), QStringLiteral("165")});
        const support::Outcome outcome = program.outcome();
        EXPECT_EQ(outcome.code, 0) << outcome.err;
    }
}

} // namespace
} // namespace vellum::test
