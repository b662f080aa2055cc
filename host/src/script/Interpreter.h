#pragma once

#include "script/Value.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// The script interpreter. One per process, main thread only; re-entrant (a command may execute
/// scripts).
namespace host::script {

/// Runs a script at global scope and returns the value of its last statement. Syntax errors are
/// found before anything runs. Throws ScriptError and reports nothing: for commands and tests.
/// `fileName` is what errors name and the scope of procedures that are not `global`.
Value execute(const std::string& script, const std::string& fileName = {});
Value executeFile(const std::string& path);

struct RunOptions {
    std::string fileName;
    bool echo = false; ///< show the command and its results
    bool undo = true;  ///< false: nothing that runs is recorded for undo
};

/// Runs a script as the top level does (script line, menu item, button, idle): an error is reported
/// through host::report and false returned; `*result` and `*error` receive what there is.
bool run(const std::string& script, Value* result = nullptr, const RunOptions& options = {},
         ScriptError* error = nullptr);
bool runFile(const std::string& path, Value* result = nullptr, ScriptError* error = nullptr);

/// Calls a procedure or command by name. Throws ScriptError.
Value callProcedure(const std::string& name, const std::vector<Value>& arguments = {});

/// Global script variables; `name` with or without the leading $. A variable keeps the type it was
/// first given; setting converts to it. An unknown variable reads as None.
Value globalVariable(const std::string& name);
void setGlobalVariable(const std::string& name, const Value& value);

/// Registers a script procedure that is implemented here, such as `lookThroughModelPanel`: it is
/// called like any procedure, with as many arguments as `parameters` names, converted to those
/// types. A script may define it anew. `whatIs` calls it a script.
using NativeProcedure = std::function<Value(const std::vector<Value>&)>;
void defineProcedure(const std::string& name, const std::vector<Type>& parameters,
                     NativeProcedure function);
bool procedureExists(const std::string& name);

/// Directories where `source` and calls of unknown procedures look for NAME.mel, besides those of
/// the environment variable MAYA_SCRIPT_PATH.
void addScriptPath(const std::string& directory);

/// How many executions are under way, one inside the other; 0 at idle.
int executionDepth();

/// Where the interpreter is now: innermost file and line; empty and 0 at idle.
void currentLocation(std::string* file, int* line);

/// Stops what is running at its next statement with an error (Escape in the window). Ignored when
/// nothing runs.
void interrupt();

/// Ends an execution with an error after this many evaluation steps; 0 (the default) for no limit.
void setStepLimit(std::uint64_t steps);

/// Forgets procedures and global variables that scripts made; for tests.
void resetInterpreter();

/// Batch mode: no window, script jobs do nothing. Set once at start.
void setBatchMode(bool batch);
bool batchMode();

/// Called by `quit`; the program sets it. Arguments: exit code, force, abort.
void setQuitHandler(std::function<void(int, bool, bool)> handler);
/// Ends the program through that handler. ScriptError when there is none.
void requestQuit(int exitCode, bool force, bool abort);

} // namespace host::script
