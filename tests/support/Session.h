// A host with window and the plug-in loaded, driven as a user at the script line would.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

namespace host {
class MainWindow;
}

namespace vellum::test {

/// The host with its main window and an empty preferences directory. What is shown to the
/// user as an error or a warning is collected.
class HostSession : public ::testing::Test {
protected:
    HostSession();
    ~HostSession() override;

    /// Runs a script, undoable; its success. Of a failure it tells the script and the errors shown.
    ::testing::AssertionResult run(const QString& script);
    /// Result of a script; a value nobody expects when it failed or gave another type.
    int number(const QString& script);
    QString text(const QString& script);

    /// Runs a script that must fail, with exactly this among the errors shown.
    void refuses(const QString& script, const QString& error);

    std::unique_ptr<host::MainWindow> window;
    QStringList errors;   ///< since the last clear
    QStringList warnings; ///< likewise
    QString allErrors() const;

private:
    QTemporaryDir preferences_;
    int listener_;
};

/// With the plug-in's library loaded.
class Session : public HostSession {
protected:
    void SetUp() override;
    void TearDown() override;

    void loadPlugin();
    void unloadPlugin();
};

} // namespace vellum::test
