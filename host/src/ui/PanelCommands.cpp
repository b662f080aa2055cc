// modelPanel, panel, getPanel, setFocus, lookThroughModelPanel.
#include "render/Views.h"
#include "script/Commands.h"
#include "script/Flags.h"
#include "script/Interpreter.h"
#include "ui/CommandSupport.h"
#include "ui/ControlFlags.h"
#include "ui/Elements.h"
#include "ui/ModelPanel.h"
#include "ui/UiCommands.h"

#include <QMenuBar>

#include <memory>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

ModelPanel& panelNamed(const std::string& name) {
    ModelPanel* panel = ModelPanel::find(command::text(name));
    if (!panel)
        throw ScriptError("Object '" + name + "' not found.");
    return *panel;
}

void lookThrough(ModelPanel& panel, const std::string& camera) {
    if (!panel.lookThrough(command::text(camera)))
        throw ScriptError("No camera '" + camera + "' to look through.");
}

const Flags& panelFlags() {
    static const Flags syntax = Flags()
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-cam", "-camera", {ArgKind::String})
                                    .flag("-l", "-label", {ArgKind::String})
                                    .flag("-mbv", "-menuBarVisible", {ArgKind::Boolean})
                                    .flag("-me", "-modelEditor")
                                    .flag("-ctl", "-control")
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    return syntax;
}

void setPanel(ModelPanel& panel, const ParsedFlags& flags) {
    if (flags.isSet("-camera"))
        lookThrough(panel, flags.getString("-camera"));
    if (flags.isSet("-label"))
        panel.setWindowTitle(command::text(flags.getString("-label")));
    if (flags.isSet("-menuBarVisible"))
        panel.menuBar().setVisible(flags.getBool("-menuBarVisible"));
}

Value queryPanel(ModelPanel& panel, const ParsedFlags& flags) {
    if (flags.isSet("-camera"))
        return Value(panel.cameraName().toStdString());
    if (flags.isSet("-modelEditor"))
        return Value(panel.name().toStdString());
    if (flags.isSet("-label"))
        return Value(panel.windowTitle().toStdString());
    if (flags.isSet("-menuBarVisible"))
        return Value(!panel.menuBar().isHidden());
    const std::string full = Elements::instance().pathOf(&panel).toStdString();
    if (flags.isSet("-control"))
        return Value(full);
    if (flags.isSet("-parent"))
        return Value(full.substr(0, full.rfind('|')));
    throw ScriptError("modelPanel: a flag to query is needed.");
}

Value modelPanelCommand(const CommandCall& call) {
    const ParsedFlags flags = panelFlags().parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(ModelPanel::find(command::text(name)) != nullptr);
    command::requireInterface(call.name);
    if (flags.isQuery())
        return queryPanel(panelNamed(name), flags);
    if (flags.isEdit()) {
        setPanel(panelNamed(name), flags);
        return {};
    }
    if (call.name == "panel")
        throw ScriptError("panel: panels are made by the commands of their types.");
    Elements& elements = Elements::instance();
    if (!name.empty())
        command::requireNewName(name, ElementKind::Panel);
    QWidget& parent = command::layoutParent(flags, "modelPanel");
    const QString panelName =
        name.empty() ? elements.uniqueName(QStringLiteral("modelPanel")) : command::text(name);
    auto panel = std::make_unique<ModelPanel>(panelName);
    setPanel(*panel, flags); // without such a camera there is no panel
    command::place(*panel.release(), parent, panelName.toStdString(), {}, ElementKind::Panel);
    return Value(panelName.toStdString());
}

Value getPanelCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-all", "-allPanels")
                                    .flag("-typ", "-type", {ArgKind::String})
                                    .flag("-to", "-typeOf", {ArgKind::String})
                                    .flag("-wf", "-withFocus")
                                    .flag("-up", "-underPointer")
                                    .flag("-vis", "-visiblePanels")
                                    .flag("-inv", "-invisiblePanels")
                                    .flag("-wl", "-withLabel", {ArgKind::String})
                                    .flag("-at", "-allTypes");
    const ParsedFlags flags = syntax.parse(call);
    if (flags.isSet("-withFocus")) {
        const ModelPanel* panel = ModelPanel::of(Views::instance().active());
        return Value(panel ? panel->name().toStdString() : std::string());
    }
    if (flags.isSet("-allTypes"))
        return Value(script::Strings{"modelPanel"});
    if (flags.isSet("-typeOf"))
        return Value(ModelPanel::find(command::text(flags.getString("-typeOf"))) ? "modelPanel"
                                                                                 : "");
    if (flags.isSet("-type") && flags.getString("-type") != "modelPanel")
        return Value(script::Strings{});
    script::Strings names;
    for (const View* view : Views::instance().all()) {
        const ModelPanel* panel = ModelPanel::of(view);
        if (!panel || (flags.isSet("-visiblePanels") && !panel->isVisible()) ||
            (flags.isSet("-invisiblePanels") && panel->isVisible()))
            continue;
        if (flags.isSet("-withLabel")) {
            if (panel->windowTitle() == command::text(flags.getString("-withLabel")))
                return Value(panel->name().toStdString());
            continue;
        }
        if (flags.isSet("-underPointer")) {
            if (panel->underMouse())
                return Value(panel->name().toStdString());
            continue;
        }
        names.push_back(panel->name().toStdString());
    }
    const bool wantsOne = flags.isSet("-underPointer") || flags.isSet("-withLabel");
    return wantsOne ? Value("") : Value(names);
}

Value setFocusCommand(const CommandCall& call) {
    static const Flags syntax = Flags().objects(1, 1);
    const std::string name = syntax.parse(call).object();
    command::requireInterface("setFocus");
    if (ModelPanel* panel = ModelPanel::find(command::text(name))) {
        Views::instance().setActive(&panel->view());
        panel->updateLabels();
        panel->viewWidget().setFocus();
    } else {
        command::findAs<QWidget>(name, ElementKind::Control)->setFocus();
    }
    return {};
}

} // namespace

void registerPanelCommands() {
    script::registerCommand("modelPanel", modelPanelCommand);
    script::registerCommand("panel", modelPanelCommand);
    script::registerCommand("getPanel", getPanelCommand);
    script::registerCommand("setFocus", setFocusCommand);
    script::defineProcedure("lookThroughModelPanel", {script::Type::String, script::Type::String},
                            [](const std::vector<Value>& arguments) {
                                command::requireInterface("lookThroughModelPanel");
                                lookThrough(panelNamed(arguments.at(1).toString()),
                                            arguments.at(0).toString());
                                return Value();
                            });
}

} // namespace host
