#include "ui/layers/LayerManagerDialog.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/session/Cameras.h"
#include "ui/FlatButton.h"
#include "ui/layers/CameraList.h"
#include "ui/layers/LayerCommands.h"
#include "ui/layers/NewLayerDialog.h"

#include <QHBoxLayout>
#include <QImage>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

namespace vellum {

namespace {

constexpr int kMargin = 2;
constexpr int kButtonSide = 24;
constexpr int kRefreshPadding = 10;

} // namespace

LayerManagerDialog::LayerManagerDialog(QWidget* parent)
    : PanelDialog(&Settings::layerManagerGeometry, Keyboard::Never, parent, Restore::Once),
      list_(new CameraList(this)) {
    setWindowTitle(QStringLiteral("Layer Manager"));
    setMinimumSize(MQtUtil::dpiScale(200), MQtUtil::dpiScale(180));

    // Maya's own icons, where it has them.
    FlatButton* up = makeButton(QStringLiteral("Move Up"), QStringLiteral(":/moveLayerUp.png"),
                                QStringLiteral(":/icons/move_layer_up.png"));
    FlatButton* down =
        makeButton(QStringLiteral("Move Down"), QStringLiteral(":/moveLayerDown.png"),
                   QStringLiteral(":/icons/move_layer_down.png"));
    FlatButton* add = makeButton(QStringLiteral("New Layer"), QStringLiteral(":/newLayerEmpty.png"),
                                 QStringLiteral(":/icons/new_layer.png"));
    FlatButton* remove = makeButton(QStringLiteral("Delete Layer"),
                                    QStringLiteral(":/icons/delete_layer.png"), QString());
    FlatButton* refresh =
        makeButton(QStringLiteral("Refresh"), QStringLiteral(":/icons/refresh.png"), QString(),
                   kRefreshPadding);
    connect(up, &FlatButton::clicked, this, &LayerManagerDialog::MoveLayerUp);
    connect(down, &FlatButton::clicked, this, &LayerManagerDialog::MoveLayerDown);
    connect(add, &FlatButton::clicked, this, &LayerManagerDialog::NewLayer);
    connect(remove, &FlatButton::clicked, this, &LayerManagerDialog::DeleteLayer);
    connect(refresh, &FlatButton::clicked, this, &LayerManagerDialog::RefreshUi);

    auto* rows = new QVBoxLayout(this);
    const int margin = MQtUtil::dpiScale(kMargin);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(0);
    auto* top = new QHBoxLayout;
    top->addStretch();
    top->addWidget(refresh);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(up);
    bottom->addWidget(down);
    bottom->addStretch();
    bottom->addWidget(add);
    bottom->addWidget(remove);
    rows->addLayout(top);
    rows->addWidget(list_, 1);
    rows->addLayout(bottom);
}

FlatButton* LayerManagerDialog::makeButton(const QString& toolTip, const QString& icon,
                                           const QString& fallback, int padding) {
    auto* button = new FlatButton(this);
    button->setSide(kButtonSide);
    button->setHoverHighlighting(false);
    button->setToolTip(toolTip);
    const QImage image(icon);
    button->setImage(image.isNull() && !fallback.isEmpty() ? QImage(fallback) : image, padding);
    return button;
}

void LayerManagerDialog::showListing(const LayerListing& listing) {
    selected_ = listing.selected;
    list_->showListing(listing);
}

void LayerManagerDialog::refreshForShow() {
    const BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    showListing(document ? listLayers(*document, cameraNames()) : LayerListing());
}

void LayerManagerDialog::NewLayer() {
    NewLayerDialog::open(this);
}

void LayerManagerDialog::DeleteLayer() {
    actionDone();
    issue(layer_commands::deleteLayer(selected_));
}

void LayerManagerDialog::MoveLayerUp() {
    actionDone();
    issue(layer_commands::moveUp(selected_));
}

void LayerManagerDialog::MoveLayerDown() {
    actionDone();
    issue(layer_commands::moveDown(selected_, list_->layerCount(selected_.camera)));
}

void LayerManagerDialog::RefreshUi() {
    actionDone();
    issue(layer_commands::refresh());
}

} // namespace vellum
