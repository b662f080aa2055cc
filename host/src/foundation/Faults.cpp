#include "foundation/Faults.h"

#include <map>

namespace host::faults {

namespace {

std::map<std::string, int>& armed() {
    static std::map<std::string, int> steps; // step -> times it still passes
    return steps;
}

} // namespace

void arm(const std::string& step, int passes) {
    armed()[step] = passes;
}

void clear() {
    armed().clear();
}

bool due(const char* step, const std::string& name) {
    if (armed().empty())
        return false;
    const auto found = armed().find(name.empty() ? step : step + (' ' + name));
    return found != armed().end() && found->second-- <= 0;
}

} // namespace host::faults
