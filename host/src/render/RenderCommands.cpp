#include "render/RenderCommands.h"

#include "foundation/Events.h"
#include "plugins/PluginServices.h"
#include "render/DrawOverrides.h"
#include "render/ScenePainter.h"
#include "render/View.h"
#include "render/Views.h"
#include "script/Flags.h"

#include <maya/MSelectionList.h>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ScriptError;
using script::Value;

namespace {

Value refreshCommand(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-f", "-force")
                                   .flag("-cv", "-currentView")
                                   .flag("-su", "-suspend", {ArgKind::Boolean});
    const auto parsed = flags.parse(call);
    if (parsed.isSet("-suspend"))
        throw ScriptError("refresh -suspend is not supported.");
    View* active = Views::instance().active();
    if (parsed.isSet("-currentView")) {
        if (active)
            active->refresh(true);
    } else {
        Views::instance().refreshAll(true);
    }
    return {};
}

View& viewOf(const std::string& panel) {
    View* view = panel.empty() ? Views::instance().active() : Views::instance().byPanel(panel);
    if (!view)
        throw ScriptError(panel.empty() ? "There is no active view."
                                        : "Model panel '" + panel + "' not found.");
    return *view;
}

/// lookThru CAMERA, lookThru PANEL CAMERA, lookThru -q [PANEL].
Value lookThruCommand(const CommandCall& call) {
    static const Flags flags = Flags().query().objects(0, 2);
    const auto parsed = flags.parse(call);
    std::vector<std::string> names = parsed.objectNames();
    if (parsed.isQuery()) {
        MDagPath camera = viewOf(names.empty() ? std::string() : names.front()).camera();
        if (!camera.isValid())
            throw ScriptError("The view has no camera.");
        camera.pop();
        return Value(camera.partialPathName().asChar());
    }
    if (names.empty())
        throw ScriptError("lookThru needs a camera.");
    // A panel may stand before or after the camera.
    std::string panel;
    if (names.size() == 2) {
        const bool panelFirst = Views::instance().byPanel(names[0]) != nullptr;
        panel = panelFirst ? names[0] : names[1];
        names = {panelFirst ? names[1] : names[0]};
    }
    View& view = viewOf(panel);
    MSelectionList list;
    MDagPath path;
    if (!list.add(names[0].c_str()))
        throw ScriptError("No object matches name: " + names[0]);
    if (!list.getDagPath(0, path) || !view.setCamera(path))
        throw ScriptError("'" + names[0] + "' is not a camera.");
    view.refresh();
    return {};
}

Value displayPrefCommand(const CommandCall& call) {
    static const Flags flags = Flags().flag("-dgr", "-displayGradient", {ArgKind::Boolean}).query();
    const auto parsed = flags.parse(call);
    if (parsed.isQuery())
        return Value(gradientShown());
    if (parsed.isSet("-displayGradient")) {
        setGradientShown(parsed.getBool("-displayGradient"));
        Views::instance().refreshAll();
    }
    return {};
}

} // namespace

void registerRenderCommands() {
    static bool connected = false;
    if (!connected) {
        connected = true;
        changes::listen([] {
            DrawOverrides::instance().sceneChanged();
            Views::instance().refreshAll();
        });
        // Nothing of the former scene comes back, and its undo queue is empty.
        for (const char* event : {"NewSceneOpened", "SceneOpened"})
            events::listen(event, [] { DrawOverrides::instance().sweep(true); });
    }
    pluginServices().beforeUnload = [](const std::string&) {
        DrawOverrides::instance().sweep(true);
    };
    pluginServices().dropDrawOverrides = [](const std::string& libraryFile) {
        return DrawOverrides::instance().removeFrom(libraryFile);
    };
    script::registerCommand("refresh", refreshCommand);
    script::registerCommand("lookThru", lookThruCommand);
    script::registerCommand("displayPref", displayPrefCommand);
}

} // namespace host
