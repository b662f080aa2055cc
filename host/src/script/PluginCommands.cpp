#include "script/PluginCommands.h"

#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "script/CommandLine.h"
#include "script/CommandState.h"
#include "script/Commands.h"
#include "script/Interpreter.h"

#include <maya/MArgList.h>

#include <memory>
#include <unordered_map>

namespace host::script {

namespace {

struct Registration {
    std::string name, owner;
    CommandCreator creator = nullptr;
    std::optional<MSyntax> syntax;
    int onQueue = 0; ///< objects the undo queue holds
};

using Registrations = std::unordered_map<std::string, std::shared_ptr<Registration>>;

Registrations& registrations() {
    static Registrations all;
    return all;
}

CommandExecution* currentExecution = nullptr;

// A command that has done its work; the undo queue owns it from here on.
class PluginCommandStep : public UndoStep {
public:
    PluginCommandStep(std::unique_ptr<MPxCommand> command, std::string label,
                      std::shared_ptr<Registration> registration)
        : command_(std::move(command)), label_(std::move(label)),
          registration_(std::move(registration)) {
        if (registration_)
            ++registration_->onQueue;
    }
    ~PluginCommandStep() override {
        command_.reset();
        if (registration_)
            --registration_->onQueue;
    }

    bool undo() override {
        const CommandExecution execution;
        return command_->undoIt() == MS::kSuccess;
    }
    bool redo() override {
        const CommandExecution execution;
        return command_->redoIt() == MS::kSuccess;
    }
    std::string label() const override { return label_; }

private:
    std::unique_ptr<MPxCommand> command_;
    std::string label_;
    std::shared_ptr<Registration> registration_;
};

std::string commandText(const CommandCall& call, const std::vector<Value>& arguments) {
    std::string text = call.name;
    for (const Value& argument : arguments) {
        const std::string word = argument.toString();
        const bool flag = argument.isString() && word.size() > 1 && word[0] == '-';
        text += ' ' + (argument.isString() && !flag ? quoted(word) : word);
    }
    return text;
}

Value callPluginCommand(const std::shared_ptr<Registration>& registration,
                        const CommandCall& call) {
    const std::vector<Value> arguments = call.flattened();
    const MArgList list = argumentList(arguments);
    // What does not fit the syntax never reaches the command.
    if (registration->syntax)
        parseArguments(SyntaxData::of(*registration->syntax), argumentValues(list));

    std::unique_ptr<MPxCommand> command(static_cast<MPxCommand*>(registration->creator()));
    if (!command)
        throw ScriptError("The command \"" + call.name + "\" could not be created.");
    const std::string text = commandText(call, arguments);
    CommandState& state = CommandState::of(*command);
    state.syntax = registration->syntax;
    state.text = text;

    CommandExecution execution;
    const MStatus status = command->doIt(list);
    if (status != MS::kSuccess) {
        ScriptError error(execution.lastError.empty() ? std::string(status.errorString().asUTF8())
                                                      : execution.lastError);
        error.reported = !execution.lastError.empty();
        throw error;
    }
    Value result = std::move(execution.result);
    if (command->isUndoable() && undoQueue().enabled())
        undoQueue().record(
            std::make_unique<PluginCommandStep>(std::move(command), text, registration));
    return result;
}

} // namespace

CommandExecution::CommandExecution() : outer_(currentExecution) {
    currentExecution = this;
    listener_ = report::addListener([this](report::Level level, const std::string& message) {
        if (level == report::Level::Error)
            lastError = message;
    });
}

CommandExecution::~CommandExecution() {
    report::removeListener(listener_);
    currentExecution = outer_;
}

CommandExecution* CommandExecution::current() {
    return currentExecution;
}

bool registerPluginCommand(const std::string& name, CommandCreator creator,
                           SyntaxCreator syntaxCreator, const std::string& owner) {
    if (name.empty() || !creator || commandExists(name))
        return false;
    auto registration = std::make_shared<Registration>();
    registration->name = name;
    registration->owner = owner;
    registration->creator = creator;
    if (syntaxCreator)
        registration->syntax = syntaxCreator();
    registrations()[name] = registration;
    registerCommand(name, [registration](const CommandCall& call) {
        return callPluginCommand(registration, call);
    });
    return true;
}

bool unregisterPluginCommand(const std::string& name) {
    const auto it = registrations().find(name);
    if (it == registrations().end())
        return false;
    const std::shared_ptr<Registration> registration = it->second;
    registrations().erase(it);
    unregisterCommand(name);
    if (registration->onQueue > 0)
        undoQueue().flush();
    return true;
}

bool hasPluginCommands(const std::string& owner) {
    for (const auto& [name, registration] : registrations())
        if (registration->owner == owner)
            return true;
    return false;
}

std::string pluginOfCommand(const std::string& name) {
    const auto it = registrations().find(name);
    return it == registrations().end() ? std::string() : it->second->owner;
}

void recordPluginCommand(MPxCommand* command, const std::string& label) {
    std::unique_ptr<MPxCommand> owned(command);
    if (owned && owned->isUndoable() && undoQueue().enabled())
        undoQueue().record(std::make_unique<PluginCommandStep>(std::move(owned), label, nullptr));
}

} // namespace host::script
