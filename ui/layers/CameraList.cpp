#include "ui/layers/CameraList.h"

#include "ui/layers/CameraLayerList.h"
#include "ui/layers/LayerItem.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QHash>
#include <QPalette>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <utility>

namespace vellum {

namespace {

void layOut(QWidget& widget) {
    QEvent request(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(&widget, &request);
}

} // namespace

/// A row that is to stay where it is on the screen while others come and go.
struct CameraList::Anchor {
    QPointer<LayerItem> row; ///< null: there is none, or the top is shown and shall be
    int y = 0;               ///< in the viewport
};

CameraList::CameraList(QWidget* parent) : QWidget(parent), area_(new QScrollArea(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area_);

    auto* inner = new QWidget;
    inner->setGeometry(0, 0, MQtUtil::dpiScale(1000), MQtUtil::dpiScale(1000));
    sections_ = new QVBoxLayout(inner);
    sections_->setContentsMargins(0, 0, 0, 0);
    sections_->setSpacing(0);
    sections_->setAlignment(Qt::AlignTop);
    area_->setWidget(inner);
    area_->setWidgetResizable(true);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // names are cut instead
    area_->setFocusPolicy(Qt::NoFocus);

    const QPalette maya = MQtUtil::mainWindow()->palette();
    QPalette colors;
    for (const auto role : {QPalette::Window, QPalette::Button})
        colors.setColor(role, maya.color(QPalette::Mid));
    colors.setColor(QPalette::Highlight, maya.color(QPalette::Midlight));
    for (QWidget* widget : {static_cast<QWidget*>(this), inner})
        widget->setPalette(colors);
}

void CameraList::showListing(const LayerListing& listing) {
    if (listing == shown_)
        return;
    const Anchor fixed = anchor();
    bool moved = arrange(listing.sections);
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        const CameraSection& section = listing.sections[i];
        const bool isSelected = section.camera == listing.selected.camera;
        if (lists_[i]->showSection(section, isSelected ? listing.selected.index : -1))
            moved = true;
    }
    shown_ = listing;
    if (moved)
        keep(fixed);
}

bool CameraList::arrange(const std::vector<CameraSection>& sections) {
    const auto isInPlace = [&](std::size_t i) {
        return i < lists_.size() && lists_[i]->camera() == sections[i].camera;
    };
    std::size_t same = 0;
    while (same < sections.size() && isInPlace(same))
        ++same;
    if (same == sections.size() && same == lists_.size())
        return false;
    QHash<QString, CameraLayerList*> spare;
    for (CameraLayerList* list : lists_)
        spare.insert(list->camera(), list);
    std::vector<CameraLayerList*> lists;
    for (const CameraSection& section : sections) {
        CameraLayerList* list = spare.take(section.camera);
        lists.push_back(list ? list : new CameraLayerList(section.camera, area_->widget()));
        sections_->removeWidget(lists.back());
        sections_->addWidget(lists.back());
        lists.back()->show();
    }
    for (CameraLayerList* gone : std::as_const(spare)) {
        sections_->removeWidget(gone);
        gone->hide();
        gone->deleteLater(); // its row's event may be what brought us here
    }
    lists_ = std::move(lists);
    return true;
}

CameraList::Anchor CameraList::anchor() const {
    const QWidget& viewport = *area_->viewport();
    if (!isVisible() || area_->verticalScrollBar()->value() == 0)
        return {};
    const auto rowAt = [&](const QPoint& place) -> LayerItem* {
        QWidget* at = viewport.rect().contains(place) ? viewport.childAt(place) : nullptr;
        while (at && at != &viewport && !qobject_cast<LayerItem*>(at))
            at = at->parentWidget();
        return qobject_cast<LayerItem*>(at);
    };
    LayerItem* row = rowAt(viewport.mapFromGlobal(QCursor::pos()));
    for (int y = 0; !row && y < viewport.height(); y += MQtUtil::dpiScale(8))
        row = rowAt({viewport.width() / 2, y});
    return {row, row ? row->mapTo(&viewport, QPoint(0, 0)).y() : 0};
}

void CameraList::keep(const Anchor& anchor) {
    if (!anchor.row || anchor.row->isHidden())
        return;
    // The layouts would follow a moment later, when the row has been seen elsewhere.
    for (CameraLayerList* list : lists_)
        layOut(*list);
    layOut(*area_->widget());
    layOut(*area_);
    QScrollBar& bar = *area_->verticalScrollBar();
    bar.setValue(bar.value() + anchor.row->mapTo(area_->viewport(), QPoint(0, 0)).y() - anchor.y);
}

int CameraList::layerCount(const QString& camera) const {
    for (const CameraSection& section : shown_.sections) {
        if (section.camera == camera)
            return static_cast<int>(section.rows.size());
    }
    return 0;
}

} // namespace vellum
