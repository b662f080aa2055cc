#include "ui/layers/NewLayerDialog.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "ui/Modal.h"
#include "ui/layers/LayerCommands.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>

#include <memory>

namespace vellum {

namespace {

std::shared_ptr<LayerManager> activeDrawing() {
    const BaseNode* node = activeNode();
    return node ? node->layerManager() : nullptr;
}

} // namespace

void NewLayerDialog::open(QWidget* parent) {
    const QPointer<NewLayerDialog> dialog(new NewLayerDialog(parent));
    runModal(dialog);
    delete dialog.data();
}

NewLayerDialog::NewLayerDialog(QWidget* parent) : LayerForm(QStringLiteral("New Layer"), parent) {
    const auto drawing = activeDrawing();
    name_ = addName(QStringLiteral("Layer"));
    camera_ = addCameras(drawing ? drawing->currentCamera() : QString(), 0);
    states_ = addChoice(QStringLiteral("Layer State:"),
                        {QStringLiteral("Anim"), QStringLiteral("Static")});
    const bool isStatic = settings().defaultLayerState == numberOf(LayerState::Static);
    states_[isStatic ? 1 : 0]->setChecked(true);
    addButtons();
}

void NewLayerDialog::AddLayer() {
    layer_commands::NewLayer layer;
    layer.name = name_->text();
    layer.camera = camera_->currentText();
    layer.state = numberOf(states_[1]->isChecked() ? LayerState::Static : LayerState::Animated);
    const PanelCommands commands = layer_commands::addLayer(layer, activeDrawing() != nullptr);
    accept();
    issue(commands);
}

} // namespace vellum
