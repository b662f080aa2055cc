// Name, camera, visibility and state of one layer, to be looked at and changed. Modal; main thread
// only.
//
// Anything may happen to the drawing while it is open: what the user changes goes to that layer
// wherever it is then, and nowhere when it is gone.
#pragma once

#include "ui/layers/LayerCommands.h"
#include "ui/layers/LayerForm.h"

#include <vector>

class QCheckBox;

namespace vellum {

class LayerPropertiesDialog : public LayerForm {
    Q_OBJECT

public:
    /// Returns when it has been closed; the parent may be gone then. False without a drawing, and,
    /// after a warning, without such a layer.
    static bool open(const LayerPlace& place, QWidget* parent);

public Q_SLOTS:
    void UpdateLayer();

private:
    LayerPropertiesDialog(quint64 layer, const layer_commands::LayerValues& values,
                          QWidget* parent);
    void acceptChanges() override { UpdateLayer(); }
    layer_commands::LayerValues values() const;

    quint64 layer_; ///< Layer::id()
    layer_commands::LayerValues before_;
    QLineEdit* name_;
    QComboBox* camera_;
    QCheckBox* visible_;
    std::vector<QRadioButton*> states_; ///< by number
};

} // namespace vellum
