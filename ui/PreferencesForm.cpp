#include "ui/PreferencesForm.h"

#include "ui/DialogButtons.h"
#include "ui/FlatButton.h"

#include <QCheckBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <initializer_list>

namespace vellum {

namespace {

constexpr int kListWidth = 130;
constexpr int kButtonWidth = 80;
constexpr int kSwatchWidth = 64;
constexpr int kLargest = 2000;
constexpr int kFurthestFrame = 9999;

struct SwitchRow {
    const char* label;
    const char* objectName;
    bool Settings::*setting;
};

constexpr SwitchRow kOptions[] = {
    {"Disable ghosting during playback", "disableGhostingDuringPlaybackCB",
     &Settings::disableGhostingDuringPlayback},
    {"Draw Tool viewport context menu", "drawToolContextMenuCB", &Settings::drawToolContextMenu},
    {"Transform Tool viewport context menu", "transformToolContextMenuCB",
     &Settings::transformToolContextMenu},
    {"Timeline context menu", "timelineContextMenuCB", &Settings::timelineContextMenu},
    {"Toolbox draw tool context menu", "toolboxDrawToolContextMenuCB",
     &Settings::toolboxDrawToolContextMenu},
    {"Toolbox ghosting context menu", "toolboxGhostingContextMenuCB",
     &Settings::toolboxGhostingContextMenu},
    {"Timeline range move enabled", "timeControlRangeMoveEnabledCB",
     &Settings::timeControlRangeMoveEnabled},
    {"Ignore 2D Pan/Zoom", "ignore2dPanZoomCB", &Settings::ignore2dPanZoom},
    // Two blanks, as users and their handbooks know it.
    {"Show VL2 menu only  in Animation menu set (requires restart)", "mainMenuInAnimationSetCB",
     &Settings::showMainMenuInAnimationSet},
    {"Undo returns to the frame drawn on", "undoReturnsToFrameCB", &Settings::undoReturnsToFrame},
};
constexpr SwitchRow kCommonLayerOptions[] = {
    {"Automatically add first layer on draw", "automaticallyAddFirstLayerOnDrawCB",
     &Settings::automaticallyAddFirstLayer},
    {"Always display new layer dialog", "alwaysDisplayNewLayerDialogCB",
     &Settings::alwaysDisplayNewLayerDialog},
};
constexpr SwitchRow kInsertStaticFrame{"Insert default static frame", "insertDefaultStaticFrameCB",
                                       &Settings::insertDefaultStaticFrame};

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

template <class Widget> Widget* named(Widget* widget, const char* objectName) {
    widget->setObjectName(text(objectName));
    return widget;
}

template <class Layout = QVBoxLayout> Layout* addGroup(QVBoxLayout& page, const char* title) {
    auto* group = new QGroupBox(text(title));
    page.addWidget(group);
    return new Layout(group);
}

QVBoxLayout* addPage(QListWidget& list, QStackedWidget& stack, const char* label,
                     const char* objectName) {
    auto* page = named(new QWidget, objectName);
    stack.addWidget(page);
    list.addItem(text(label));
    return new QVBoxLayout(page);
}

PreferencesForm::Switch makeSwitch(QVBoxLayout& group, const SwitchRow& row) {
    auto* box = named(new QCheckBox(text(row.label)), row.objectName);
    group.addWidget(box);
    return {box, row.setting};
}

void addGeneralPage(PreferencesForm& form, QVBoxLayout& page) {
    auto* color = addGroup<QHBoxLayout>(page, "Timeline Frame Color");
    form.timelineFrameColorBtn = named(new FlatButton, "timelineFrameColorBtn");
    form.timelineFrameColorBtn->setMinimumWidth(MQtUtil::dpiScale(kSwatchWidth));
    form.timelineFrameColorBtn->setMaximumWidth(QWIDGETSIZE_MAX);
    form.timelineFrameColorDefaultBtn =
        named(new QPushButton(text("Default")), "timelineFrameColorDefaultBtn");
    form.timelineFrameColorDefaultBtn->setAutoDefault(false);
    color->addWidget(form.timelineFrameColorBtn);
    color->addWidget(form.timelineFrameColorDefaultBtn);
    color->addStretch();

    QVBoxLayout* options = addGroup(page, "Options");
    for (const SwitchRow& row : kOptions)
        form.switches.push_back(makeSwitch(*options, row));
    page.addStretch();
}

void addLayersPage(PreferencesForm& form, QVBoxLayout& page) {
    auto* state = addGroup<QHBoxLayout>(page, "Default New Layer State");
    form.animLayerTypeRB = named(new QRadioButton(text("Anim")), "animLayerTypeRB");
    form.staticLayerTypeRB = named(new QRadioButton(text("Static")), "staticLayerTypeRB");
    state->addWidget(form.animLayerTypeRB);
    state->addWidget(form.staticLayerTypeRB);
    state->addStretch();

    QVBoxLayout* common = addGroup(page, "Common Layer Options");
    for (const SwitchRow& row : kCommonLayerOptions)
        form.switches.push_back(makeSwitch(*common, row));

    QVBoxLayout* fixed = addGroup(page, "Static Layer Options");
    form.defaultStaticFrameTimeSB = named(new QSpinBox, "defaultStaticFrameTimeSB");
    form.defaultStaticFrameTimeSB->setRange(-kFurthestFrame, kFurthestFrame);
    auto* time = new QFormLayout;
    time->addRow(text("Default static frame time:"), form.defaultStaticFrameTimeSB);
    fixed->addLayout(time);
    form.switches.push_back(makeSwitch(*fixed, kInsertStaticFrame));
    page.addStretch();
}

} // namespace

PreferencesForm::PreferencesForm(QDialog& dialog) {
    auto* list = named(new QListWidget, "menuListWdg");
    list->setMaximumWidth(MQtUtil::dpiScale(kListWidth));
    auto* stack = named(new QStackedWidget, "preferencesStackedWdg");
    addGeneralPage(*this, *addPage(*list, *stack, "General", "generalPage"));
    addLayersPage(*this, *addPage(*list, *stack, "Layers", "advancedPage"));
    QObject::connect(list, &QListWidget::currentRowChanged, stack,
                     &QStackedWidget::setCurrentIndex);
    list->setCurrentRow(0);

    auto* column = new QVBoxLayout(&dialog);
    auto* pages = new QHBoxLayout;
    pages->addWidget(list);
    pages->addWidget(stack, 1);
    column->addLayout(pages);
    const DialogButtons buttons = makeDialogButtons(dialog);
    ok = buttons.ok;
    cancel = buttons.cancel;
    for (QPushButton* button : {ok, cancel})
        button->setMinimumWidth(MQtUtil::dpiScale(kButtonWidth));
    column->addLayout(buttons.row);
    dialog.setMaximumSize(MQtUtil::dpiScale(kLargest), MQtUtil::dpiScale(kLargest));
}

void PreferencesForm::read(const Settings& from) {
    for (const Switch& one : switches)
        one.box->setChecked(from.*one.setting);
    const bool isStatic = from.defaultLayerState == 1;
    staticLayerTypeRB->setChecked(isStatic);
    animLayerTypeRB->setChecked(!isStatic);
    defaultStaticFrameTimeSB->setValue(from.defaultStaticFrameTime);
}

void PreferencesForm::write(Settings& to) const {
    for (const Switch& one : switches)
        to.*one.setting = one.box->isChecked();
    to.defaultLayerState = staticLayerTypeRB->isChecked() ? 1 : 0;
    to.defaultStaticFrameTime = defaultStaticFrameTimeSB->value();
}

} // namespace vellum
