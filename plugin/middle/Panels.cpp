#include "plugin/middle/Panels.h"

#include "plugin/leaves/CommandStrings.h"
#include "plugin/leaves/Report.h"
#include "plugin/leaves/Script.h"
#include "plugin/leaves/Settings.h"
#include "plugin/middle/PluginState.h"

namespace vellum {

namespace {

/// Nobody sees a window in batch mode, so nothing is missing there.
bool missing() {
    if (pluginState().interactive)
        report::error(QStringLiteral("This window is not available."));
    return false;
}

} // namespace

bool Panels::show(Panel) {
    return missing();
}

bool Panels::open(Dialog) {
    return missing();
}

bool Panels::openLayerProperties(const QString&, int) {
    return missing();
}

void Panels::refreshToolbox() {
}

void Panels::refreshToolOptions() {
}

void Panels::refreshLayerManager(LayerManager&) {
}

bool Panels::clearLayerManager() {
    return false;
}

std::optional<QColor> Panels::toolboxColor() {
    return std::nullopt;
}

std::optional<QString> Panels::chooseCamera(const QStringList&, const QString&) {
    return std::nullopt;
}

bool Panels::resetInterface() {
    return missing();
}

void Panels::closeAll() {
}

Panels& panels() {
    static Panels none;
    Panels* connected = pluginState().panels;
    return connected ? *connected : none;
}

void connectPanels(Panels* connected) {
    pluginState().panels = connected;
}

bool updateMainMenu() {
    if (!pluginState().interactive)
        return true;
    const Settings& current = settings();
    return script::execute(command::updateMainMenu(
        current.activeTool, current.ghostPrev, current.ghostNext, current.timelineFrameDisplay));
}

} // namespace vellum
