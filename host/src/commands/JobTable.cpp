#include "commands/JobTable.h"

#include "commands/Conditions.h"
#include "foundation/Events.h"
#include "foundation/Idle.h"
#include "script/Interpreter.h"

#include <algorithm>

namespace host::script {

namespace {

template <class Predicate> void eraseJobs(std::map<int, ScriptJob>& jobs, Predicate goes) {
    for (auto it = jobs.begin(); it != jobs.end();)
        it = goes(it->second) ? jobs.erase(it) : std::next(it);
}

/// Jobs that are due whenever there is nothing else to do.
bool isIdleJob(const ScriptJob& job) {
    return job.trigger == "idleEvent" || (job.trigger == "event" && job.name.rfind("idle", 0) == 0);
}

} // namespace

JobTable& JobTable::instance() {
    static JobTable table;
    return table;
}

int JobTable::add(ScriptJob job) {
    listen();
    const int number = next_++;
    jobs_.emplace(number, std::move(job));
    schedule();
    return number;
}

Strings JobTable::list() const {
    Strings lines;
    for (const auto& [number, job] : jobs_) {
        std::string line = std::to_string(number) + ": ";
        line += job.permanent ? "\"-permanent\" " : job.isProtected ? "\"-protected\" " : "";
        line += "\"-" + job.trigger + "\" ";
        if (!job.name.empty())
            line += quoted(job.name) + " ";
        lines.push_back(line + quoted(job.script));
    }
    return lines;
}

void JobTable::kill(int number, bool force) {
    const auto it = jobs_.find(number);
    if (it == jobs_.end())
        return;
    if (it->second.permanent)
        throw ScriptError("Script job " + std::to_string(number) + " is permanent.");
    if (it->second.isProtected && !force)
        throw ScriptError("Script job " + std::to_string(number) + " is protected.");
    jobs_.erase(it);
}

void JobTable::killAll(bool force, bool permanentToo) {
    eraseJobs(jobs_, [&](const ScriptJob& job) {
        return (!job.permanent || permanentToo) && (!job.isProtected || force);
    });
}

void JobTable::killChildrenOf(const std::string& parent, bool force) {
    eraseJobs(jobs_, [&](const ScriptJob& job) {
        return job.parent == parent && !job.permanent && (!job.isProtected || force);
    });
}

void JobTable::elementDeleted(const std::string& path) {
    eraseJobs(jobs_, [&](const ScriptJob& job) { return job.parent == path; });
    for (auto& [number, job] : jobs_)
        job.runOnce = job.runOnce || (job.trigger == "uiDeleted" && job.name == path);
    trigger("uiDeleted", path);
}

void JobTable::listen() {
    if (listening_)
        return;
    listening_ = true;
    events::listen([this](const std::string& name) { happened(name); });
    conditions::addListener([this](const std::string& name, bool state) {
        trigger("conditionChange", name);
        trigger(state ? "conditionTrue" : "conditionFalse", name);
    });
    // A change may be one of many: the nodes are looked at when all are done.
    changes::listen([this] {
        if (looking_ || std::none_of(jobs_.begin(), jobs_.end(),
                                     [](const auto& entry) { return bool(entry.second.watch); }))
            return;
        looking_ = true;
        schedule();
    });
}

void JobTable::happened(const std::string& event) {
    if (event == "NewSceneOpened" || event == "SceneOpened")
        eraseJobs(jobs_, [](const ScriptJob& job) { return job.killWithScene; });
    if (conditions::state("playingBack"))
        return;
    trigger("event", event);
    if (event == "timeChanged")
        trigger("timeChange", "");
}

void JobTable::trigger(const std::string& kind, const std::string& name) {
    for (auto& [number, job] : jobs_)
        if (job.trigger == kind && job.name == name)
            job.pending = true;
    schedule();
}

void JobTable::lookAtNodes() {
    looking_ = false;
    const bool playing = conditions::state("playingBack");
    for (auto it = jobs_.begin(); it != jobs_.end();) {
        ScriptJob& job = it->second;
        if (job.watch && job.watch->happened() && !playing)
            job.pending = true;
        // Without its node a job has nothing left to wait for, even if undo brings the node back.
        const bool over = job.watch && !job.watch->nodeExists();
        job.runOnce = job.runOnce || (over && job.pending);
        it = over && !job.pending ? jobs_.erase(it) : std::next(it);
    }
}

void JobTable::schedule() {
    if (scheduled_)
        return;
    scheduled_ = looking_ || std::any_of(jobs_.begin(), jobs_.end(), [](const auto& entry) {
                     return entry.second.pending || isIdleJob(entry.second);
                 });
    if (scheduled_)
        idle::post([this] { runPending(); });
}

// A job may end itself or others, and trigger any: those wait for the next idle.
void JobTable::runPending() {
    scheduled_ = false;
    if (looking_)
        lookAtNodes();
    std::vector<int> due;
    for (auto& [number, job] : jobs_) {
        if (job.pending || isIdleJob(job))
            due.push_back(number);
        job.pending = false;
    }
    for (const int number : due) {
        const auto it = jobs_.find(number);
        if (it == jobs_.end())
            continue;
        const std::string script = it->second.script;
        if (it->second.runOnce)
            jobs_.erase(it);
        run(script);
    }
    schedule();
}

} // namespace host::script
