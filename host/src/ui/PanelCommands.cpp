// modelPanel, modelEditor, getPanel, setFocus, lookThroughModelPanel.
#include "render/Renderer.h"
#include "render/Views.h"
#include "script/Commands.h"
#include "script/Flags.h"
#include "script/Interpreter.h"
#include "ui/CommandSupport.h"
#include "ui/Elements.h"
#include "ui/MainWindow.h"
#include "ui/ModelPanel.h"
#include "ui/UiCommands.h"

#include <QLayout>
#include <QSplitter>

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

Value modelPanelCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-p", "-parent", {ArgKind::String})
                                    .flag("-cam", "-camera", {ArgKind::String})
                                    .flag("-l", "-label", {ArgKind::String})
                                    .flag("-me", "-modelEditor")
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(ModelPanel::find(command::text(name)) != nullptr);
    command::requireInterface("modelPanel");
    if (flags.isQuery()) {
        ModelPanel& panel = panelNamed(name);
        if (flags.isSet("-camera"))
            return Value(panel.cameraName().toStdString());
        if (flags.isSet("-modelEditor"))
            return Value(panel.name().toStdString());
        if (flags.isSet("-label"))
            return Value(panel.windowTitle().toStdString());
        throw ScriptError("modelPanel: a flag to query is needed.");
    }
    if (flags.isEdit()) {
        ModelPanel& panel = panelNamed(name);
        if (flags.isSet("-camera"))
            lookThrough(panel, flags.getString("-camera"));
        if (flags.isSet("-label"))
            panel.setWindowTitle(command::text(flags.getString("-label")));
        return {};
    }
    Elements& elements = Elements::instance();
    if (!name.empty())
        command::requireNewName(name, ElementKind::panel);
    QWidget* parent = elements.currentLayout;
    if (flags.isSet("-parent"))
        parent = command::findAs<QWidget>(flags.getString("-parent"), ElementKind::layout);
    if (!parent)
        throw ScriptError("modelPanel: there is no current layout to put it in.");
    const QString panelName =
        name.empty() ? elements.uniqueName(QStringLiteral("modelPanel")) : command::text(name);
    auto* panel = new ModelPanel(panelName, parent);
    elements.add(panel, panelName, ElementKind::panel, parent);
    if (auto* splitter = qobject_cast<QSplitter*>(parent))
        splitter->addWidget(panel);
    else if (parent->layout())
        parent->layout()->addWidget(panel);
    panel->setVisible(true);
    if (flags.isSet("-camera"))
        lookThrough(*panel, flags.getString("-camera"));
    if (flags.isSet("-label"))
        panel->setWindowTitle(command::text(flags.getString("-label")));
    return Value(panelName.toStdString());
}

Value queryEditor(ModelPanel& panel, const ParsedFlags& flags) {
    View& view = panel.view();
    if (flags.isSet("-camera"))
        return Value(panel.cameraName().toStdString());
    if (flags.isSet("-rendererName"))
        return Value(rendererName(view.renderer()));
    if (flags.isSet("-rendererList"))
        return Value(
            script::Strings{rendererName(Renderer::viewport2), rendererName(Renderer::legacy)});
    if (flags.isSet("-grid"))
        return Value(view.gridShown());
    if (flags.isSet("-activeView"))
        return Value(Views::instance().active() == &view);
    if (flags.isSet("-panel"))
        return Value(panel.name().toStdString());
    throw ScriptError("modelEditor: a flag to query is needed.");
}

Value modelEditorCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-cam", "-camera", {ArgKind::String})
                                    .flag("-rnm", "-rendererName", {ArgKind::String})
                                    .flag("-rls", "-rendererList")
                                    .flag("-gr", "-grid", {ArgKind::Boolean})
                                    .flag("-av", "-activeView", {ArgKind::Boolean})
                                    .flag("-pnl", "-panel")
                                    .flag("-ex", "-exists")
                                    .query()
                                    .edit()
                                    .objects(0, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(ModelPanel::find(command::text(name)) != nullptr);
    command::requireInterface("modelEditor");
    if (flags.isCreate())
        throw ScriptError("modelEditor: editors come with a modelPanel here.");
    ModelPanel& panel = panelNamed(name);
    if (flags.isQuery())
        return queryEditor(panel, flags);
    if (flags.isSet("-camera"))
        lookThrough(panel, flags.getString("-camera"));
    if (flags.isSet("-rendererName")) {
        Renderer renderer = panel.view().renderer();
        const std::string wanted = flags.getString("-rendererName");
        if (!rendererFromName(wanted, renderer))
            throw ScriptError("modelEditor: there is no renderer '" + wanted + "'.");
        panel.view().setRenderer(renderer);
    }
    if (flags.isSet("-grid"))
        panel.view().setGridShown(flags.getBool("-grid"));
    if (flags.getBool("-activeView"))
        Views::instance().setActive(&panel.view());
    panel.updateLabels();
    panel.view().refresh();
    return {};
}

Value getPanelCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-all", "-allPanels")
                                    .flag("-typ", "-type", {ArgKind::String})
                                    .flag("-to", "-typeOf", {ArgKind::String})
                                    .flag("-wf", "-withFocus")
                                    .flag("-up", "-underPointer")
                                    .flag("-vis", "-visiblePanels");
    const ParsedFlags flags = syntax.parse(call);
    if (flags.isSet("-withFocus")) {
        const ModelPanel* panel = ModelPanel::of(Views::instance().active());
        return Value(panel ? panel->name().toStdString() : std::string());
    }
    if (flags.isSet("-typeOf"))
        return Value(ModelPanel::find(command::text(flags.getString("-typeOf"))) ? "modelPanel"
                                                                                 : "");
    if (flags.isSet("-type") && flags.getString("-type") != "modelPanel")
        return Value(script::Strings{});
    script::Strings names;
    for (const View* view : Views::instance().all()) {
        const ModelPanel* panel = ModelPanel::of(view);
        if (!panel || (flags.isSet("-visiblePanels") && !panel->isVisible()))
            continue;
        if (flags.isSet("-underPointer")) {
            if (panel->underMouse())
                return Value(panel->name().toStdString());
            continue;
        }
        names.push_back(panel->name().toStdString());
    }
    return flags.isSet("-underPointer") ? Value("") : Value(names);
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
        command::findAs<QWidget>(name, ElementKind::control)->setFocus();
    }
    return {};
}

} // namespace

void registerPanelCommands() {
    script::registerCommand("modelPanel", modelPanelCommand);
    script::registerCommand("modelEditor", modelEditorCommand);
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
