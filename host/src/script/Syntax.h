#pragma once

#include "script/Value.h"

#include <string>
#include <vector>

class MSyntax;

namespace host::script {

/// Kinds of flag and command arguments; the numbers are those of MSyntax::MArgType.
enum class ArgKind {
    Invalid = 0,
    None,
    Boolean,
    Int,
    Float,
    String,
    Unsigned,
    Distance,
    Angle,
    Time,
    SelectionItem
};

/// One declared flag. Names carry their dash.
struct FlagSyntax {
    std::string shortName, longName;
    std::vector<ArgKind> arguments;
    bool multiUse = false;
    bool queryWithArguments = false;
    bool queryArgumentsOptional = false;
};

enum class ObjectFormat { Invalid = 0, None, Text, SelectionList };

/// What a command accepts; shared by built-in and plug-in commands.
struct SyntaxData {
    std::vector<FlagSyntax> flags;
    std::vector<ArgKind> arguments; ///< positional, before the objects
    ObjectFormat objectFormat = ObjectFormat::None;
    unsigned minimumObjects = 0;
    unsigned maximumObjects = 0;
    bool objectsBounded = false; ///< maximumObjects counts
    bool selectionIsDefault = false;
    bool canQuery = false, canEdit = false;

    /// By short or long name, with or without dash; -1 when there is none.
    int find(const std::string& name) const;

    /// The description behind an MSyntax.
    static SyntaxData& of(const MSyntax& syntax);
};

/// One use of a flag: its arguments and where they stood in the call.
struct FlagUse {
    std::size_t flagIndex = 0;          ///< into SyntaxData::flags
    std::size_t position = 0;           ///< of the flag itself
    std::vector<std::size_t> positions; ///< of its arguments
    std::vector<Value> arguments;
};

struct ParsedArguments {
    bool query = false, edit = false;
    std::vector<FlagUse> uses;
    std::vector<Value> arguments; ///< the positional ones
    std::vector<std::size_t> argumentPositions;
    std::vector<Value> objects;
};

/// Reads flattened arguments against a syntax. Throws ScriptError: unknown flag, missing or
/// mistyped argument, a flag used twice that may not be, too few or too many objects.
ParsedArguments parseArguments(const SyntaxData& syntax, const std::vector<Value>& arguments);

/// "-name" from "name" or "-name".
std::string withDash(const std::string& name);

} // namespace host::script
