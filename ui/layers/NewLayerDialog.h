// Asks for name, camera and state of a new layer, and has it made; where the scene has no drawing,
// with the drawing. Modal; main thread only.
#pragma once

#include "ui/layers/LayerForm.h"

#include <vector>

namespace vellum {

class NewLayerDialog : public LayerForm {
    Q_OBJECT

public:
    /// Returns when it has been closed. The parent may be gone then.
    static void open(QWidget* parent);

public Q_SLOTS:
    void AddLayer();

private:
    explicit NewLayerDialog(QWidget* parent);
    void acceptChanges() override { AddLayer(); }

    QLineEdit* name_;
    QComboBox* camera_;
    std::vector<QRadioButton*> states_; ///< by number
};

} // namespace vellum
