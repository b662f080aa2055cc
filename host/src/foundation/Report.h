// Everything the host or a plug-in says to the user goes through here.
#pragma once

#include <functional>
#include <string>

namespace host::report {

enum class Level { Print, Result, Info, Warning, Error };

void error(const std::string& text);   ///< "// Error: text //" on stderr
void warning(const std::string& text); ///< "// Warning: text //" on stderr
void info(const std::string& text);    ///< the text itself on stdout
void result(const std::string& text);  ///< "// Result: text //" on stdout
void print(const std::string& text);   ///< as it is, no line end added, on stdout

/// Listeners get the bare text, in the order they were added. One may remove itself while called.
int addListener(std::function<void(Level, const std::string&)> listener);
void removeListener(int id);

} // namespace host::report
