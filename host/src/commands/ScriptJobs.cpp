#include "commands/ScriptJobs.h"

#include "commands/Conditions.h"
#include "commands/CoreCommands.h"
#include "commands/JobTable.h"
#include "foundation/Events.h"
#include "foundation/UndoQueue.h"
#include "script/CallHelpers.h"
#include "script/Flags.h"
#include "script/Interpreter.h"

#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>

#include <map>

namespace host::script {

namespace {

ElementPath& elementPath() {
    static ElementPath path;
    return path;
}

/// Which flag makes a job look at nodes, and at what.
const std::map<std::string, NodeWatch::Kind>& nodeTriggers() {
    using Kind = NodeWatch::Kind;
    static const std::map<std::string, Kind> kinds = {
        {"attributeChange", Kind::AttributeChange},   {"attributeAdded", Kind::AttributeAdded},
        {"attributeDeleted", Kind::AttributeDeleted}, {"connectionChange", Kind::ConnectionChange},
        {"nodeNameChanged", Kind::NodeNameChanged},   {"nodeDeleted", Kind::NodeDeleted}};
    return kinds;
}

const Flags& jobFlags() {
    using K = ArgKind;
    static const Flags flags = Flags()
                                   .flag("-e", "-event", {K::String, K::String})
                                   .flag("-cc", "-conditionChange", {K::String, K::String})
                                   .flag("-ct", "-conditionTrue", {K::String, K::String})
                                   .flag("-cf", "-conditionFalse", {K::String, K::String})
                                   .flag("-uid", "-uiDeleted", {K::String, K::String})
                                   .flag("-ac", "-attributeChange", {K::String, K::String})
                                   .flag("-aa", "-attributeAdded", {K::String, K::String})
                                   .flag("-ad", "-attributeDeleted", {K::String, K::String})
                                   .flag("-con", "-connectionChange", {K::String, K::String})
                                   .flag("-nd", "-nodeDeleted", {K::String, K::String})
                                   .flag("-nnc", "-nodeNameChanged", {K::String, K::String})
                                   .flag("-ie", "-idleEvent", {K::String})
                                   .flag("-alc", "-allChildren")
                                   .flag("-di", "-disregardIndex")
                                   .flag("-tc", "-timeChange", {K::String})
                                   .flag("-ro", "-runOnce", {K::Boolean})
                                   .flag("-p", "-parent", {K::String})
                                   .flag("-rp", "-replacePrevious")
                                   .flag("-cu", "-compressUndo", {K::Boolean})
                                   .flag("-kws", "-killWithScene")
                                   .flag("-pro", "-protected")
                                   .flag("-per", "-permanent")
                                   .flag("-k", "-kill", {K::Int})
                                   .multiUse("-k")
                                   .flag("-ka", "-killAll")
                                   .flag("-f", "-force")
                                   .flag("-ex", "-exists", {K::Int})
                                   .flag("-lj", "-listJobs")
                                   .flag("-le", "-listEvents")
                                   .flag("-lc", "-listConditions");
    return flags;
}

std::string existingElement(const std::string& name) {
    if (!elementPath())
        return name;
    const std::string path = elementPath()(name);
    if (path.empty())
        throw ScriptError("Object '" + name + "' not found.");
    return path;
}

/// What sets the job off: exactly one of the flags.
void setTrigger(const ParsedFlags& parsed, ScriptJob& job) {
    Strings kinds = {"event",      "conditionChange", "conditionTrue", "conditionFalse",
                     "timeChange", "idleEvent",       "uiDeleted"};
    for (const auto& [name, kind] : nodeTriggers())
        kinds.push_back(name);
    for (const std::string& kind : kinds) {
        if (!parsed.isSet(kind))
            continue;
        if (!job.trigger.empty())
            throw ScriptError("scriptJob takes one of -" + job.trigger + " and -" + kind + ".");
        job.trigger = kind;
        const bool named = kind != "timeChange" && kind != "idleEvent";
        job.name = named ? parsed.getString(kind) : std::string();
        job.script = parsed.getString(kind, {}, named ? 1 : 0);
    }
    if (job.trigger.empty())
        throw ScriptError("scriptJob needs an event or a condition.");
    if (job.trigger == "event" && !events::isKnown(job.name))
        throw ScriptError("Unknown event \"" + job.name + "\".");
    if (job.trigger.compare(0, 9, "condition") == 0 && !conditions::exists(job.name))
        throw ScriptError("Unknown condition \"" + job.name + "\".");
    if (job.trigger == "uiDeleted")
        job.name = existingElement(job.name);
    const auto node = nodeTriggers().find(job.trigger);
    if (node != nodeTriggers().end())
        job.watch.emplace(node->second, job.name);
}

Value addJob(const ParsedFlags& parsed) {
    ScriptJob job;
    setTrigger(parsed, job);
    if (parsed.isSet("parent"))
        job.parent = existingElement(parsed.getString("parent"));
    else if (parsed.isSet("replacePrevious"))
        throw ScriptError("scriptJob: -replacePrevious needs -parent.");
    job.runOnce = parsed.getBool("runOnce");
    job.isProtected = parsed.isSet("protected");
    job.permanent = parsed.isSet("permanent");
    job.killWithScene = parsed.isSet("killWithScene");
    JobTable& jobs = JobTable::instance();
    if (parsed.isSet("replacePrevious"))
        jobs.killChildrenOf(job.parent, parsed.isSet("force"));
    return jobs.add(std::move(job));
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
        for (int use = 0; use < parsed.uses("kill"); ++use)
            jobs.kill(parsed.getInt("kill", 0, 0, use), parsed.isSet("force"));
        return {};
    }
    if (parsed.isSet("killAll")) {
        jobs.killAll(parsed.isSet("force"), false);
        return {};
    }
    return addJob(parsed);
}

/// Keeps the conditions that follow from the state of the scene up to date.
void followScene() {
    static bool following = false;
    if (following)
        return;
    following = true;
    for (const char* name : {"SomethingSelected", "UndoAvailable", "RedoAvailable"})
        conditions::declare(name);
    const auto selection = [] {
        MSelectionList list;
        MGlobal::getActiveSelectionList(list);
        conditions::set("SomethingSelected", list.length() > 0);
    };
    for (const char* event : {"SelectionChanged", "NewSceneOpened", "SceneOpened"})
        events::listen(event, selection);
    undoQueue().setListener([] {
        conditions::set("UndoAvailable", undoQueue().canUndo());
        conditions::set("RedoAvailable", undoQueue().canRedo());
    });
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

void setElementPath(ElementPath path) {
    elementPath() = std::move(path);
}

void uiDeleted(const std::string& path) {
    JobTable::instance().elementDeleted(path);
}

void killAllScriptJobs() {
    JobTable::instance().killAll(true, true);
}

void registerScriptJobCommands() {
    conditions::declare("playingBack");
    followScene();
    registerCommand("scriptJob", scriptJob);
    registerCommand("isTrue", isTrue);
    registerCommand("condition", condition);
}

} // namespace host::script
