// The retiming tool: how long the drawing at the current time is held, at a click. Main thread
// only.
#pragma once

#include "ui/PanelDialog.h"

class QCheckBox;
class QHBoxLayout;

namespace vellum {

class RetimingDialog : public PanelDialog {
    Q_OBJECT

public:
    explicit RetimingDialog(QWidget* parent);

public Q_SLOTS:
    void RetimeAbsolute();
    void RetimeRelative();
    void OnMoveToNextFrameToggled();

protected:
    void refreshForShow() override;

private:
    using Slot = void (RetimingDialog::*)();
    void addButton(QHBoxLayout& row, const QString& text, int width, Slot slot);
    void retime(bool relative);

    QCheckBox* moveToNext_;
};

} // namespace vellum
