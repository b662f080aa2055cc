// The flags of a script command as one table: what Maya is told to accept and what a call is
// searched for are the same rows in the same order, so that no flag is accepted and then forgotten.
#pragma once

#include "commands/Arguments.h"

#include <maya/MArgDatabase.h>
#include <maya/MSyntax.h>

#include <functional>
#include <vector>

namespace vellum {

template <typename Action> struct FlagRow {
    const char* shortName;
    const char* longName; ///< some without a dash: both forms name the same flag
    std::vector<MSyntax::MArgType> arguments;
    Action action; ///< {} when the flag only refines others
};

/// In order of registration and of precedence.
template <typename Action> using FlagTable = std::vector<FlagRow<Action>>;

void addFlag(MSyntax& syntax, const char* shortName, const char* longName,
             const std::vector<MSyntax::MArgType>& arguments);

template <typename Action> void addFlags(MSyntax& syntax, const FlagTable<Action>& table) {
    for (const FlagRow<Action>& row : table)
        addFlag(syntax, row.shortName, row.longName, row.arguments);
}

/// The first row that stands in the call and whose action is `wanted`: a member of Action that is
/// not null, or a predicate. Null when there is none.
template <typename Action, typename Wanted>
const FlagRow<Action>* firstFlag(const FlagTable<Action>& table, const MArgDatabase& args,
                                 Wanted wanted) {
    for (const FlagRow<Action>& row : table) {
        if (std::invoke(wanted, row.action) && isSet(args, row.shortName))
            return &row;
    }
    return nullptr;
}

} // namespace vellum
