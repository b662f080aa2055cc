// The two entry points. The only source that includes maya/MFnPlugin.h, which defines the
// plug-in's version symbols.
#include "commands/FrameCommand.h"
#include "commands/LayerCommand.h"
#include "commands/NodeCommand.h"
#include "commands/UtilCommand.h"
#include "document/BaseNodeLayerData.h"
#include "node/BaseNode.h"
#include "node/BaseNodeDrawOverride.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/entry/MenuScript.h"
#include "plugin/entry/SceneEvents.h"
#include "plugin/session/ModalScope.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneEnvironment.h"
#include "plugin/session/Surfaces.h"
#include "plugin/session/TimeSlider.h"
#include "plugin/session/Timeline.h"
#include "tools/interaction/DrawContextCommand.h"
#include "tools/interaction/StrokeCommand.h"
#include "tools/interaction/TimeControlOverlay.h"
#include "tools/interaction/TransformContextCommand.h"
#include "ui/PanelSet.h"

#include <maya/MDrawRegistry.h>
#include <maya/MFnPlugin.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace {

using namespace vellum;

std::unique_ptr<SceneEnvironment> environment;
std::unique_ptr<Surfaces> surfaces;
std::unique_ptr<PanelSet> panelSet;

/// The document's way to the scene, and that of every change to what shows it.
void connectFloors() {
    environment = std::make_unique<SceneEnvironment>();
    surfaces = std::make_unique<Surfaces>();
    setDocumentEnvironment(environment.get());
    panelSet = std::make_unique<PanelSet>();
    setChangeListener(surfaces.get());
    connectPanels(panelSet.get());
}

void disconnectFloors() {
    setDocumentEnvironment(nullptr);
    setChangeListener(nullptr);
    if (panelSet)
        panelSet->closeAll();
    connectPanels(nullptr);
    panelSet.reset();
    environment.reset();
    surfaces.reset();
}

void buildTimelineOverlay() {
    if (!pluginState().interactive || pluginState().timeline)
        return;
    if (QWidget* slider = timeControlWidget())
        pluginState().timeline = new TimeControlOverlay(slider); // the slider's child
    else
        report::error(QStringLiteral("Failed to get time control widget."));
}

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/// Something Maya is told about, and how it is taken back. A failure is shown as the message of
/// its direction, followed by Maya's own words where the message asks for them.
struct Registration {
    std::function<MStatus(MFnPlugin&)> add;
    std::function<MStatus(MFnPlugin&)> remove;
    QString addMessage;
    QString removeMessage;
    bool withReason;
    bool isContext = false;
};

Registration command(const char* name, MCreatorFunction creator, MCreateSyntaxFunction syntax) {
    return {[=](MFnPlugin& plugin) { return plugin.registerCommand(name, creator, syntax); },
            [=](MFnPlugin& plugin) { return plugin.deregisterCommand(name); },
            QStringLiteral("Failed to register '%1' command: ").arg(text(name)),
            QStringLiteral("Failed to deregister '%1' command: ").arg(text(name)), true};
}

Registration contextCommand(const char* name, MCreatorFunction creator) {
    return {[=](MFnPlugin& plugin) { return plugin.registerContextCommand(name, creator); },
            [=](MFnPlugin& plugin) { return plugin.deregisterContextCommand(name); },
            QStringLiteral("Failed to register '%1' contextCommand: ").arg(text(name)),
            QStringLiteral("Failed to deregister '%1' contextCommand: ").arg(text(name)),
            true,
            true};
}

Registration layerData() {
    return {[](MFnPlugin& plugin) {
                return plugin.registerData(kDataTypeName, BaseNodeLayerData::id,
                                           BaseNodeLayerData::creator);
            },
            [](MFnPlugin& plugin) { return plugin.deregisterData(BaseNodeLayerData::id); },
            QStringLiteral("Could not register '") + text(kDataTypeName),
            QStringLiteral("Could not deregister %1").arg(text(kDataTypeName)), false};
}

Registration node() {
    return {[](MFnPlugin& plugin) {
                buildTimelineOverlay();
                const MString classification(kDrawClassification);
                return plugin.registerNode(kNodeTypeName, BaseNode::id, BaseNode::creator,
                                           BaseNode::initialize, MPxNode::kLocatorNode,
                                           &classification);
            },
            [](MFnPlugin& plugin) {
                const MStatus status = plugin.deregisterNode(BaseNode::id);
                if (status == MS::kSuccess)
                    tearDownInterface();
                return status;
            },
            QStringLiteral("Failed to register base node"),
            QStringLiteral("Failed to deregister base node"), false};
}

Registration drawOverride() {
    return {[](MFnPlugin&) {
                return MHWRender::MDrawRegistry::registerDrawOverrideCreator(
                    kDrawClassification, kDrawRegistrant, BaseNodeDrawOverride::creator);
            },
            [](MFnPlugin&) {
                return MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(kDrawClassification,
                                                                               kDrawRegistrant);
            },
            QStringLiteral("Failed to register draw node override"),
            QStringLiteral("Failed to deregister base node draw override"), false};
}

/// Data before the node that holds them.
const std::vector<Registration>& registrations() {
    static const std::vector<Registration> table{
        command(kNodeCommand, NodeCommand::creator, NodeCommand::newSyntax),
        command(kLayerCommand, LayerCommand::creator, LayerCommand::newSyntax),
        command(kFrameCommand, FrameCommand::creator, FrameCommand::newSyntax),
        command(kStrokeCommand, StrokeCommand::creator, StrokeCommand::newSyntax),
        command(kUtilCommand, UtilCommand::creator, UtilCommand::newSyntax),
        contextCommand(kDrawContextCommand, DrawContextCommand::creator),
        contextCommand(kTransformContextCommand, TransformContextCommand::creator),
        layerData(),
        node(),
        drawOverride(),
    };
    return table;
}

/// Backwards, but for the context commands, which are taken back in the order they were made in.
std::vector<const Registration*> unloadOrder() {
    std::vector<const Registration*> order;
    for (const Registration& registration : registrations())
        order.push_back(&registration);
    const auto isContext = [](const Registration* one) { return one->isContext; };
    const auto first = std::find_if(order.begin(), order.end(), isContext);
    std::reverse(first, std::find_if_not(first, order.end(), isContext));
    std::reverse(order.begin(), order.end());
    return order;
}

void showFailure(const QString& message, const MStatus& status, bool withReason) {
    report::plainError(withReason ? message + fromMaya(status.errorString()) : message);
}

bool isBatch() {
    return script::executeInt(command::isBatch()).value_or(0) != 0;
}

/// A menu that fails never stops the loading.
void buildMenu() {
    if (!sourceMenuScript()) {
        report::plainError(QStringLiteral("Failed to source scripts"));
        return;
    }
    if (!pluginState().interactive)
        return;
    pluginState().menuSourced = true;
    if (!script::execute(command::createMainMenu(settings().showMainMenuInAnimationSet))) {
        report::plainError(QStringLiteral("Failed to create main menu"));
        script::execute(command::deleteMainMenu()); // the part of it that was made
    }
    if (!updateMainMenu())
        report::plainError(QStringLiteral("Failed to update main menu"));
}

/// Whether the first command was refused since another copy of the plug-in has it. Menu and
/// procedures go by the same names, so that the menu just made works that copy.
bool anotherCopyWorks() {
    return pluginState().registered == 0 &&
           script::executeInt(command::commandExists(text(kNodeCommand))).value_or(0) != 0;
}

/// Maya drops the library of a plug-in that failed to load, so nothing of its interface may stay.
void abandonLoading() {
    if (pluginState().menuSourced && !anotherCopyWorks())
        script::execute(command::deleteMainMenu());
    delete pluginState().timeline;
    disconnectFloors();
    resetPluginState();
}

/// A tool of ours must not be current when its code goes. What it commits as it is left would be
/// called by an undo later.
void leaveOurTools() {
    PluginState& state = pluginState();
    if (!state.drawToolActive && !state.transformContext)
        return;
    if (state.unfinished)
        state.unfinished->finish();
    script::execute(command::chooseSelectionTool());
    script::execute(command::flushUndo());
}

} // namespace

MStatus initializePlugin(MObject object) {
    MStatus status;
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi, &status);
    if (status != MS::kSuccess) {
        showFailure(QStringLiteral("Failed to initialize plugin: "), status, true);
        return status;
    }
    resetPluginState();
    resetSettings();
    connectFloors();
    pluginState().interactive = !isBatch();
    loadSettings();
    buildMenu();

    for (const Registration& registration : registrations()) {
        status = registration.add(plugin);
        if (status != MS::kSuccess) {
            showFailure(registration.addMessage, status, registration.withReason);
            abandonLoading();
            return status;
        }
        ++pluginState().registered;
    }
    installSceneEvents();
    pluginState().playbackJob = script::executeInt(command::playbackJob()).value_or(-1);
    return status;
}

MStatus uninitializePlugin(MObject object) {
    // The dialog's own event loop brought us here: it returns into code that would be gone.
    if (ModalScope::anyOpen()) {
        report::plainError(QStringLiteral("A dialog of %1 is open. Close it before unloading.")
                               .arg(text(kProductName)));
        return MS::kFailure;
    }
    leaveOurTools();
    if (pluginState().interactive && !script::execute(command::deleteMainMenu()))
        report::plainError(QStringLiteral("Failed to delete main menu"));
    if (pluginState().playbackJob >= 0)
        script::execute(command::killJob(pluginState().playbackJob));
    pluginState().playbackJob = -1;
    MStatus status = removeSceneEvents();
    if (status != MS::kSuccess) {
        report::plainError(QStringLiteral("Failed to remove callbacks"));
        return status;
    }
    MFnPlugin plugin(object, kVendor, kVersion, kRequiredApi, &status);
    if (status != MS::kSuccess) {
        showFailure(QStringLiteral("Failed to uninitialize plugin: "), status, true);
        return status;
    }
    // After a failure the next unload goes on where this one stopped.
    const auto order = unloadOrder();
    for (std::size_t& left = pluginState().registered; left > 0; --left) {
        const Registration& last = *order[order.size() - left];
        status = last.remove(plugin);
        if (status != MS::kSuccess) {
            showFailure(last.removeMessage, status, last.withReason);
            return status;
        }
    }
    disconnectFloors();
    resetPluginState();
    return status;
}
