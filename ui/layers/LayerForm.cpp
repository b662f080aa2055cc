#include "ui/layers/LayerForm.h"

#include "plugin/session/Cameras.h"
#include "ui/PanelDialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <limits>

namespace vellum {

namespace {

constexpr int kMinimumWidth = 300;
constexpr int kComboCharacters = 20;

} // namespace

LayerForm::LayerForm(const QString& title, QWidget* parent)
    : QDialog(parent), column_(new QVBoxLayout(this)), rows_(new QFormLayout) {
    removeContextHelpButton(*this);
    setWindowTitle(title);
    setMinimumWidth(MQtUtil::dpiScale(kMinimumWidth));
    column_->addLayout(rows_);
}

QLineEdit* LayerForm::addName(const QString& name) {
    auto* field = new QLineEdit(this);
    field->setMaxLength(std::numeric_limits<int>::max());
    field->setText(name);
    field->selectAll();
    rows_->addRow(QStringLiteral("Name:"), field);
    field->setFocus();
    return field;
}

QComboBox* LayerForm::addCameras(const QString& current, int otherwise) {
    auto* list = new QComboBox(this);
    // As wide as the dialog, not as the longest name.
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(kComboCharacters);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    list->addItems(cameraNames());
    const int exact = list->findText(current, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    const int found = exact >= 0 ? exact : list->findText(current, Qt::MatchFixedString);
    list->setCurrentIndex(found >= 0 ? found : otherwise);
    rows_->addRow(QStringLiteral("Camera:"), list);
    return list;
}

void LayerForm::addRow(const QString& label, QWidget* field) {
    rows_->addRow(label, field);
}

std::vector<QRadioButton*> LayerForm::addChoice(const QString& label, const QStringList& choices) {
    auto* row = new QHBoxLayout;
    std::vector<QRadioButton*> buttons;
    for (const QString& choice : choices) {
        buttons.push_back(new QRadioButton(choice, this));
        row->addWidget(buttons.back());
    }
    row->addStretch();
    rows_->addRow(label, row);
    return buttons;
}

void LayerForm::addButtons() {
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &LayerForm::acceptChanges);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    column_->addLayout(row);
}

} // namespace vellum
