#include "script/ScriptJobs.h"

#include "foundation/Idle.h"
#include "scene/Events.h"
#include "script/CallHelpers.h"
#include "script/Conditions.h"
#include "script/CoreCommands.h"
#include "script/Flags.h"
#include "script/Interpreter.h"

#include <map>

namespace host::script {

namespace {

struct Job {
    std::string trigger; ///< long flag name without dash: event, conditionChange, …
    std::string name;    ///< of the event, condition or control
    std::string script;
    std::string parent;
    bool runOnce = false, isProtected = false, permanent = false, killWithScene = false;
    bool pending = false;
};

class JobTable {
public:
    static JobTable& instance() {
        static JobTable table;
        return table;
    }

    int add(Job job, bool replacePrevious) {
        if (replacePrevious)
            for (auto it = jobs_.begin(); it != jobs_.end();)
                it = it->second.parent == job.parent ? jobs_.erase(it) : std::next(it);
        listen();
        const int number = next_++;
        jobs_[number] = std::move(job);
        return number;
    }

    bool contains(int number) const { return jobs_.count(number) > 0; }

    // False when the job is protected and not forced, or cannot be killed at all.
    bool kill(int number, bool force) {
        const auto it = jobs_.find(number);
        if (it == jobs_.end())
            return true;
        if (it->second.permanent || (it->second.isProtected && !force))
            return false;
        jobs_.erase(it);
        return true;
    }

    void killAll(bool force, bool permanentToo) {
        for (auto it = jobs_.begin(); it != jobs_.end();) {
            const Job& job = it->second;
            const bool stays = (job.permanent && !permanentToo) || (job.isProtected && !force);
            it = stays ? std::next(it) : jobs_.erase(it);
        }
    }

    Strings list() const {
        Strings lines;
        for (const auto& [number, job] : jobs_) {
            std::string line = std::to_string(number) + ": \"-" + job.trigger + "\" ";
            if (!job.name.empty())
                line += quoted(job.name) + " ";
            lines.push_back(line + quoted(job.script));
        }
        return lines;
    }

    void trigger(const std::string& kind, const std::string& name) {
        for (auto& [number, job] : jobs_)
            if (job.trigger == kind && job.name == name)
                job.pending = true;
        schedule();
    }

    void parentGone(const std::string& name) {
        for (auto it = jobs_.begin(); it != jobs_.end();)
            it = it->second.parent == name ? jobs_.erase(it) : std::next(it);
        trigger("uiDeleted", name);
    }

private:
    void listen() {
        if (listening_)
            return;
        listening_ = true;
        events::listen([this](const std::string& name) { happened(name); });
        conditions::addListener([this](const std::string& name, bool state) {
            trigger("conditionChange", name);
            trigger(state ? "conditionTrue" : "conditionFalse", name);
        });
    }

    void happened(const std::string& name) {
        if (name == "NewSceneOpened" || name == "SceneOpened")
            for (auto it = jobs_.begin(); it != jobs_.end();)
                it = it->second.killWithScene ? jobs_.erase(it) : std::next(it);
        if (conditions::state("playingBack"))
            return;
        trigger("event", name);
        if (name == "timeChanged")
            trigger("timeChange", "");
    }

    void schedule() {
        if (scheduled_)
            return;
        for (const auto& [number, job] : jobs_)
            scheduled_ = scheduled_ || job.pending;
        if (scheduled_)
            idle::post([this] { runPending(); });
    }

    // A job may end itself or others, and trigger any: those wait for the next idle.
    void runPending() {
        scheduled_ = false;
        std::vector<int> due;
        for (auto& [number, job] : jobs_) {
            if (job.pending)
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
    }

    std::map<int, Job> jobs_;
    int next_ = 1;
    bool listening_ = false, scheduled_ = false;
};

const Flags& jobFlags() {
    using K = ArgKind;
    static const Flags flags = Flags()
                                   .flag("-e", "-event", {K::String, K::String})
                                   .flag("-cc", "-conditionChange", {K::String, K::String})
                                   .flag("-ct", "-conditionTrue", {K::String, K::String})
                                   .flag("-cf", "-conditionFalse", {K::String, K::String})
                                   .flag("-uid", "-uiDeleted", {K::String, K::String})
                                   .flag("-tc", "-timeChange", {K::String})
                                   .flag("-ro", "-runOnce", {K::Boolean})
                                   .flag("-p", "-parent", {K::String})
                                   .flag("-rp", "-replacePrevious")
                                   .flag("-cu", "-compressUndo", {K::Boolean})
                                   .flag("-kws", "-killWithScene")
                                   .flag("-pro", "-protected")
                                   .flag("-per", "-permanent")
                                   .flag("-k", "-kill", {K::Int})
                                   .flag("-ka", "-killAll")
                                   .flag("-f", "-force")
                                   .flag("-ex", "-exists", {K::Int})
                                   .flag("-lj", "-listJobs")
                                   .flag("-le", "-listEvents")
                                   .flag("-lc", "-listConditions");
    return flags;
}

Value addJob(const ParsedFlags& parsed) {
    Job job;
    for (const char* kind :
         {"event", "conditionChange", "conditionTrue", "conditionFalse", "uiDeleted"}) {
        if (!parsed.isSet(kind))
            continue;
        job.trigger = kind;
        job.name = parsed.getString(kind);
        job.script = parsed.getString(kind, {}, 1);
    }
    if (parsed.isSet("timeChange")) {
        job.trigger = "timeChange";
        job.script = parsed.getString("timeChange");
    }
    if (job.trigger.empty())
        throw ScriptError("scriptJob needs an event or a condition.");
    if (job.trigger == "event" && !events::isKnown(job.name))
        throw ScriptError("Unknown event \"" + job.name + "\".");
    if (job.trigger.compare(0, 9, "condition") == 0 && !conditions::exists(job.name))
        throw ScriptError("Unknown condition \"" + job.name + "\".");
    job.parent = parsed.getString("parent");
    job.runOnce = parsed.getBool("runOnce");
    job.isProtected = parsed.isSet("protected");
    job.permanent = parsed.isSet("permanent");
    job.killWithScene = parsed.isSet("killWithScene");
    return JobTable::instance().add(std::move(job), parsed.isSet("replacePrevious"));
}

Value scriptJob(const CommandCall& call) {
    const ParsedFlags parsed = jobFlags().parse(call);
    JobTable& jobs = JobTable::instance();
    if (parsed.isSet("listEvents"))
        return Strings(events::names());
    if (parsed.isSet("listConditions"))
        return conditions::names();
    if (parsed.isSet("listJobs"))
        return jobs.list();
    if (parsed.isSet("exists"))
        return jobs.contains(parsed.getInt("exists"));
    if (batchMode())
        return 0;
    if (parsed.isSet("kill")) {
        if (!jobs.kill(parsed.getInt("kill"), parsed.isSet("force")))
            throw ScriptError("Script job " + std::to_string(parsed.getInt("kill")) +
                              " is protected.");
        return {};
    }
    if (parsed.isSet("killAll")) {
        jobs.killAll(parsed.isSet("force"), false);
        return {};
    }
    return addJob(parsed);
}

Value isTrue(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string name = call.arguments[0].toString();
    if (!conditions::exists(name))
        throw ScriptError("Unknown condition \"" + name + "\".");
    return conditions::state(name);
}

Value condition(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-st", "-state", {ArgKind::Boolean})
                                   .flag("-i", "-initialize")
                                   .objects(1, 1)
                                   .query()
                                   .edit();
    const ParsedFlags parsed = flags.parse(call);
    const std::string name = parsed.object();
    if (!parsed.isCreate() && !conditions::exists(name))
        throw ScriptError("Unknown condition \"" + name + "\".");
    if (parsed.isQuery())
        return conditions::state(name);
    if (parsed.isCreate())
        conditions::declare(name);
    if (parsed.isSet("state"))
        conditions::set(name, parsed.getBool("state"));
    return {};
}

} // namespace

void uiDeleted(const std::string& name) {
    JobTable::instance().parentGone(name);
}

void killAllScriptJobs() {
    JobTable::instance().killAll(true, true);
}

void registerScriptJobCommands() {
    conditions::declare("playingBack");
    conditions::declare("SomethingSelected");
    registerCommand("scriptJob", scriptJob);
    registerCommand("isTrue", isTrue);
    registerCommand("condition", condition);
}

} // namespace host::script
