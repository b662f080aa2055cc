#include "plugin/Session.h"

#include "plugin/leaves/CommandStrings.h"
#include "plugin/leaves/Script.h"

#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "ui/MainWindow.h"
#include "ui/StartUp.h"

namespace vellum::test {

HostSession::HostSession() {
    qputenv("MAYA_APP_DIR", preferences_.path().toUtf8());
    host::startUp();
    window = std::make_unique<host::MainWindow>();
    window->resize(800, 600);
    window->show();
    listener_ = host::report::addListener([this](host::report::Level level, const std::string& t) {
        if (level == host::report::Level::Error)
            errors.append(QString::fromStdString(t));
    });
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
}

HostSession::~HostSession() {
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drain();
    host::report::removeListener(listener_);
    window.reset();
}

bool HostSession::run(const QString& script) {
    return script::execute(script, false, true);
}

int HostSession::number(const QString& script) {
    return script::executeInt(script).value_or(-12345);
}

QString HostSession::text(const QString& script) {
    return script::executeString(script).value_or(QStringLiteral("<no text>"));
}

void HostSession::refuses(const QString& script, const QString& error) {
    errors.clear();
    EXPECT_FALSE(run(script)) << script.toStdString();
    EXPECT_TRUE(errors.contains(error))
        << script.toStdString() << " said: " << errors.join(QStringLiteral(" | ")).toStdString();
}

void Session::SetUp() {
    loadPlugin();
}

void Session::TearDown() {
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drain();
    unloadPlugin();
}

void Session::loadPlugin() {
    errors.clear();
    ASSERT_TRUE(
        run(QStringLiteral("loadPlugin ") + command::quote(QStringLiteral(VELLUM_PLUGIN_PATH))));
    EXPECT_TRUE(errors.isEmpty()) << errors.join(QStringLiteral(" | ")).toStdString();
}

void Session::unloadPlugin() {
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("unloadPlugin vellum2")));
    EXPECT_TRUE(errors.isEmpty()) << errors.join(QStringLiteral(" | ")).toStdString();
}

} // namespace vellum::test
