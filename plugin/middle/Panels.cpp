#include "plugin/middle/Panels.h"

#include "plugin/leaves/CommandStrings.h"
#include "plugin/leaves/Script.h"
#include "plugin/leaves/Settings.h"
#include "plugin/middle/PluginState.h"

namespace vellum {

bool Panels::show(Panel) {
    return false;
}

bool Panels::open(Dialog) {
    return false;
}

bool Panels::openLayerProperties(const QString&, int) {
    return false;
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
    return false;
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
