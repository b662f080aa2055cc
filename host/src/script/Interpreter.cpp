#include "script/Interpreter.h"

#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "script/Commands.h"
#include "script/Evaluator.h"
#include "script/InterpreterState.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>

namespace host::script {

namespace {

bool batch = false;
std::function<void(int, bool, bool)> quitHandler;

std::string withoutDollar(const std::string& name) {
    return !name.empty() && name[0] == '$' ? name.substr(1) : name;
}

// The first command or procedure that a statement calls, which the user knows it by.
const Node* firstCall(const Node& node) {
    if (node.kind == NodeKind::Call)
        return &node;
    for (const NodePtr& child : node.children) {
        const Node* call = child ? firstCall(*child) : nullptr;
        if (call)
            return call;
    }
    return nullptr;
}

// What one statement of the top level does is one step for the user to undo.
class StatementChunk {
public:
    StatementChunk(InterpreterState& state, const Node& statement)
        : state_(state), opened_(state.executions == 1) {
        if (!opened_)
            return;
        const Node* call = firstCall(statement);
        undoQueue().openChunk(call ? call->name : "");
        state_.chunkOpen = true;
    }
    ~StatementChunk() {
        if (!opened_)
            return;
        state_.chunkOpen = false;
        undoQueue().closeChunk();
    }
    StatementChunk(const StatementChunk&) = delete;
    StatementChunk& operator=(const StatementChunk&) = delete;

private:
    InterpreterState& state_;
    bool opened_;
};

Value executeUnit(InterpreterState& state, const Unit& unit, bool echo) {
    for (const auto& [name, variable] : unit.newGlobals)
        state.globals.emplace(name, variable);
    const ExecutionScope scope(state, unit.file, echo);
    Evaluator evaluator(state, unit.file, unit.locals, unit.slots);
    evaluator.defineAhead(unit);
    Value last;
    for (const NodePtr& statement : unit.statements) {
        const StatementChunk chunk(state, *statement);
        evaluator.takeResult() = Value();
        evaluator.run(*statement);
        const bool hasResult = statement->kind == NodeKind::ExpressionStatement ||
                               statement->kind == NodeKind::Declare;
        last = evaluator.takeResult();
        if (!hasResult)
            last = Value();
        if (echo && !last.isNone())
            report::result(last.display());
    }
    return last;
}

Value executeText(const std::string& script, const std::string& file, bool echo) {
    InterpreterState& state = InterpreterState::instance();
    try {
        return executeUnit(state, parseScript(script, file, state.globals), echo);
    } catch (const std::bad_alloc&) {
        throw ScriptError("Out of memory.");
    } catch (const std::length_error&) {
        throw ScriptError("Out of memory.");
    }
}

std::string readFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw ScriptError("Cannot find file \"" + path + "\" for source statement.");
    // read() turns what goes wrong while reading (a folder opens like a file) into a state.
    std::string text;
    std::array<char, 65536> block;
    while (stream.read(block.data(), block.size()) || stream.gcount() > 0)
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    if (stream.bad())
        throw ScriptError("Cannot read file \"" + path + "\".");
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        text.erase(0, 3);
    return text;
}

// In batch mode there is no event loop: what waits for idle runs when the last script is done.
void backAtTop() {
    static bool draining = false;
    if (!batch || draining || InterpreterState::instance().executions > 0)
        return;
    draining = true;
    idle::drainAll();
    draining = false;
}

void report(ScriptError& error, ScriptError* out) {
    if (!error.reported)
        host::report::error(error.text());
    error.reported = true;
    if (out)
        *out = error;
}

} // namespace

InterpreterState& InterpreterState::instance() {
    static InterpreterState state;
    return state;
}

void InterpreterState::step() {
    // Scripts may nest and recurse only as far as the machine's stack safely allows.
    constexpr std::ptrdiff_t kStackBudget = 4 << 20;
    const char* here = static_cast<const char*>(__builtin_frame_address(0));
    const std::ptrdiff_t used = stackBase - here;
    if (stackBase && (used > kStackBudget || used < -kStackBudget))
        throw ScriptError("Stack overflow: the script recurses too deeply.");
    if (interrupted.load(std::memory_order_relaxed)) {
        interrupted = false;
        ScriptError error("Interrupted.");
        error.fatal = true;
        throw error;
    }
    if (stepLimit && ++steps > stepLimit) {
        ScriptError error("The script takes too many steps.");
        error.fatal = true;
        throw error;
    }
}

ExecutionScope::ExecutionScope(InterpreterState& state, const std::string& file, bool echo)
    : state_(state), file_(state.file), line_(state.line), calls_(state.calls), echo_(state.echo) {
    if (state.executions == 0) {
        state.stackBase = static_cast<const char*>(__builtin_frame_address(0));
        state.steps = 0;
        state.interrupted = false;
    }
    constexpr int kMaximumExecutions = 200;
    if (state.executions >= kMaximumExecutions)
        throw ScriptError("Scripts execute each other too deeply.");
    ++state.executions;
    state.file = &file;
    state.line = 0;
    state.echo = echo;
}

ExecutionScope::~ExecutionScope() {
    --state_.executions;
    state_.file = file_;
    state_.line = line_;
    state_.calls = calls_;
    state_.echo = echo_;
    if (state_.executions == 0)
        state_.stackBase = nullptr;
}

ChunkPause::ChunkPause() : paused_(InterpreterState::instance().chunkOpen) {
    if (paused_)
        undoQueue().closeChunk();
    InterpreterState::instance().chunkOpen = false;
}

ChunkPause::~ChunkPause() {
    if (paused_)
        undoQueue().openChunk("");
    InterpreterState::instance().chunkOpen = paused_;
}

Value execute(const std::string& script, const std::string& fileName) {
    return executeText(script, fileName, false);
}

Value executeFile(const std::string& path) {
    return executeText(readFile(path), path, false);
}

bool run(const std::string& script, Value* result, const RunOptions& options, ScriptError* error) {
    std::optional<UndoSuspender> suspender;
    if (!options.undo)
        suspender.emplace();
    if (options.echo)
        host::report::print(script + (script.empty() || script.back() == '\n' ? "" : "\n"));
    try {
        Value value = executeText(script, options.fileName, options.echo);
        if (result)
            *result = std::move(value);
    } catch (ScriptError& caught) {
        report(caught, error);
        backAtTop();
        return false;
    }
    backAtTop();
    return true;
}

bool runFile(const std::string& path, Value* result, ScriptError* error) {
    try {
        Value value = executeFile(path);
        if (result)
            *result = std::move(value);
    } catch (ScriptError& caught) {
        report(caught, error);
        backAtTop();
        return false;
    }
    backAtTop();
    return true;
}

Value callProcedure(const std::string& name, const std::vector<Value>& arguments) {
    InterpreterState& state = InterpreterState::instance();
    CommandCall call;
    call.name = name;
    call.arguments = arguments;
    call.variables.resize(arguments.size());
    const std::string nowhere;
    const ExecutionScope scope(state, nowhere, false);
    return dispatch(state, nullptr, call);
}

Value globalVariable(const std::string& name) {
    const auto& globals = InterpreterState::instance().globals;
    const auto it = globals.find(withoutDollar(name));
    return it == globals.end() ? Value() : it->second->value;
}

void setGlobalVariable(const std::string& name, const Value& value) {
    auto& variable = InterpreterState::instance().globals[withoutDollar(name)];
    if (!variable)
        variable = std::make_shared<GlobalVariable>();
    if (variable->type == Type::None)
        variable->type = value.type();
    variable->value = value.convertedTo(variable->type);
    variable->initialised = true;
}

void defineProcedure(const std::string& name, const std::vector<Type>& parameters,
                     NativeProcedure function) {
    auto& state = InterpreterState::instance();
    state.procedures.erase(name);
    state.natives[name] = {parameters, std::move(function)};
}

bool procedureExists(const std::string& name) {
    const auto& state = InterpreterState::instance();
    return state.procedures.count(name) || state.natives.count(name);
}

void addScriptPath(const std::string& directory) {
    InterpreterState::instance().scriptPaths.push_back(directory);
}

std::string findScript(const std::string& name) {
    namespace fs = std::filesystem;
    std::vector<fs::path> directories = {""};
    if (!fs::path(name).is_absolute()) {
        for (const std::string& path : InterpreterState::instance().scriptPaths)
            directories.emplace_back(path);
        const char* variable = std::getenv("MAYA_SCRIPT_PATH");
        std::string list = variable ? variable : "";
        for (std::size_t start = 0; start < list.size();) {
            const std::size_t end = std::min(list.find(':', start), list.size());
            if (end > start)
                directories.emplace_back(list.substr(start, end - start));
            start = end + 1;
        }
    }
    for (const fs::path& directory : directories) {
        for (const char* ending : {"", ".mel"}) {
            std::error_code ignored;
            const fs::path candidate = directory / (name + ending);
            if (fs::is_regular_file(candidate, ignored))
                return candidate.string();
        }
    }
    return {};
}

bool loadProcedure(const std::string& name) {
    // A file beside the working directory is nobody's procedure: only the script path counts.
    const std::string path = findScript(name + ".mel");
    if (path.empty() || path == name + ".mel")
        return false;
    executeFile(path);
    return procedureExists(name);
}

int executionDepth() {
    return InterpreterState::instance().executions;
}

void currentLocation(std::string* file, int* line) {
    const auto& state = InterpreterState::instance();
    *file = state.file ? *state.file : std::string();
    *line = state.line;
}

void interrupt() {
    InterpreterState::instance().interrupted = true;
}

void setStepLimit(std::uint64_t steps) {
    InterpreterState::instance().stepLimit = steps;
}

void resetInterpreter() {
    auto& state = InterpreterState::instance();
    state.globals.clear();
    state.procedures.clear();
    state.stepLimit = 0;
}

void setBatchMode(bool on) {
    batch = on;
}
bool batchMode() {
    return batch;
}

void setQuitHandler(std::function<void(int, bool, bool)> handler) {
    quitHandler = std::move(handler);
}

void requestQuit(int exitCode, bool force, bool abort) {
    if (!quitHandler)
        throw ScriptError("quit: this program cannot be ended by a script.");
    quitHandler(exitCode, force, abort);
}

} // namespace host::script
