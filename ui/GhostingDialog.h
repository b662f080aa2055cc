// How many frames are ghosted, and in which colours. Modal. Main thread only.
#pragma once

#include "ui/ColorControl.h"

#include <QDialog>

class QCheckBox;
class QSpinBox;

namespace vellum {

class GhostingDialog : public QDialog {
    Q_OBJECT

public:
    explicit GhostingDialog(QWidget* parent);

public Q_SLOTS:
    void Apply();

private:
    QSpinBox* previousCount_;
    QSpinBox* nextCount_;
    QCheckBox* colorOverride_;
    ColorControl previousColor_;
    ColorControl nextColor_;
};

} // namespace vellum
