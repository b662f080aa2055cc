#pragma once

#include <string>

/// Script jobs: scripts that run at idle after an event, or after a condition changed. A job runs
/// once per idle however often it was triggered meanwhile. None exist in batch mode, and events
/// (not conditions) are not forwarded while the condition "playingBack" holds.
namespace host::script {

/// To be called when a control or window is gone: ends the jobs that have it as parent and runs
/// the ones that wait for its deletion.
void uiDeleted(const std::string& name);

/// Ends all jobs, protected ones included; at shutdown and in tests.
void killAllScriptJobs();

} // namespace host::script
