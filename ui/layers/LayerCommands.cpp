#include "ui/layers/LayerCommands.h"

#include "document/Layer.h"
#include "plugin/base/CommandStrings.h"

namespace vellum::layer_commands {

namespace {

const QString kVisible = QStringLiteral("V");
const QString kStatic = QStringLiteral("S");
const QString kLocked = QStringLiteral("L");

bool isLayer(const LayerPlace& place) {
    return !place.camera.isEmpty() && place.index >= 0;
}

PanelCommands move(const LayerPlace& from, int to) {
    return {PanelCommand::undoable(command::moveLayer(from.index, to, from.camera))};
}

} // namespace

PanelCommands clickRow(const LayerPlace& row, bool isDrawnOnAlready) {
    PanelCommands commands;
    if (!isDrawnOnAlready)
        commands.push_back(PanelCommand::undoable(command::setActiveLayer(row.index, row.camera)));
    commands.push_back(PanelCommand::silent(command::drawDeferred()));
    return commands;
}

PanelCommands clickVisibility(const LayerPlace& row, const QString& shown) {
    return {
        PanelCommand::undoable(command::setLayerVisible(shown != kVisible, row.index, row.camera))};
}

PanelCommands clickState(const LayerPlace& row, const QString& shown) {
    LayerState next = LayerState::Animated;
    if (shown.isEmpty())
        next = LayerState::Static;
    else if (shown == kStatic)
        next = LayerState::Locked;
    return {PanelCommand::undoable(command::setLayerState(numberOf(next), row.index, row.camera))};
}

QString visibilityText(bool visible) {
    return visible ? kVisible : QString();
}

QString stateText(int state) {
    switch (layerStateOf(state).value_or(LayerState::Animated)) {
    case LayerState::Static:
        return kStatic;
    case LayerState::Locked:
        return kLocked;
    case LayerState::Animated:
        break;
    }
    return {};
}

PanelCommands moveUp(const LayerPlace& selected) {
    return isLayer(selected) && selected.index >= 1 ? move(selected, selected.index - 1)
                                                    : PanelCommands();
}

PanelCommands moveDown(const LayerPlace& selected, int layerCount) {
    return isLayer(selected) && selected.index + 1 < layerCount ? move(selected, selected.index + 1)
                                                                : PanelCommands();
}

PanelCommands deleteLayer(const LayerPlace& selected) {
    if (!isLayer(selected))
        return {};
    return {PanelCommand::undoable(command::deleteLayer(selected.index, selected.camera))};
}

PanelCommands refresh() {
    return {PanelCommand::silent(command::refreshLayerManagerDeferred())};
}

PanelCommands moveToCamera(const LayerPlace& row, const QString& target) {
    return {PanelCommand::undoable(command::moveLayerToCamera(target, row.index, -1, row.camera))};
}

PanelCommands moveAllToCamera(const QString& camera, const QString& target) {
    return {PanelCommand::undoable(command::moveAllLayers(target, camera))};
}

PanelCommands addLayer(const NewLayer& layer, bool hasDrawing) {
    // Deferred commands come in no order that could be relied on, so the tool is asked for by the
    // script that makes the drawing, when it has.
    if (!hasDrawing)
        return {PanelCommand::onIdle(
            command::createNodeAndDraw(layer.camera, layer.name, layer.state))};
    return {PanelCommand::undoable(command::addLayer(layer.camera, layer.name, layer.state)),
            PanelCommand::silent(command::drawDeferred())};
}

PanelCommands changeLayer(const LayerPlace& now, const LayerValues& before,
                          const LayerValues& after) {
    PanelCommands commands;
    const auto add = [&commands](const QString& script) {
        commands.push_back(PanelCommand::undoable(script));
    };
    if (!after.name.isEmpty() && after.name != before.name)
        add(command::renameLayer(after.name, now.index, now.camera));
    if (after.visible != before.visible)
        add(command::setLayerVisible(after.visible, now.index, now.camera));
    if (after.state != before.state)
        add(command::setLayerState(after.state, now.index, now.camera));
    if (!after.camera.isEmpty() && after.camera != before.camera && after.camera != now.camera)
        add(command::moveLayerToCamera(after.camera, now.index, -1, now.camera));
    return commands;
}

} // namespace vellum::layer_commands
