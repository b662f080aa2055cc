#pragma once

#include "commands/NodeWatch.h"
#include "script/Value.h"

#include <map>
#include <optional>
#include <string>

namespace host::script {

struct ScriptJob {
    std::string trigger; ///< long flag name without dash: event, conditionChange, …
    std::string name;    ///< of the event, condition, control, node or attribute
    std::string script;
    std::string parent;
    std::optional<NodeWatch> watch; ///< of the triggers that look at nodes
    bool runOnce = false, isProtected = false, permanent = false, killWithScene = false;
    bool pending = false;
};

/// The jobs of the process. What triggers a job only marks it; marked jobs run at idle, each once.
class JobTable {
public:
    static JobTable& instance();

    int add(ScriptJob job);
    bool contains(int number) const { return jobs_.count(number) > 0; }
    Strings list() const;

    /// Throws ScriptError for a permanent job, and for a protected one unless forced. A number
    /// without a job is fine.
    void kill(int number, bool force);
    /// Those that can be killed; all with `permanentToo`.
    void killAll(bool force, bool permanentToo);
    void killChildrenOf(const std::string& parent, bool force);

    /// A control or window is gone: its jobs end, those that wait for that are marked.
    void elementDeleted(const std::string& path);

private:
    void listen();
    void happened(const std::string& event);
    void trigger(const std::string& kind, const std::string& name);
    void lookAtNodes();
    void schedule();
    void runPending();

    std::map<int, ScriptJob> jobs_;
    int next_ = 1;
    bool listening_ = false, scheduled_ = false, looking_ = false;
};

} // namespace host::script
