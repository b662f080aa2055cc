#include "script/LanguageCommands.h"

#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "script/CallHelpers.h"
#include "script/Flags.h"
#include "script/Interpreter.h"
#include "script/InterpreterState.h"
#include "script/Operators.h"
#include "script/Utf8.h"

namespace host::script {

namespace {

std::string joined(const CommandCall& call) {
    std::string text;
    for (const Value& argument : call.flattened()) {
        if (!text.empty())
            text += ' ';
        text += argument.toString();
    }
    return text;
}

Value print(const CommandCall& call) {
    requireArguments(call, 1);
    const Value& value = call.arguments[0];
    if (value.type() == Type::Matrix) {
        report::print(value.display() + "\n");
        return {};
    }
    if (!value.isArray()) {
        report::print(value.isNone() ? std::string() : value.toString());
        return {};
    }
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i)
        text += value.element(i).toString() + "\n";
    report::print(text);
    return {};
}

const Flags& messageFlags() {
    static const Flags flags = Flags()
                                   .flag("-sl", "-showLineNumber", {ArgKind::Boolean})
                                   .flag("-n", "-noContext")
                                   .objects(1, 1);
    return flags;
}

Value error(const CommandCall& call) {
    throw ScriptError(messageFlags().parse(call).object());
}

Value warning(const CommandCall& call) {
    const ParsedFlags parsed = messageFlags().parse(call);
    ScriptError message(parsed.object());
    if (parsed.getBool("-showLineNumber")) {
        message.file = call.file;
        message.line = call.line;
    }
    report::warning(message.text());
    return {};
}

// An error in text that came from no file is best found where the text was evaluated.
Value evaluateText(const CommandCall& call, const std::string& text, bool echo) {
    try {
        if (!echo)
            return execute(text);
        report::print(text + "\n");
        const Value result = execute(text);
        if (!result.isNone())
            report::result(result.display());
        return result;
    } catch (ScriptError& error) {
        if (error.file.empty() && !call.file.empty()) {
            error.file = call.file;
            error.line = call.line;
        }
        throw;
    }
}

Value eval(const CommandCall& call) {
    return evaluateText(call, joined(call), false);
}
Value evalEcho(const CommandCall& call) {
    return evaluateText(call, joined(call), true);
}

Value evalDeferred(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-lp", "-lowestPriority")
                                   .flag("-lst", "-list")
                                   .flag("-en", "-evaluateNext")
                                   .objects(1, -1);
    const ParsedFlags parsed = flags.parse(call);
    std::string text;
    for (const std::string& part : parsed.objectNames())
        text += (text.empty() ? "" : " ") + part;
    const auto task = [text] { run(text); };
    if (parsed.isSet("-lowestPriority"))
        idle::post([task] { idle::post(task); }); // behind everything that waits already
    else
        idle::post(task);
    return {};
}

Value source(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string name = call.arguments[0].toString();
    const std::string path = findScript(name);
    if (path.empty())
        throw ScriptError("Cannot find file \"" + name + "\" for source statement.");
    executeFile(path);
    return {};
}

Value exists(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string name = call.arguments[0].toString();
    return procedureExists(name) || commandExists(name) || name == "catch" ||
           name == "catchQuiet" || !findScript(name + ".mel").empty();
}

Value whatIs(const CommandCall& call) {
    requireArguments(call, 1);
    const std::string name = call.arguments[0].toString();
    const auto& state = InterpreterState::instance();
    if (const auto it = state.procedures.find(name); it != state.procedures.end())
        return it->second->file.empty() ? "Mel procedure entered interactively."
                                        : "Mel procedure found in: " + it->second->file;
    if (state.natives.count(name))
        return "Mel procedure found in: vellum-host";
    if (commandExists(name) || name == "catch" || name == "catchQuiet")
        return "Command";
    const std::string path = findScript(name + ".mel");
    return path.empty() ? std::string("Unknown") : "Script found in: " + path;
}

Value size(const CommandCall& call) {
    requireArguments(call, 1);
    const Value& value = call.arguments[0];
    if (value.isArray())
        return static_cast<int>(value.size());
    return static_cast<int>(utf8::length(value.toString()));
}

Value clear(const CommandCall& call) {
    requireArguments(call, 1);
    Value& array = arrayVariable(call, 0);
    array = Value::ofType(array.type());
    return {};
}

} // namespace

void registerLanguageCommands() {
    registerCommand("print", print);
    registerCommand("error", error);
    registerCommand("warning", warning);
    registerCommand("eval", eval);
    registerCommand("evalEcho", evalEcho);
    registerCommand("evalDeferred", evalDeferred);
    registerCommand("source", source);
    registerCommand("exists", exists);
    registerCommand("whatIs", whatIs);
    registerCommand("size", size);
    registerCommand("clear", clear);
}

} // namespace host::script
