#include "ui/layers/LayerPropertiesDialog.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"
#include "ui/Modal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>

namespace vellum {

bool LayerPropertiesDialog::open(const LayerPlace& place, QWidget* parent) {
    const BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    if (!document)
        return false;
    const Layer* layer = document->layer(place.camera, place.index);
    if (!layer) {
        report::warning(QStringLiteral("Active layer not found."));
        return false;
    }
    const layer_commands::LayerValues values{layer->name(), place.camera, layer->isVisible(),
                                             numberOf(layer->state())};
    const QPointer<LayerPropertiesDialog> dialog(
        new LayerPropertiesDialog(layer->id(), values, parent));
    runModal(dialog);
    delete dialog.data();
    return true;
}

LayerPropertiesDialog::LayerPropertiesDialog(quint64 layer,
                                             const layer_commands::LayerValues& values,
                                             QWidget* parent)
    : LayerForm(QStringLiteral("Layer Properties"), parent), layer_(layer) {
    name_ = addName(values.name);
    camera_ = addCameras(values.camera, -1);
    visible_ = new QCheckBox(this);
    visible_->setChecked(values.visible);
    addRow(QStringLiteral("Visible:"), visible_);
    states_ = addChoice(QStringLiteral("State:"), {QStringLiteral("Anim"), QStringLiteral("Static"),
                                                   QStringLiteral("Locked")});
    states_[static_cast<std::size_t>(values.state)]->setChecked(true);
    addButtons();
    // As the fields show it: only what the user changes is a change.
    before_ = this->values();
}

layer_commands::LayerValues LayerPropertiesDialog::values() const {
    layer_commands::LayerValues shown;
    shown.name = name_->text();
    shown.camera = camera_->currentText();
    shown.visible = visible_->isChecked();
    for (std::size_t state = 0; state < states_.size(); ++state) {
        if (states_[state]->isChecked())
            shown.state = static_cast<int>(state);
    }
    return shown;
}

void LayerPropertiesDialog::UpdateLayer() {
    const layer_commands::LayerValues after = values();
    const auto place = requireLayer(layer_);
    const PanelCommands commands =
        place ? layer_commands::changeLayer(*place, before_, after) : PanelCommands();
    accept();
    issue(commands);
}

} // namespace vellum
