#pragma once

#include "script/Commands.h"

/// Helpers for commands that take plain arguments.
namespace host::script {

/// ScriptError when the call has fewer or more arguments than this.
inline void requireArguments(const CommandCall& call, std::size_t minimum, std::size_t maximum) {
    if (call.arguments.size() < minimum || call.arguments.size() > maximum)
        throw ScriptError("Wrong number of arguments on call to " + call.name + ".");
}

inline void requireArguments(const CommandCall& call, std::size_t count) {
    requireArguments(call, count, count);
}

/// The array variable given as argument `index`, to be changed in place. ScriptError when the
/// argument is no variable of that type.
inline Value& arrayVariable(const CommandCall& call, std::size_t index, Type type = Type::None) {
    Value* variable = index < call.variables.size() ? call.variables[index] : nullptr;
    if (!variable || !variable->isArray() || (type != Type::None && variable->type() != type))
        throw ScriptError("Argument " + std::to_string(index + 1) + " of " + call.name +
                          " must be an array variable.");
    return *variable;
}

} // namespace host::script
