#include "support/Session.h"

#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "support/Paths.h"
#include "ui/MainWindow.h"
#include "ui/StartUp.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>

namespace vellum::test {

namespace {

MString toMaya(const QString& text) {
    MString result;
    result.setUTF8(text.toUtf8().constData());
    return result;
}

} // namespace

HostSession::HostSession() {
    qputenv("MAYA_APP_DIR", preferences_.path().toUtf8());
    host::startUp();
    window = std::make_unique<host::MainWindow>();
    window->resize(800, 600);
    window->show();
    listener_ = host::report::addListener([this](host::report::Level level, const std::string& t) {
        if (level == host::report::Level::Error)
            errors.append(QString::fromStdString(t));
        else if (level == host::report::Level::Warning)
            warnings.append(QString::fromStdString(t));
    });
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
}

HostSession::~HostSession() {
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drain();
    host::report::removeListener(listener_);
    window.reset();
}

::testing::AssertionResult HostSession::run(const QString& script) {
    const bool done = MGlobal::executeCommand(toMaya(script), false, true) == MS::kSuccess;
    return (done ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
           << script.toStdString() << "\nsaid: " << allErrors().toStdString();
}

int HostSession::number(const QString& script) {
    int result = 0;
    return MGlobal::executeCommand(toMaya(script), result) == MS::kSuccess ? result : -12345;
}

QString HostSession::text(const QString& script) {
    MString result;
    return MGlobal::executeCommand(toMaya(script), result) == MS::kSuccess
               ? QString::fromUtf8(result.asUTF8())
               : QStringLiteral("<no text>");
}

void HostSession::refuses(const QString& script, const QString& error) {
    errors.clear();
    EXPECT_FALSE(run(script)) << script.toStdString();
    EXPECT_TRUE(errors.contains(error))
        << script.toStdString() << " said: " << allErrors().toStdString();
}

QString HostSession::allErrors() const {
    return errors.join(QStringLiteral(" | "));
}

void Session::SetUp() {
    loadPlugin();
}

void Session::TearDown() {
    host::idle::drainAll(); // what was deferred belongs to the scene that goes
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drain();
    unloadPlugin();
}

void Session::loadPlugin() {
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("loadPlugin \"%1\"").arg(support::pluginPath())));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

void Session::unloadPlugin() {
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("unloadPlugin vellum2")));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace vellum::test
