#pragma once

#include "script/Syntax.h"

#include <maya/MArgList.h>

class MArgDatabase;

namespace host::script {

/// A command's argument list together with what it says; behind MArgParser.
struct ParsedCommandLine {
    SyntaxData syntax;
    MArgList list;
    ParsedArguments parsed;

    /// The `use`-th use of a flag; null when it is not set that often.
    const FlagUse* use(const char* flag, unsigned use = 0) const;
    unsigned uses(const char* flag) const;
};

/// Arguments as a plug-in sees them. Arrays must have been taken apart.
MArgList argumentList(const std::vector<Value>& arguments);

/// The way back; numbers come back as text, which parsing accepts.
std::vector<Value> argumentValues(const MArgList& list);

} // namespace host::script
