// setToolTo, currentCtx, contextInfo, selectContext, and the context commands of plug-ins.
#include "foundation/Report.h"
#include "plugins/PluginServices.h"
#include "scene/files/FileIO.h"
#include "script/CommandLine.h"
#include "script/Commands.h"
#include "script/Flags.h"
#include "script/Interpreter.h"
#include "ui/ContextState.h"
#include "ui/Tools.h"
#include "ui/UiCommands.h"

#include <maya/MStringArray.h>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

constexpr const char* kImageFlags[] = {"-image1", "-image2", "-image3"};

MPxContext& contextNamed(const std::string& name) {
    MPxContext* context = Tools::instance().find(name);
    if (!context)
        throw ScriptError("Context '" + name + "' not found.");
    return *context;
}

Value setToolToCommand(const CommandCall& call) {
    static const Flags syntax = Flags().objects(1, 1);
    const std::string name = syntax.parse(call).object();
    contextNamed(name);
    Tools::instance().setCurrent(name);
    return {};
}

Value currentCtxCommand(const CommandCall& call) {
    static const Flags syntax = Flags();
    syntax.parse(call);
    return Value(Tools::instance().currentName());
}

Value contextInfoCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-c", "-class")
                                    .flag("-esc", "-escapeContext")
                                    .flag("-ex", "-exists")
                                    .flag("-i1", "-image1")
                                    .flag("-i2", "-image2")
                                    .flag("-i3", "-image3")
                                    .flag("-t", "-title")
                                    .objects(1, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(Tools::instance().find(name) != nullptr);
    const MPxContext& context = contextNamed(name);
    const ContextState& state = ContextState::of(context);
    if (flags.isSet("-class")) {
        MString className;
        context.getClassName(className);
        // A tool that does not name its class goes by the command that made it.
        return Value(className.length() ? std::string(className.asUTF8())
                                        : Tools::instance().commandOf(name));
    }
    if (flags.isSet("-title"))
        return Value(state.title);
    if (flags.isSet("-escapeContext"))
        return Value(std::string("setToolTo ") + Tools::selectTool);
    for (int i = 0; i < 3; ++i) {
        if (flags.isSet(kImageFlags[i]))
            return Value(state.images[i]);
    }
    throw ScriptError("contextInfo: a flag that says what is asked for is needed.");
}

Value selectContextCommand(const CommandCall& call) {
    static const Flags syntax = Flags().flag("-ex", "-exists").objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    Tools& tools = Tools::instance();
    if (flags.isSet("-exists"))
        return Value(tools.find(flags.object()) != nullptr);
    const std::string name =
        flags.object().empty() ? tools.uniqueName("selectContext") : flags.object();
    if (tools.find(name))
        throw ScriptError("Object's name '" + name + "' is not unique.");
    tools.addSelectTool(name);
    return Value(name);
}

std::string firstObject(const MArgParser& parser) {
    MStringArray objects;
    parser.getObjects(objects);
    return objects.length() ? std::string(objects[0].asUTF8()) : std::string();
}

std::string makeContext(MPxContextCommand& command, const std::string& commandName,
                        const std::string& wanted) {
    Tools& tools = Tools::instance();
    const std::string name = wanted.empty() ? tools.uniqueName(commandName) : wanted;
    if (tools.find(name))
        throw ScriptError("Object's name '" + name + "' is not unique.");
    std::unique_ptr<MPxContext> context(command.makeObj());
    if (!context)
        throw ScriptError(commandName + ": the plug-in made no context.");
    tools.add(name, commandName, std::move(context));
    return name;
}

/// One call of a context command of a plug-in: makes a context, or edits or queries one.
Value contextCommand(const std::string& commandName, Tools::Creator creator,
                     const CommandCall& call) {
    const std::unique_ptr<MPxContextCommand> command(static_cast<MPxContextCommand*>(creator()));
    if (!command)
        throw ScriptError(commandName + ": the plug-in made no command.");
    const auto state = std::make_shared<ContextCall>();
    state->syntax.enableQuery(true);
    state->syntax.enableEdit(true);
    state->syntax.setObjectType(MSyntax::kStringObjects, 0, 1);
    state->syntax.addFlag("-ex", "-exists");
    state->syntax.addFlag("-i1", "-image1", MSyntax::kString);
    state->syntax.addFlag("-i2", "-image2", MSyntax::kString);
    state->syntax.addFlag("-i3", "-image3", MSyntax::kString);
    ContextCall::attach(*command, state);
    if (!command->appendSyntax())
        throw ScriptError(commandName + ": the plug-in failed to describe its flags.");

    const MArgList arguments = script::argumentList(call.flattened());
    script::parseArguments(script::SyntaxData::of(state->syntax),
                           script::argumentValues(arguments)); // throws, saying what is wrong
    MStatus status;
    state->parser = MArgParser(state->syntax, arguments, &status);
    if (!status)
        throw ScriptError(commandName + ": invalid arguments.");
    const MArgParser& parser = state->parser;
    std::string name = firstObject(parser);
    if (parser.isFlagSet("-exists"))
        return Value(Tools::instance().find(name) != nullptr);

    const bool makes = !parser.isQuery() && !parser.isEdit();
    if (makes)
        name = makeContext(*command, commandName, name);
    MPxContext& context = contextNamed(name);
    if (parser.isQuery()) {
        for (int i = 0; i < 3; ++i) {
            if (parser.isFlagSet(kImageFlags[i]))
                return Value(ContextState::of(context).images[i]);
        }
        if (!command->doQueryFlags())
            throw ScriptError(commandName + ": the query failed.");
        return state->result;
    }
    for (int i = 0; i < 3; ++i) {
        if (parser.isFlagSet(kImageFlags[i]))
            context.setImage(parser.flagArgumentString(kImageFlags[i], 0),
                             static_cast<MPxContext::ImageIndex>(i));
    }
    if (!command->doEditFlags())
        throw ScriptError(commandName + ": the edit failed.");
    return makes ? Value(name) : Value();
}

MStatus registerContextCommand(const std::string& name, PluginServices::Creator creator,
                               const std::string& toolCommand, PluginServices::Creator,
                               PluginServices::SyntaxCreator) {
    if (!toolCommand.empty()) {
        report::error("registerContextCommand: tool commands (MPxToolCommand) are not supported: " +
                      toolCommand);
        return MStatus::kNotImplemented;
    }
    if (script::commandExists(name) || !Tools::instance().registerCommand(name, creator))
        return MStatus::kInvalidParameter;
    script::registerCommand(name, [name, creator](const CommandCall& call) {
        return contextCommand(name, creator, call);
    });
    return MStatus::kSuccess;
}

MStatus deregisterContextCommand(const std::string& name, const std::string&) {
    if (!Tools::instance().deregisterCommand(name))
        return MStatus::kInvalidParameter;
    script::unregisterCommand(name);
    return MStatus::kSuccess;
}

} // namespace

void registerToolCommands() {
    script::registerCommand("setToolTo", setToolToCommand);
    script::registerCommand("currentCtx", currentCtxCommand);
    script::registerCommand("contextInfo", contextInfoCommand);
    script::registerCommand("selectContext", selectContextCommand);
    script::setGlobalVariable("gSelect", Value(Tools::selectTool));

    PluginServices& services = pluginServices();
    services.registerContextCommand = registerContextCommand;
    services.deregisterContextCommand = deregisterContextCommand;
    services.leaveToolsOf = [](const std::string& contextCommand) {
        Tools::instance().leaveToolsOf(contextCommand);
    };
    static const int beforeReplaced =
        fileIO().addBeforeSceneReplaced([] { Tools::instance().leave(); });
    (void)beforeReplaced;
}

} // namespace host
