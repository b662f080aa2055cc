#include "commands/Conditions.h"

#include <map>

namespace host::conditions {

namespace {

std::map<std::string, bool>& table() {
    static std::map<std::string, bool> conditions;
    return conditions;
}

using Listener = std::function<void(const std::string&, bool)>;

std::map<int, Listener>& listeners() {
    static std::map<int, Listener> all;
    return all;
}

} // namespace

void declare(const std::string& name, bool state) {
    table().emplace(name, state);
}

bool exists(const std::string& name) {
    return table().count(name) > 0;
}

bool state(const std::string& name) {
    const auto it = table().find(name);
    return it != table().end() && it->second;
}

std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const auto& [name, state] : table())
        all.push_back(name);
    return all;
}

void set(const std::string& name, bool state) {
    bool& current = table()[name];
    if (current == state)
        return;
    current = state;
    const auto copy = listeners(); // a listener may remove itself
    for (const auto& [id, listener] : copy)
        if (listeners().count(id))
            listener(name, state);
}

int addListener(std::function<void(const std::string&, bool)> listener) {
    static int lastId = 0;
    listeners()[++lastId] = std::move(listener);
    return lastId;
}

void removeListener(int id) {
    listeners().erase(id);
}

} // namespace host::conditions
