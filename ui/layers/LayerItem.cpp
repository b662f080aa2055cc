#include "ui/layers/LayerItem.h"

#include "plugin/session/Keyboard.h"
#include "ui/Modal.h"
#include "ui/NameLabel.h"
#include "ui/NameText.h"
#include "ui/layers/CameraMenu.h"
#include "ui/layers/LayerCommands.h"
#include "ui/layers/LayerManagerDialog.h"
#include "ui/layers/LayerPropertiesDialog.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QMetaObject>
#include <QMouseEvent>
#include <QPalette>
#include <QPushButton>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kMargin = 4;
constexpr int kSpacing = 5;

QPushButton* makeButton(QWidget* row) {
    auto* button = new QPushButton(row);
    button->setFixedSize(MQtUtil::dpiScale(20), MQtUtil::dpiScale(14));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    return button;
}

void setText(QPushButton& button, const QString& text) {
    if (button.text() != text)
        button.setText(text);
}

} // namespace

LayerItem::LayerItem(const QString& camera, quint64 layer, QWidget* parent)
    : QWidget(parent), camera_(camera), layer_(layer), visibility_(makeButton(this)),
      state_(makeButton(this)), name_(new NameLabel(NameLabel::Weight::Normal, this)) {
    setAutoFillBackground(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &LayerItem::ShowContextMenu);
    connect(visibility_, &QPushButton::clicked, this, &LayerItem::OnVisibilityBtnClicked);
    connect(state_, &QPushButton::clicked, this, &LayerItem::OnStateBtnClicked);

    auto* columns = new QHBoxLayout(this);
    const int margin = MQtUtil::dpiScale(kMargin);
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(MQtUtil::dpiScale(kSpacing));
    columns->addWidget(visibility_);
    columns->addWidget(state_);
    columns->addWidget(name_, 1);
    setDrawnOn(false);
}

void LayerItem::showLayer(const LayerRow& row, bool isDrawnOn) {
    layerName_ = row.name;
    name_->setName(row.name);
    setText(*visibility_, layer_commands::visibilityText(row.visible));
    setText(*state_, layer_commands::stateText(row.state));
    if (isDrawnOn != isDrawnOn_)
        setDrawnOn(isDrawnOn);
}

// Each widget gets the colours itself: where the application has a style sheet, children do not
// take on their parent's.
void LayerItem::setDrawnOn(bool isDrawnOn) {
    isDrawnOn_ = isDrawnOn;
    const QPalette maya = MQtUtil::mainWindow()->palette();
    QPalette colors = maya;
    for (const auto role : {QPalette::Button, QPalette::Window})
        colors.setColor(role, maya.color(isDrawnOn ? QPalette::Highlight : QPalette::Mid));
    if (isDrawnOn) {
        for (const auto role : {QPalette::WindowText, QPalette::ButtonText})
            colors.setColor(role, maya.color(QPalette::HighlightedText));
    }
    for (QWidget* widget : {static_cast<QWidget*>(this), static_cast<QWidget*>(visibility_),
                            static_cast<QWidget*>(state_), static_cast<QWidget*>(name_)})
        widget->setPalette(colors);
}

void LayerItem::OnVisibilityBtnClicked() {
    giveKeyboardToView();
    if (const auto found = requireLayer(layer_))
        issue(layer_commands::clickVisibility(*found, visibility_->text()));
}

void LayerItem::OnStateBtnClicked() {
    giveKeyboardToView();
    if (const auto found = requireLayer(layer_))
        issue(layer_commands::clickState(*found, state_->text()));
}

void LayerItem::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    giveKeyboardToView();
    if (const auto found = requireLayer(layer_))
        issue(layer_commands::clickRow(*found, isDrawnOn(*found)));
}

// The dialog's event loop may take the row away, so it begins when this event is done.
void LayerItem::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseDoubleClickEvent(event);
        return;
    }
    event->accept();
    QMetaObject::invokeMethod(this, &LayerItem::ShowLayerPropertiesDialog, Qt::QueuedConnection);
}

void LayerItem::ShowContextMenu(const QPoint& position) {
    auto* menu = new QMenu;
    QAction* properties = menu->addAction(menuText(layerName_) + QStringLiteral("..."));
    connect(properties, &QAction::triggered, this, &LayerItem::ShowLayerPropertiesDialog,
            Qt::QueuedConnection);
    menu->addSeparator();
    addCameras(*menu, QStringLiteral("Move layer to"), camera_, this, SLOT(SwitchCamera()));
    // Of a layer that has gone there is nothing to choose any more.
    connect(this, &QObject::destroyed, menu, &QMenu::close);
    popUp(menu, mapToGlobal(position));
}

void LayerItem::SwitchCamera() {
    const QString target = chosenCamera(sender());
    if (target.isEmpty())
        return;
    if (const auto found = requireLayer(layer_))
        issue(layer_commands::moveToCamera(*found, target));
}

void LayerItem::ShowLayerPropertiesDialog() {
    const auto found = requireLayer(layer_);
    if (!found)
        return;
    QWidget* panel = qobject_cast<LayerManagerDialog*>(window());
    LayerPropertiesDialog::open(*found, panel ? panel : MQtUtil::mainWindow());
}

} // namespace vellum
