#pragma once

#include <functional>
#include <string>

/// Script jobs: scripts that run at idle after an event, or after a condition changed. A job runs
/// once per idle however often it was triggered meanwhile. None exist in batch mode, and events
/// (not conditions) are not forwarded while the condition "playingBack" holds.
namespace host::script {

/// Gives the full path of a control or window, "" when there is none of that name.
using ElementPath = std::function<std::string(const std::string& name)>;
/// The interface sets this; without it the names that jobs are given stand for themselves.
void setElementPath(ElementPath path);

/// To be called when a control or window is gone, with its full path: ends the jobs that have it
/// as parent and runs the ones that wait for its deletion.
void uiDeleted(const std::string& path);

/// Ends all jobs, protected ones included; at shutdown and in tests.
void killAllScriptJobs();

} // namespace host::script
