// What the two dialogs of a layer share: their fields and buttons. Main thread only.
#pragma once

#include <QDialog>
#include <QStringList>

#include <vector>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

namespace vellum {

class LayerForm : public QDialog {
    Q_OBJECT

protected:
    /// Enter and OK go to acceptChanges(), Escape and Cancel to close().
    LayerForm(const QString& title, QWidget* parent);

    /// Rows come in the order in which they are added.
    QLineEdit* addName(const QString& name);
    /// The entry of `current`, whatever its case; without such a one that of `otherwise`, -1: none.
    QComboBox* addCameras(const QString& current, int otherwise);
    void addRow(const QString& label, QWidget* field);
    std::vector<QRadioButton*> addChoice(const QString& label, const QStringList& choices);
    /// Below all rows.
    void addButtons();

    virtual void acceptChanges() = 0;

private:
    QVBoxLayout* column_;
    QFormLayout* rows_;
};

} // namespace vellum
