#include "ui/Tools.h"

#include "foundation/Events.h"
#include "foundation/Report.h"
#include "ui/ContextState.h"

namespace host {

const char* const Tools::selectTool = "selectSuperContext";

namespace {

class SelectContext : public MPxContext {
public:
    SelectContext() {
        setTitleString("Select Tool");
        setHelpString("Select Tool: choose another tool to draw or edit");
    }

    MString stringClassName() const override { return "selectTool"; }
};

} // namespace

Tools& Tools::instance() {
    static Tools tools;
    return tools;
}

bool Tools::registerCommand(const std::string& name, Creator creator) {
    return commands_.emplace(name, creator).second;
}

bool Tools::deregisterCommand(const std::string& name) {
    if (!commands_.count(name))
        return false;
    leaveToolsOf(name);
    for (auto it = contexts_.begin(); it != contexts_.end();)
        it = it->second.command == name ? contexts_.erase(it) : std::next(it);
    commands_.erase(name);
    return true;
}

void Tools::add(const std::string& name, const std::string& command,
                std::unique_ptr<MPxContext> context) {
    contexts_[name] = {command, std::move(context)};
}

void Tools::addSelectTool(const std::string& name) {
    if (!find(name))
        add(name, "selectContext", std::make_unique<SelectContext>());
    if (currentName_.empty())
        setCurrent(name);
}

MPxContext* Tools::find(const std::string& name) const {
    const auto it = contexts_.find(name);
    return it == contexts_.end() ? nullptr : it->second.context.get();
}

std::string Tools::commandOf(const std::string& name) const {
    const auto it = contexts_.find(name);
    return it == contexts_.end() ? std::string() : it->second.command;
}

std::string Tools::uniqueName(const std::string& stem) const {
    for (int number = 1;; ++number) {
        const std::string name = stem + std::to_string(number);
        if (!contexts_.count(name))
            return name;
    }
}

std::vector<std::string> Tools::names() const {
    std::vector<std::string> result;
    for (const auto& entry : contexts_)
        result.push_back(entry.first);
    return result;
}

bool Tools::remove(const std::string& name) {
    if (name == selectTool || !find(name))
        return false;
    if (name == currentName_)
        leave();
    contexts_.erase(name);
    return true;
}

bool Tools::setCurrent(const std::string& name) {
    MPxContext* next = find(name);
    if (!next)
        return false;
    if (switching_) {
        // A tool that chooses another one while it is being set up or left would be left twice.
        report::error("setToolTo: a change of tool is under way; \"" + name + "\" is ignored");
        return false;
    }
    switching_ = true;
    if (MPxContext* old = current())
        old->toolOffCleanup();
    currentName_ = name;
    MEvent event;
    next->toolOnSetup(event);
    switching_ = false;
    changed(next);
    events::emit("ToolChanged");
    events::emit("PostToolChanged");
    return true;
}

void Tools::leaveToolsOf(const std::string& command) {
    if (current() && commandOf(currentName_) == command)
        leave();
}

void Tools::leave() {
    if (!currentName_.empty() && currentName_ != selectTool)
        setCurrent(selectTool);
}

void Tools::clear() {
    if (MPxContext* old = current()) {
        currentName_.clear();
        old->toolOffCleanup();
    }
    contexts_.clear();
    changed(nullptr);
}

int Tools::addListener(std::function<void()> listener) {
    listeners_[++lastListener_] = std::move(listener);
    return lastListener_;
}

void Tools::removeListener(int id) {
    listeners_.erase(id);
}

void Tools::changed(const MPxContext* context) {
    if (switching_ || context != current())
        return;
    const auto listeners = listeners_; // a listener may remove itself
    for (const auto& entry : listeners)
        entry.second();
}

} // namespace host
