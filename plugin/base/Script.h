// Execution of script commands. Main thread only. Script text is built by CommandStrings.h.
#pragma once

#include <QString>

#include <array>
#include <optional>
#include <utility>

namespace vellum::script {

/// Runs the command now. `display` echoes it in the script history, `undo` lets what it does be
/// undone. False when the command failed; Maya has shown why.
bool execute(const QString& command, bool display = false, bool undo = false);

/// As execute(); empty when the command failed or its result is not of the type asked for.
std::optional<int> executeInt(const QString& command);
std::optional<QString> executeString(const QString& command);

/// The first numbers of an array of ints or doubles that has at least as many.
std::optional<std::pair<double, double>> executePair(const QString& command);
std::optional<std::array<double, 3>> executeTriple(const QString& command);

/// Runs the command when Maya is idle next; in batch mode when the script engine is back at the
/// top.
void executeOnIdle(const QString& command, bool display = false);

} // namespace vellum::script
