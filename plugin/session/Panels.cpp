#include "plugin/session/Panels.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/session/ModalScope.h"
#include "plugin/session/PluginState.h"

#include <QComboBox>
#include <QInputDialog>
#include <QMessageBox>

#include <maya/MQtUtil.h>

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

std::optional<QString> Panels::chooseCamera(const QStringList& cameras,
                                            const QString& preselected) {
    if (!pluginState().interactive)
        return std::nullopt;
    QInputDialog dialog(MQtUtil::mainWindow(), Qt::Tool);
    dialog.setWindowTitle(QStringLiteral("Move Layers to View"));
    // The blanks make the window wide enough for its title.
    dialog.setLabelText(QStringLiteral("Select camera to move layers from:") +
                        QString(17, QLatin1Char(' ')));
    dialog.setComboBoxItems(cameras);
    dialog.setComboBoxEditable(false);
    auto* list = dialog.findChild<QComboBox*>();
    list->setCurrentIndex(static_cast<int>(cameras.indexOf(preselected)));
    const ModalScope open;
    if (dialog.exec() != QDialog::Accepted || list->currentIndex() < 0)
        return std::nullopt;
    return list->currentText();
}

bool Panels::resetInterface() {
    if (!pluginState().interactive)
        return false;
    {
        const ModalScope open;
        const auto answer = QMessageBox::question(MQtUtil::mainWindow(), QStringLiteral("Reset UI"),
                                                  QStringLiteral("Reset user interface elements?"),
                                                  QMessageBox::Yes | QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return true;
    }
    closeAll();
    Settings& stored = settings();
    for (QByteArray* geometry :
         {&stored.toolboxGeometry, &stored.toolOptionsGeometry, &stored.layerManagerGeometry,
          &stored.colorPaletteGeometry, &stored.retimingToolGeometry})
        geometry->clear();
    return true;
}

void Panels::closeAll() {
}

void Panels::cancelDialog() {
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
    if (!pluginState().menuSourced)
        return true;
    const Settings& current = settings();
    return script::execute(command::updateMainMenu(
        current.activeTool, current.ghostPrev, current.ghostNext, current.timelineFrameDisplay));
}

} // namespace vellum
