// Scene events by name: MEventMessage, script jobs and the interface listen to them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace host::events {

/// The names there are, as the platform spells them.
const std::vector<std::string>& names();
bool isKnown(const std::string& name);

/// Tells the listeners, in the order they were added. One that is removed meanwhile is not called.
void emit(const std::string& name);

int listen(std::function<void(const std::string&)> listener); ///< to all
int listen(const std::string& name, std::function<void()> listener);
void removeListener(int id);
std::size_t listenerCount();

} // namespace host::events

// Scene messages by number: MSceneMessage listens to them. Ids are of the same kind as those of
// events.
namespace host::messages {

int listen(int message, std::function<void()> listener);
int listenCheck(int message, std::function<bool()> listener); ///< false refuses
void tell(int message);
/// False when a listener refuses; all are asked.
bool ask(int message);

} // namespace host::messages

// Anything that may change what a view shows: attributes, hierarchy, time, selection.
namespace host::changes {

int listen(std::function<void()> listener);
void removeListener(int id);
void notify();

} // namespace host::changes
