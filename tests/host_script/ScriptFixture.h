#pragma once

#include "commands/CoreCommands.h"
#include "commands/ScriptJobs.h"
#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "script/Commands.h"
#include "script/Interpreter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// A clean interpreter with the core commands; keeps what was printed and reported.
class ScriptTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::script::registerCoreCommands();
        host::script::resetInterpreter();
        host::script::setBatchMode(false);
        host::script::killAllScriptJobs();
        host::undoQueue().flush();
        host::idle::clear();
        listener_ =
            host::report::addListener([this](host::report::Level level, const std::string& text) {
                using host::report::Level;
                (level == Level::Print     ? printed
                 : level == Level::Warning ? warnings
                 : level == Level::Error   ? errors
                                           : shown) += level == Level::Print ? text : text + "\n";
            });
    }

    void TearDown() override {
        host::report::removeListener(listener_);
        host::script::killAllScriptJobs();
        host::script::resetInterpreter();
        host::undoQueue().flush();
        host::idle::clear();
    }

    /// Runs at the top level; what it printed, or its error text.
    std::string output(const std::string& script, const std::string& file = {}) {
        printed.clear();
        host::script::RunOptions options;
        options.fileName = file;
        host::script::ScriptError error("");
        return host::script::run(script, nullptr, options, &error) ? printed : error.text();
    }

    std::string printed, shown, warnings, errors;

private:
    int listener_ = 0;
};

/// "type: value" of a script's result, or "error: text".
inline std::string resultOf(const std::string& script, const std::string& file = {}) {
    try {
        const host::script::Value value = host::script::execute(script, file);
        return std::string(host::script::typeName(value.type())) + ": " + value.display();
    } catch (const host::script::ScriptError& error) {
        return "error: " + error.text();
    }
}
