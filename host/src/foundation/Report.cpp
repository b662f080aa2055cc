#include "foundation/Report.h"

#include <iostream>
#include <map>
#include <vector>

namespace host::report {
namespace {

using Listener = std::function<void(Level, const std::string&)>;

std::map<int, Listener>& listeners() {
    static std::map<int, Listener> all;
    return all;
}

void tell(Level level, const std::string& text) {
    std::vector<int> ids;
    for (const auto& [id, listener] : listeners())
        ids.push_back(id);
    for (int id : ids) {
        const auto found = listeners().find(id);
        if (found == listeners().end())
            continue; // removed by one called before it
        const Listener listener = found->second;
        listener(level, text);
    }
}

} // namespace

void error(const std::string& text) {
    std::cerr << "// Error: " << text << " //" << std::endl;
    tell(Level::Error, text);
}

void warning(const std::string& text) {
    std::cerr << "// Warning: " << text << " //" << std::endl;
    tell(Level::Warning, text);
}

void info(const std::string& text) {
    std::cout << text << std::endl;
    tell(Level::Info, text);
}

void result(const std::string& text) {
    std::cout << "// Result: " << text << " //" << std::endl;
    tell(Level::Result, text);
}

void print(const std::string& text) {
    std::cout << text << std::flush;
    tell(Level::Print, text);
}

int addListener(Listener listener) {
    static int next = 1;
    listeners().emplace(next, std::move(listener));
    return next++;
}

void removeListener(int id) {
    listeners().erase(id);
}

} // namespace host::report
