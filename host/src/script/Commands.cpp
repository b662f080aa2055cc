#include "script/Commands.h"

#include "foundation/Faults.h"
#include "foundation/UndoQueue.h"

#include <algorithm>
#include <memory>
#include <new>
#include <unordered_map>

namespace host::script {

namespace {

// Held by pointer: a command may replace or remove itself while it runs.
using Table = std::unordered_map<std::string, std::shared_ptr<CommandFunction>>;

Table& table() {
    static Table commands;
    return commands;
}

} // namespace

std::vector<Value> CommandCall::flattened() const {
    std::vector<Value> flat;
    flat.reserve(arguments.size());
    for (const Value& argument : arguments) {
        if (argument.isArray()) {
            for (std::size_t i = 0; i < argument.size(); ++i)
                flat.push_back(argument.element(i));
        } else {
            flat.push_back(argument);
        }
    }
    return flat;
}

void registerCommand(const std::string& name, CommandFunction function) {
    table()[name] = std::make_shared<CommandFunction>(std::move(function));
}

bool unregisterCommand(const std::string& name) {
    return table().erase(name) > 0;
}

bool commandExists(const std::string& name) {
    return table().count(name) > 0;
}

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    for (const auto& [name, function] : table())
        names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

Value callCommand(const CommandCall& call) {
    const auto it = table().find(call.name);
    if (it == table().end())
        throw ScriptError("Cannot find procedure \"" + call.name + "\".");
    const std::shared_ptr<CommandFunction> function = it->second;
    if (faults::due("command", call.name))
        throw ScriptError(call.name + ": does not work.");
    CommandCall complete = call;
    complete.undoEnabled = undoQueue().enabled();
    try {
        return (*function)(complete);
    } catch (const ScriptError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw ScriptError(call.name + ": " + error.what());
    }
}

} // namespace host::script
