#pragma once

#include "script/Commands.h"
#include "script/Syntax.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace host::script {

class ParsedFlags;

/// Declares the flags of a built-in command and reads calls against them.
///
///     static const Flags flags = Flags()
///         .flag("-n", "-name", {ArgKind::String})
///         .flag("-p", "-parent", {ArgKind::String})
///         .query().edit().objects(0, 1);
///     ParsedFlags parsed = flags.parse(call); // throws ScriptError with the usual wording
///
/// Names may be written with or without the dash and are asked for by either name. In query mode
/// flags take no arguments unless named in `queryWithArguments`. -q/-e exist only when enabled.
class Flags {
public:
    Flags& flag(const std::string& shortName, const std::string& longName,
                std::initializer_list<ArgKind> arguments = {});
    Flags& multiUse(const std::string& name);
    Flags& queryWithArguments(const std::string& name, bool optional = false);
    Flags& query();
    Flags& edit();
    /// How many arguments may stand beside the flags; -1 for no upper bound. Default: none.
    Flags& objects(int minimum, int maximum);

    ParsedFlags parse(const CommandCall& call) const;

private:
    SyntaxData syntax_;
};

/// What a call gave. Flags are asked for by their long or short name; asking for a flag that was
/// never declared is the programmer's error and asserts.
class ParsedFlags {
public:
    bool isQuery() const { return parsed_.query; }
    bool isEdit() const { return parsed_.edit; }
    bool isCreate() const { return !parsed_.query && !parsed_.edit; }
    bool isSet(const std::string& flag) const;
    int uses(const std::string& flag) const;

    /// Argument `index` of the `use`-th occurrence; the fallback when the flag is not set or has
    /// no such argument.
    int getInt(const std::string& flag, int fallback = 0, int index = 0, int use = 0) const;
    bool getBool(const std::string& flag, bool fallback = false, int index = 0, int use = 0) const;
    double getFloat(const std::string& flag, double fallback = 0, int index = 0, int use = 0) const;
    std::string getString(const std::string& flag, const std::string& fallback = {}, int index = 0,
                          int use = 0) const;
    Strings allStrings(const std::string& flag) const; ///< first argument of every use

    /// What stood beside the flags, in order.
    const std::vector<Value>& objects() const { return parsed_.objects; }
    Strings objectNames() const;
    /// The one object, or "" when there is none.
    std::string object() const;

private:
    friend class Flags;
    const Value* find(const std::string& flag, int index, int use) const;
    ParsedArguments parsed_;
    SyntaxData syntax_;
};

} // namespace host::script
