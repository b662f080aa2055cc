// modelEditor: how a model panel shows the scene.
#include "render/Renderer.h"
#include "render/Views.h"
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/ModelPanel.h"
#include "ui/UiCommands.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

struct FlagNames {
    const char* shortName;
    const char* longName;
};

/// Kinds of objects that -allObjects turns on and off together.
const FlagNames objectKinds[] = {
    {"-nc", "-nurbsCurves"},
    {"-ns", "-nurbsSurfaces"},
    {"-pm", "-polymeshes"},
    {"-sds", "-subdivSurfaces"},
    {"-pl", "-planes"},
    {"-lt", "-lights"},
    {"-ca", "-cameras"},
    {"-imp", "-imagePlane"},
    {"-j", "-joints"},
    {"-ikh", "-ikHandles"},
    {"-df", "-deformers"},
    {"-dy", "-dynamics"},
    {"-pi", "-particleInstancers"},
    {"-fl", "-fluids"},
    {"-hs", "-hairSystems"},
    {"-fo", "-follicles"},
    {"-ncl", "-nCloths"},
    {"-npa", "-nParticles"},
    {"-nr", "-nRigids"},
    {"-dc", "-dynamicConstraints"},
    {"-lc", "-locators"},
    {"-dim", "-dimensions"},
    {"-pv", "-pivots"},
    {"-ha", "-handles"},
    {"-tx", "-textures"},
    {"-str", "-strokes"},
    {"-mt", "-motionTrails"},
    {"-ps", "-pluginShapes"},
    {"-cg", "-clipGhosts"},
    {"-gp", "-greasePencils"},
    {"-bp", "-bluePencil"},
};

/// What else can be hidden, each on its own.
const FlagNames otherKinds[] = {
    {"-cv", "-controlVertices"},
    {"-hu", "-hulls"},
    {"-m", "-manipulators"},
    {"-hud", "-headsUpDisplay"},
};

/// Settings of the picture that this host has nothing to apply to: off until set, and kept.
const FlagNames keptSettings[] = {
    {"-dtx", "-displayTextures"},   {"-sdw", "-shadows"},     {"-udm", "-useDefaultMaterial"},
    {"-jx", "-jointXray"},          {"-fg", "-fogging"},      {"-acx", "-activeComponentsXray"},
    {"-ui", "-useInteractiveMode"}, {"-vs", "-viewSelected"}, {"-ao", "-activeOnly"},
};

struct Style {
    const char* name;
    M3dView::DisplayStyle style;
};
const Style styles[] = {{"smoothShaded", M3dView::kGouraudShaded},
                        {"flatShaded", M3dView::kFlatShaded},
                        {"wireframe", M3dView::kWireFrame},
                        {"boundingBox", M3dView::kBoundingBox},
                        {"points", M3dView::kPoints}};

/// Switches of the picture that are members of ViewDisplay.
struct Switch {
    FlagNames names;
    bool ViewDisplay::*member;
};
const Switch switches[] = {
    {{"-wos", "-wireframeOnShaded"}, &ViewDisplay::wireframeOnShaded},
    {{"-xr", "-xray"}, &ViewDisplay::xray},
    {{"-bfc", "-backfaceCulling"}, &ViewDisplay::backfaceCulling},
    {{"-tsl", "-twoSidedLighting"}, &ViewDisplay::twoSidedLighting},
    {{"-sel", "-selectionHiliteDisplay"}, &ViewDisplay::selectionHighlight},
    {{"-swf", "-smoothWireframe"}, &ViewDisplay::smoothLines},
    {{"-ipz", "-ignorePanZoom"}, &ViewDisplay::ignorePanZoom},
};

Flags makeFlags() {
    Flags flags;
    for (const FlagNames& names : objectKinds)
        flags.flag(names.shortName, names.longName, {ArgKind::Boolean});
    for (const FlagNames& names : otherKinds)
        flags.flag(names.shortName, names.longName, {ArgKind::Boolean});
    for (const FlagNames& names : keptSettings)
        flags.flag(names.shortName, names.longName, {ArgKind::Boolean});
    for (const Switch& one : switches)
        flags.flag(one.names.shortName, one.names.longName, {ArgKind::Boolean});
    return flags.flag("-cam", "-camera", {ArgKind::String})
        .flag("-rnm", "-rendererName", {ArgKind::String})
        .flag("-rls", "-rendererList")
        .flag("-rlu", "-rendererListUI")
        .flag("-alo", "-allObjects", {ArgKind::Boolean})
        .flag("-da", "-displayAppearance", {ArgKind::String})
        .flag("-dl", "-displayLights", {ArgKind::String})
        .flag("-lw", "-lineWidth", {ArgKind::Float})
        .flag("-gr", "-grid", {ArgKind::Boolean})
        .flag("-av", "-activeView", {ArgKind::Boolean})
        .flag("-pnl", "-panel")
        .flag("-ctl", "-control")
        .flag("-w", "-width")
        .flag("-h", "-height")
        .flag("-ex", "-exists")
        .query()
        .edit()
        .objects(0, 1);
}

/// Sets what the flags say, in a copy: nothing is shown before all is known to be right.
ViewDisplay changed(ViewDisplay display, const ParsedFlags& flags) {
    const auto show = [&display](const FlagNames& names, bool shown) {
        shown ? void(display.hidden.erase(names.longName + 1))
              : void(display.hidden.insert(names.longName + 1));
    };
    for (const FlagNames& names : objectKinds) {
        if (flags.isSet("-allObjects"))
            show(names, flags.getBool("-allObjects"));
        if (flags.isSet(names.longName))
            show(names, flags.getBool(names.longName));
    }
    for (const FlagNames& names : otherKinds) {
        if (flags.isSet(names.longName))
            show(names, flags.getBool(names.longName));
    }
    for (const FlagNames& names : keptSettings) {
        if (flags.isSet(names.longName))
            show(names, !flags.getBool(names.longName)); // kept the other way round: off at first
    }
    for (const Switch& one : switches) {
        if (flags.isSet(one.names.longName))
            display.*one.member = flags.getBool(one.names.longName);
    }
    if (flags.isSet("-displayAppearance")) {
        const std::string wanted = flags.getString("-displayAppearance");
        const auto* style = std::find_if(std::begin(styles), std::end(styles),
                                         [&](const Style& one) { return wanted == one.name; });
        if (style == std::end(styles))
            throw ScriptError("modelEditor: there is no display appearance '" + wanted + "'.");
        display.style = style->style;
    }
    if (flags.isSet("-displayLights")) {
        const std::string lights = flags.getString("-displayLights");
        const char* const names[] = {"default", "all", "selected", "active", "none"};
        if (std::find(std::begin(names), std::end(names), lights) == std::end(names))
            throw ScriptError("modelEditor: there are no lights '" + lights + "'.");
        display.lights = lights;
    }
    if (flags.isSet("-lineWidth"))
        display.lineWidth = std::clamp(flags.getFloat("-lineWidth"), 1.0, 10.0);
    return display;
}

std::optional<Value> queryDisplay(const ViewDisplay& display, const ParsedFlags& flags) {
    for (const FlagNames& names : objectKinds) {
        if (flags.isSet(names.longName))
            return Value(display.shows(names.longName + 1));
    }
    for (const FlagNames& names : otherKinds) {
        if (flags.isSet(names.longName))
            return Value(display.shows(names.longName + 1));
    }
    for (const FlagNames& names : keptSettings) {
        if (flags.isSet(names.longName))
            return Value(!display.shows(names.longName + 1));
    }
    for (const Switch& one : switches) {
        if (flags.isSet(one.names.longName))
            return Value(display.*one.member);
    }
    if (flags.isSet("-allObjects"))
        return Value(
            std::all_of(std::begin(objectKinds), std::end(objectKinds),
                        [&](const FlagNames& names) { return display.shows(names.longName + 1); }));
    if (flags.isSet("-displayAppearance"))
        return Value(std::find_if(std::begin(styles), std::end(styles), [&](const Style& one) {
                         return one.style == display.style;
                     })->name);
    if (flags.isSet("-displayLights"))
        return Value(display.lights);
    if (flags.isSet("-lineWidth"))
        return Value(display.lineWidth);
    return std::nullopt;
}

Value queryEditor(ModelPanel& panel, const ParsedFlags& flags) {
    View& view = panel.view();
    if (flags.isSet("-camera"))
        return Value(panel.cameraName().toStdString());
    if (flags.isSet("-rendererName"))
        return Value(rendererName(view.renderer()));
    if (flags.isSet("-rendererList"))
        return Value(
            script::Strings{rendererName(Renderer::Viewport2), rendererName(Renderer::Legacy)});
    if (flags.isSet("-rendererListUI"))
        return Value(script::Strings{"Viewport 2.0", "Legacy Viewport"});
    if (flags.isSet("-grid"))
        return Value(view.gridShown());
    if (flags.isSet("-activeView"))
        return Value(Views::instance().active() == &view);
    if (flags.isSet("-panel"))
        return Value(panel.name().toStdString());
    if (flags.isSet("-control"))
        return command::path(&panel);
    if (flags.isSet("-width"))
        return Value(view.portWidth());
    if (flags.isSet("-height"))
        return Value(view.portHeight());
    if (std::optional<Value> answer = queryDisplay(view.display(), flags))
        return *answer;
    throw ScriptError("modelEditor: a flag to query is needed.");
}

Value modelEditorCommand(const CommandCall& call) {
    static const Flags syntax = makeFlags();
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(ModelPanel::find(command::text(name)) != nullptr);
    command::requireInterface("modelEditor");
    if (flags.isCreate())
        throw ScriptError("modelEditor: editors come with a modelPanel here.");
    ModelPanel* panel = ModelPanel::find(command::text(name));
    if (!panel)
        throw ScriptError("Object '" + name + "' not found.");
    if (flags.isQuery())
        return queryEditor(*panel, flags);
    View& view = panel->view();
    ViewDisplay display = changed(view.display(), flags);
    Renderer renderer = view.renderer();
    if (flags.isSet("-rendererName") &&
        !rendererFromName(flags.getString("-rendererName"), renderer))
        throw ScriptError("modelEditor: there is no renderer '" + flags.getString("-rendererName") +
                          "'.");
    if (flags.isSet("-camera") && !panel->lookThrough(command::text(flags.getString("-camera"))))
        throw ScriptError("No camera '" + flags.getString("-camera") + "' to look through.");
    if (renderer != view.renderer())
        view.setRenderer(renderer);
    view.setLocatorsShown(display.shows("locators"));
    view.setDisplay(std::move(display));
    if (flags.isSet("-grid"))
        view.setGridShown(flags.getBool("-grid"));
    if (flags.getBool("-activeView"))
        Views::instance().setActive(&view);
    panel->updateLabels();
    view.refresh();
    return {};
}

} // namespace

void registerModelEditorCommand() {
    script::registerCommand("modelEditor", modelEditorCommand);
}

} // namespace host
