#include "script/CallHelpers.h"
#include "script/LanguageCommands.h"
#include "script/Operators.h"

#include <algorithm>

namespace host::script {

namespace {

Strings list(const CommandCall& call, std::size_t index) {
    return call.arguments[index].convertedTo(Type::StringArray).get<Strings>();
}

std::string text(const CommandCall& call, std::size_t index) {
    return call.arguments[index].toString();
}

bool contains(const Strings& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

Value sort(const CommandCall& call) {
    requireArguments(call, 1);
    Value array = call.arguments[0];
    if (auto* ints = array.getIf<Ints>())
        std::sort(ints->begin(), ints->end());
    else if (auto* floats = array.getIf<Floats>())
        std::sort(floats->begin(), floats->end());
    else if (auto* strings = array.getIf<Strings>())
        std::sort(strings->begin(), strings->end());
    else
        throw ScriptError("sort needs an array of int, float or string.");
    return array;
}

Value appendStringArray(const CommandCall& call) {
    requireArguments(call, 3);
    Strings more = list(call, 1); // may be the same array
    const int count = std::clamp(call.arguments[2].toInt(), 0, static_cast<int>(more.size()));
    auto& target = arrayVariable(call, 0, Type::StringArray).get<Strings>();
    if (target.size() + static_cast<std::size_t>(count) > kMaximumElements)
        throw ScriptError("The array is too long.");
    target.insert(target.end(), more.begin(), more.begin() + count);
    return {};
}

Value catenate(const CommandCall& call) {
    requireArguments(call, 2);
    Strings out = list(call, 0);
    const Strings more = list(call, 1);
    out.insert(out.end(), more.begin(), more.end());
    return out;
}

Value containsItem(const CommandCall& call) {
    requireArguments(call, 2);
    return contains(list(call, 1), text(call, 0));
}

Value countItem(const CommandCall& call) {
    requireArguments(call, 2);
    const Strings items = list(call, 1);
    return static_cast<int>(std::count(items.begin(), items.end(), text(call, 0)));
}

// (item, start, array): the index, or -1.
Value findItem(const CommandCall& call) {
    requireArguments(call, 3);
    const Strings items = list(call, 2);
    const auto start = std::clamp<std::ptrdiff_t>(call.arguments[1].toInt(), 0,
                                                  static_cast<std::ptrdiff_t>(items.size()));
    const auto it = std::find(items.begin() + start, items.end(), text(call, 0));
    return it == items.end() ? -1 : static_cast<int>(it - items.begin());
}

// Removes every item of the first list from the second; with "Exact" only as often as it is in the
// first.
Value removeItems(const CommandCall& call) {
    requireArguments(call, 2);
    Strings unwanted = list(call, 0);
    Strings out;
    const bool exact = call.name == "stringArrayRemoveExact";
    for (std::string& item : list(call, 1)) {
        const auto it = std::find(unwanted.begin(), unwanted.end(), item);
        if (it == unwanted.end())
            out.push_back(std::move(item));
        else if (exact)
            unwanted.erase(it);
    }
    return out;
}

Value removeDuplicates(const CommandCall& call) {
    requireArguments(call, 1);
    Strings out;
    for (const std::string& item : list(call, 0))
        if (!contains(out, item))
            out.push_back(item);
    return out;
}

Value insertAtIndex(const CommandCall& call) {
    requireArguments(call, 3);
    const std::string item = text(call, 2);
    const int index = call.arguments[0].toInt();
    auto& items = arrayVariable(call, 1, Type::StringArray).get<Strings>();
    if (index < 0 || static_cast<std::size_t>(index) > items.size())
        return 0;
    items.insert(items.begin() + index, item);
    return 1;
}

Value removeAtIndex(const CommandCall& call) {
    requireArguments(call, 2);
    const int index = call.arguments[0].toInt();
    auto& items = arrayVariable(call, 1, Type::StringArray).get<Strings>();
    if (index < 0 || static_cast<std::size_t>(index) >= items.size())
        return 0;
    items.erase(items.begin() + index);
    return 1;
}

Value toOneString(const CommandCall& call) {
    requireArguments(call, 2);
    std::string out;
    bool first = true;
    for (const std::string& item : list(call, 0)) {
        out += first ? item : text(call, 1) + item;
        first = false;
    }
    return out;
}

// Every separator character parts, and what lies between two of them may be empty.
Value toStringArray(const CommandCall& call) {
    requireArguments(call, 2);
    const std::string input = text(call, 0), separators = text(call, 1);
    Strings out;
    std::size_t start = 0;
    while (!input.empty()) {
        const std::size_t end = input.find_first_of(separators, start);
        out.push_back(input.substr(start, end - start));
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return out;
}

// stringArray… for strings, intArray… and floatArray… likewise: (item, array).
Value containsNumber(const CommandCall& call) {
    requireArguments(call, 2);
    const double wanted = call.arguments[0].toFloat();
    const Floats items = call.arguments[1].toFloats();
    return std::find(items.begin(), items.end(), wanted) != items.end();
}

} // namespace

void registerArrayCommands() {
    registerCommand("sort", sort);
    registerCommand("appendStringArray", appendStringArray);
    registerCommand("stringArrayCatenate", catenate);
    registerCommand("stringArrayContains", containsItem);
    registerCommand("stringArrayCount", countItem);
    registerCommand("stringArrayFind", findItem);
    registerCommand("stringArrayRemove", removeItems);
    registerCommand("stringArrayRemoveExact", removeItems);
    registerCommand("stringArrayRemoveDuplicates", removeDuplicates);
    registerCommand("stringArrayInsertAtIndex", insertAtIndex);
    registerCommand("stringArrayRemoveAtIndex", removeAtIndex);
    registerCommand("stringArrayToString", toOneString);
    registerCommand("stringToStringArray", toStringArray);
    registerCommand("intArrayContains", containsNumber);
    registerCommand("floatArrayContains", containsNumber);
}

} // namespace host::script
