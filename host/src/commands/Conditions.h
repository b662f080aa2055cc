#pragma once

#include <functional>
#include <string>
#include <vector>

/// Named states that scripts can ask for and watch: "playingBack", "SomethingSelected", …
namespace host::conditions {

/// Declares a condition with its initial state. Declaring it again changes nothing.
void declare(const std::string& name, bool state = false);

bool exists(const std::string& name);
bool state(const std::string& name);
std::vector<std::string> names(); ///< sorted

/// Sets the state and tells the listeners when it changed; declares the condition if need be.
void set(const std::string& name, bool state);

/// Calls back on changes of any condition with its name and new state, at once, on the caller's
/// stack. Returns an id for `removeListener`.
int addListener(std::function<void(const std::string&, bool)> listener);
void removeListener(int id);

} // namespace host::conditions
