#include "ui/PreferencesDialog.h"

#include "document/Changes.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "ui/FlatButton.h"
#include "ui/Modal.h"
#include "ui/PanelDialog.h"
#include "ui/PreferencesForm.h"

#include <QPointer>
#include <QPushButton>

namespace vellum {

PreferencesDialog::PreferencesDialog(QWidget* parent)
    : QDialog(parent), form_(std::make_unique<PreferencesForm>(*this)),
      colorAtOpening_(settings().timelineFrameColor) {
    setWindowTitle(QStringLiteral("Preferences"));
    removeContextHelpButton(*this);
    form_->read(settings());
    form_->timelineFrameColorBtn->setColors(colorAtOpening_);
    connect(form_->timelineFrameColorBtn, &FlatButton::clicked, this,
            &PreferencesDialog::SelectTimelineFrameColor);
    connect(form_->timelineFrameColorDefaultBtn, &QPushButton::clicked, this,
            &PreferencesDialog::SetDefaultTimelineFrameColor);
    connect(form_->ok, &QPushButton::clicked, this, &PreferencesDialog::accept);
    connect(form_->cancel, &QPushButton::clicked, this, &PreferencesDialog::reject);
}

PreferencesDialog::~PreferencesDialog() = default;

void PreferencesDialog::showTimelineFrameColor(const QColor& color) {
    form_->timelineFrameColorBtn->setColors(color);
    settings().timelineFrameColor = color;
    tell(Change::TimelineAsked);
}

void PreferencesDialog::SelectTimelineFrameColor() {
    const QPointer<PreferencesDialog> self(this);
    const auto color = chooseColor(form_->timelineFrameColorBtn->background(),
                                   QStringLiteral("Timeline Frame Color"), this);
    if (self && color)
        showTimelineFrameColor(*color);
}

void PreferencesDialog::SetDefaultTimelineFrameColor() {
    showTimelineFrameColor(factoryTimelineFrameColor());
}

void PreferencesDialog::accept() {
    const bool panZoomBefore = settings().ignore2dPanZoom;
    form_->write(settings());
    settings().timelineFrameColor = form_->timelineFrameColorBtn->background();
    if (!saveSettings())
        report::warning(QStringLiteral("The preferences hold until Maya quits, but could not be "
                                       "saved: %1")
                            .arg(settingsPath()));
    {
        const ChangeGroup together;
        tell(Change::TimelineAsked);
        const BaseNode* node = settings().ignore2dPanZoom != panZoomBefore ? activeNode() : nullptr;
        if (node)
            tell(Change::View, node->layerManager().get());
    }
    QDialog::accept();
}

void PreferencesDialog::reject() {
    settings().timelineFrameColor = colorAtOpening_;
    tell(Change::TimelineAsked);
    QDialog::reject();
}

} // namespace vellum
