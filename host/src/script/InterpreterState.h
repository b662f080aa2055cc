#pragma once

#include "script/Ast.h"
#include "script/Interpreter.h"

#include <atomic>
#include <unordered_map>

namespace host::script {

struct NativeProcedureEntry {
    std::vector<Type> parameters;
    NativeProcedure function;
};

/// What the interpreter knows between executions and during them. Main thread only.
struct InterpreterState {
    GlobalVariables globals;
    std::unordered_map<std::string, std::shared_ptr<Procedure>> procedures;
    std::unordered_map<std::string, NativeProcedureEntry> natives;
    std::vector<std::string> scriptPaths;

    int executions = 0;                ///< nested
    bool chunkOpen = false;            ///< the undo chunk of the statement at the top level
    int calls = 0;                     ///< nested procedure calls, over all executions
    bool echo = false;                 ///< of the innermost execution
    const std::string* file = nullptr; ///< where the innermost statement stands
    int line = 0;
    const char* stackBase = nullptr; ///< stack address of the outermost execution

    std::uint64_t steps = 0, stepLimit = 0;
    std::atomic<bool> interrupted{false};

    /// Called for every statement and call; throws when a limit is reached.
    void step();

    static InterpreterState& instance();
};

/// Brackets one execution; keeps the outer one's location.
class ExecutionScope {
public:
    ExecutionScope(InterpreterState& state, const std::string& file, bool echo);
    ~ExecutionScope();
    ExecutionScope(const ExecutionScope&) = delete;
    ExecutionScope& operator=(const ExecutionScope&) = delete;

private:
    InterpreterState& state_;
    const std::string* file_;
    int line_, calls_;
    bool echo_;
};

/// Closes the top level statement's undo chunk for as long as it lives, so that the statement may
/// undo and redo what came before it.
class ChunkPause {
public:
    ChunkPause();
    ~ChunkPause();
    ChunkPause(const ChunkPause&) = delete;
    ChunkPause& operator=(const ChunkPause&) = delete;

private:
    bool paused_;
};

/// NAME or NAME.mel as `source` finds it: as given, then along the script path. "" when absent.
std::string findScript(const std::string& name);

/// Looks along the script path for NAME.mel and runs it; true when that defined the procedure.
bool loadProcedure(const std::string& name);

} // namespace host::script
