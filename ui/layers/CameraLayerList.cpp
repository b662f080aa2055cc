#include "ui/layers/CameraLayerList.h"

#include "ui/Modal.h"
#include "ui/NameLabel.h"
#include "ui/layers/CameraMenu.h"
#include "ui/layers/LayerCommands.h"
#include "ui/layers/LayerItem.h"

#include <QHash>
#include <QMenu>
#include <QPalette>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <utility>

namespace vellum {

namespace {

constexpr int kHeaderHeight = 20;

} // namespace

CameraLayerList::CameraLayerList(const QString& camera, QWidget* parent)
    : QWidget(parent), camera_(camera), header_(new NameLabel(NameLabel::Weight::Bold, this)),
      rows_(new QVBoxLayout(this)) {
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &CameraLayerList::ShowContextMenu);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    QPalette colors;
    colors.setColor(QPalette::Window, MQtUtil::mainWindow()->palette().color(QPalette::Midlight));
    header_->setPalette(colors);
    header_->setAutoFillBackground(true);
    header_->setFixedHeight(MQtUtil::dpiScale(kHeaderHeight));
    header_->setMargin(MQtUtil::dpiScale(2));
    header_->setName(camera);
    rows_->addWidget(header_);
}

bool CameraLayerList::showSection(const CameraSection& section, int selectedIndex) {
    if (section == shown_ && selectedIndex == shownIndex_)
        return false;
    showWhetherInScene(section.isInScene);
    const bool moved = arrange(section.rows);
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const LayerRow& row = section.rows[i];
        items_[i]->showLayer(row, row.index == selectedIndex);
    }
    shown_ = section;
    shownIndex_ = selectedIndex;
    return moved;
}

void CameraLayerList::showWhetherInScene(bool isInScene) {
    if (header_->isEnabled() == isInScene)
        return;
    header_->setEnabled(isInScene);
    setToolTip(isInScene ? QString() : QStringLiteral("This camera is not in the scene."));
}

bool CameraLayerList::arrange(const std::vector<LayerRow>& rows) {
    const auto isInPlace = [&](std::size_t i) {
        return i < items_.size() && items_[i]->layer() == rows[i].id;
    };
    std::size_t same = 0;
    while (same < rows.size() && isInPlace(same))
        ++same;
    if (same == rows.size() && same == items_.size())
        return false;
    QHash<quint64, LayerItem*> spare;
    for (std::size_t i = same; i < items_.size(); ++i)
        spare.insert(items_[i]->layer(), items_[i]);
    std::vector<LayerItem*> items(items_.begin(),
                                  items_.begin() + static_cast<std::ptrdiff_t>(same));
    for (std::size_t i = same; i < rows.size(); ++i) {
        LayerItem* item = spare.take(rows[i].id);
        items.push_back(item ? item : new LayerItem(camera_, rows[i].id, this));
    }
    for (LayerItem* gone : std::as_const(spare)) {
        rows_->removeWidget(gone);
        gone->hide();
        gone->deleteLater(); // its event may be what brought us here
    }
    const int header = 1;
    for (std::size_t i = same; i < items.size(); ++i) {
        const int at = static_cast<int>(i) + header;
        QLayoutItem* there = rows_->itemAt(at);
        if (there && there->widget() == items[i])
            continue;
        rows_->removeWidget(items[i]);
        rows_->insertWidget(at, items[i]);
        items[i]->show(); // the layout would a moment later, and leave no room for it until then
    }
    items_ = std::move(items);
    return true;
}

void CameraLayerList::ShowContextMenu(const QPoint& position) {
    auto* menu = new QMenu;
    addCameras(*menu, QStringLiteral("Move all layers to"), camera_, this, SLOT(SwitchCamera()));
    connect(this, &QObject::destroyed, menu, &QMenu::close);
    popUp(menu, mapToGlobal(position));
}

void CameraLayerList::SwitchCamera() {
    const QString target = chosenCamera(sender());
    if (!target.isEmpty())
        issue(layer_commands::moveAllToCamera(camera_, target));
}

} // namespace vellum
