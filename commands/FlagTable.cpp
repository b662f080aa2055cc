#include "commands/FlagTable.h"

#include <algorithm>
#include <array>

namespace vellum {

void addFlag(MSyntax& syntax, const char* shortName, const char* longName,
             const std::vector<MSyntax::MArgType>& arguments) {
    std::array<MSyntax::MArgType, 6> types; // as many as Maya knows
    types.fill(MSyntax::kNoArg);
    std::copy(arguments.begin(), arguments.end(), types.begin());
    syntax.addFlag(shortName, longName, types[0], types[1], types[2], types[3], types[4], types[5]);
}

} // namespace vellum
