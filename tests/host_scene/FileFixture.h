#pragma once
#include "foundation/Report.h"
#include "plugins/PluginLoader.h"
#include "scene/core/SceneState.h"
#include "scene/files/FileIO.h"
#include "script/Interpreter.h"
#include "ui/StartUp.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <vector>

// A started host with an empty scene, a folder for files, and an ear for messages.
class FileFixture : public ::testing::Test {
protected:
    FileFixture() {
        host::startUp({true});
        listener_ =
            host::report::addListener([this](host::report::Level level, const std::string& text) {
                if (level == host::report::Level::Error)
                    errors.push_back(text);
                else if (level == host::report::Level::Warning)
                    warnings.push_back(text);
            });
        run("file -f -new");
        forget();
    }
    ~FileFixture() override {
        host::fileIO().setTargetFactory({});
        qunsetenv("MAYA_PLUG_IN_PATH");
        run("file -f -new");
        if (host::pluginLoader().find("hosttestplugin"))
            run("unloadPlugin hosttestplugin");
        host::report::removeListener(listener_);
    }

    // The result as text; a script that fails fails the test.
    std::string run(const std::string& script) {
        try {
            return host::script::execute(script).display();
        } catch (const host::script::ScriptError& error) {
            ADD_FAILURE() << script << "\n" << error.text();
            return {};
        }
    }
    // The message of a script that must fail.
    std::string failing(const std::string& script) {
        try {
            host::script::execute(script);
        } catch (const host::script::ScriptError& error) {
            return error.what();
        }
        ADD_FAILURE() << "should fail: " << script;
        return {};
    }
    void forget() {
        errors.clear();
        warnings.clear();
    }
    static bool mentions(const std::vector<std::string>& texts, const std::string& part) {
        for (const std::string& text : texts)
            if (text.find(part) != std::string::npos)
                return true;
        return false;
    }
    std::string path(const std::string& name) const {
        return folder.filePath(QString::fromStdString(name)).toStdString();
    }
    QByteArray bytes(const std::string& name) const {
        QFile file(folder.filePath(QString::fromStdString(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const std::string& name, const QByteArray& content) const {
        QFile file(folder.filePath(QString::fromStdString(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    std::string quotedPath(const std::string& name) const {
        return host::script::quoted(path(name));
    }
    void save(const std::string& name, bool force = false) {
        const bool ascii = name.substr(name.size() - 3) == ".ma";
        run("file -rename " + quotedPath(name) + "; file -type " +
            (ascii ? "mayaAscii" : "mayaBinary") + (force ? " -f" : "") + " -save");
    }
    void open(const std::string& name) { run("file -f -o " + quotedPath(name)); }
    void loadTestPlugin() {
        run(std::string("loadPlugin ") + host::script::quoted(TEST_PLUGIN_PATH));
    }

    QTemporaryDir folder;
    std::vector<std::string> errors, warnings;

private:
    int listener_ = 0;
};
