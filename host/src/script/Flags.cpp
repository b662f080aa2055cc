#include "script/Flags.h"

#include <cassert>

namespace host::script {

Flags& Flags::flag(const std::string& shortName, const std::string& longName,
                   std::initializer_list<ArgKind> arguments) {
    assert(syntax_.find(shortName) < 0 && syntax_.find(longName) < 0);
    FlagSyntax flag;
    flag.shortName = withDash(shortName);
    flag.longName = withDash(longName);
    flag.arguments = arguments;
    syntax_.flags.push_back(std::move(flag));
    return *this;
}

Flags& Flags::multiUse(const std::string& name) {
    const int index = syntax_.find(name);
    assert(index >= 0);
    syntax_.flags[static_cast<std::size_t>(index)].multiUse = true;
    return *this;
}

Flags& Flags::queryWithArguments(const std::string& name, bool optional) {
    const int index = syntax_.find(name);
    assert(index >= 0);
    FlagSyntax& flag = syntax_.flags[static_cast<std::size_t>(index)];
    flag.queryWithArguments = true;
    flag.queryArgumentsOptional = optional;
    return *this;
}

Flags& Flags::query() {
    syntax_.canQuery = true;
    return *this;
}

Flags& Flags::edit() {
    syntax_.canEdit = true;
    return *this;
}

Flags& Flags::objects(int minimum, int maximum) {
    syntax_.objectFormat = ObjectFormat::Text;
    syntax_.minimumObjects = static_cast<unsigned>(minimum);
    syntax_.objectsBounded = maximum >= 0;
    syntax_.maximumObjects = maximum >= 0 ? static_cast<unsigned>(maximum) : 0;
    return *this;
}

ParsedFlags Flags::parse(const CommandCall& call) const {
    ParsedFlags parsed;
    parsed.parsed_ = parseArguments(syntax_, call.flattened());
    parsed.syntax_ = syntax_;
    return parsed;
}

int ParsedFlags::uses(const std::string& flag) const {
    const int index = syntax_.find(flag);
    assert(index >= 0 && "flag was never declared");
    int count = 0;
    for (const FlagUse& use : parsed_.uses)
        count += static_cast<int>(use.flagIndex) == index;
    return count;
}

bool ParsedFlags::isSet(const std::string& flag) const {
    return uses(flag) > 0;
}

const Value* ParsedFlags::find(const std::string& flag, int index, int use) const {
    const int wanted = syntax_.find(flag);
    assert(wanted >= 0 && "flag was never declared");
    for (const FlagUse& candidate : parsed_.uses) {
        if (static_cast<int>(candidate.flagIndex) != wanted || use-- > 0)
            continue;
        const auto i = static_cast<std::size_t>(index);
        return i < candidate.arguments.size() ? &candidate.arguments[i] : nullptr;
    }
    return nullptr;
}

int ParsedFlags::getInt(const std::string& flag, int fallback, int index, int use) const {
    const Value* value = find(flag, index, use);
    return value ? value->toInt() : fallback;
}

bool ParsedFlags::getBool(const std::string& flag, bool fallback, int index, int use) const {
    const Value* value = find(flag, index, use);
    return value ? value->toBool() : fallback;
}

double ParsedFlags::getFloat(const std::string& flag, double fallback, int index, int use) const {
    const Value* value = find(flag, index, use);
    return value ? value->toFloat() : fallback;
}

std::string ParsedFlags::getString(const std::string& flag, const std::string& fallback, int index,
                                   int use) const {
    const Value* value = find(flag, index, use);
    return value ? value->toString() : fallback;
}

Strings ParsedFlags::allStrings(const std::string& flag) const {
    Strings all;
    for (int use = 0; use < uses(flag); ++use)
        all.push_back(getString(flag, {}, 0, use));
    return all;
}

Strings ParsedFlags::objectNames() const {
    Strings names;
    for (const Value& object : parsed_.objects)
        names.push_back(object.toString());
    return names;
}

std::string ParsedFlags::object() const {
    return parsed_.objects.empty() ? std::string() : parsed_.objects[0].toString();
}

} // namespace host::script
