#include "ui/ToolboxDialog.h"

#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "ui/FlatButton.h"
#include "ui/Modal.h"
#include "ui/ToolOptionsDialog.h"
#include "ui/ToolboxCommands.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMetaMethod>
#include <QScreen>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <algorithm>

namespace vellum {

namespace {

constexpr int kGap = 2;
constexpr int kToolSide = 38;
constexpr int kFrameSide = 24;
constexpr int kGhostPadding = 8;
constexpr int kFramePadding = 6;
constexpr int kPickerWidth = 76;
constexpr int kPickerHeight = 28;
constexpr int kToolsInARow = 2;
constexpr int kLargestOfferedCount = 5; // scripts can set more

QHBoxLayout* addRow(QBoxLayout& rows) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(MQtUtil::dpiScale(kGap));
    rows.addLayout(row);
    return row;
}

} // namespace

ToolboxDialog::ToolboxDialog(QWidget* parent)
    : PanelDialog(&Settings::toolboxGeometry, Keyboard::Never, parent),
      idle_(palette().color(QPalette::Window)), active_(palette().color(QPalette::Highlight)),
      picker_(QStringLiteral("rvVlToolboxColorPickerBtn"), kPickerWidth, kPickerHeight) {
    setWindowTitle(QStringLiteral(" "));
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ToolboxDialog::ShowContextMenu);

    auto* rows = new QVBoxLayout(this);
    const int gap = MQtUtil::dpiScale(kGap);
    rows->setContentsMargins(gap, gap, gap, gap);
    rows->setSpacing(gap);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    addTools(*rows);
    QHBoxLayout* pickerRow = addRow(*rows);
    if (QWidget* control = picker_.widget()) {
        pickerRow->addWidget(control, 0, Qt::AlignCenter);
        const QString takeColor = command::util(QStringLiteral("-rtb"));
        picker_.setChangeCommand(takeColor);
        picker_.setDragCommand(takeColor);
        for (QWidget* part : control->findChildren<QWidget*>())
            part->installEventFilter(this);
    }
    addDashes(*rows);
    addGhosts(*rows);
    addDashes(*rows);
    addFrameOperations(*rows);
    options_ = new ToolOptionsDialog(ToolOptionsDialog::Form::PopUp, settings().activeTool, this);
    refresh();
}

FlatButton* ToolboxDialog::addButton(QBoxLayout& row, const char* icon, int padding, int side,
                                     const char* toolTip) {
    auto* button = new FlatButton(this);
    button->setSide(side);
    button->setImage(QImage(QString::fromLatin1(icon)), padding);
    button->setToolTip(QString::fromLatin1(toolTip));
    row.addWidget(button);
    return button;
}

void ToolboxDialog::addTools(QBoxLayout& rows) {
    QBoxLayout* row = nullptr;
    for (std::size_t i = 0; i < kTools.size(); ++i) {
        if (i % kToolsInARow == 0)
            row = addRow(rows);
        const ToolInfo& tool = kTools[i];
        tools_[i] = addButton(*row, tool.icon.file, tool.icon.padding, kToolSide, tool.name);
        connectTool(*tools_[i], tool);
    }
}

/// To the slot that has its name, where there is one.
void ToolboxDialog::connectTool(FlatButton& button, const ToolInfo& tool) {
    const QByteArray slot = "Set" + QByteArray(tool.name) + "Tool()";
    const QMetaMethod method =
        staticMetaObject.method(staticMetaObject.indexOfSlot(slot.constData()));
    if (method.isValid())
        connect(&button, QMetaMethod::fromSignal(&FlatButton::clicked), this, method);
    else
        connect(&button, &FlatButton::clicked, this, [this, &tool] { choose(tool.tool); });
}

void ToolboxDialog::addGhosts(QBoxLayout& rows) {
    QBoxLayout& row = *addRow(rows);
    ghostPrevious_ =
        addButton(row, ":/icons/ghost_prev.png", kGhostPadding, kToolSide, "Ghost Previous");
    ghostNext_ = addButton(row, ":/icons/ghost_next.png", kGhostPadding, kToolSide, "Ghost Next");
    connect(ghostPrevious_, &FlatButton::clicked, this, &ToolboxDialog::ToggleGhostPrevious);
    connect(ghostNext_, &FlatButton::clicked, this, &ToolboxDialog::ToggleGhostNext);
}

void ToolboxDialog::addFrameOperations(QBoxLayout& rows) {
    const struct {
        const char* icon;
        const char* toolTip;
        Slot slot;
    } operations[][3] = {
        {{":/icons/insert.png", "Insert Frame(s)", &ToolboxDialog::InsertKey},
         {":/icons/duplicate.png", "Duplicate Key", &ToolboxDialog::DuplicateKey},
         {":/icons/delete.png", "Delete Frame(s)", &ToolboxDialog::DeleteKey}},
        {{":/icons/cut.png", "Cut Frame(s)", &ToolboxDialog::CutKey},
         {":/icons/copy.png", "Copy Frame(s)", &ToolboxDialog::CopyKey},
         {":/icons/paste.png", "Paste Frame(s)", &ToolboxDialog::PasteKey}},
    };
    for (const auto& three : operations) {
        QBoxLayout& row = *addRow(rows);
        for (const auto& [icon, toolTip, slot] : three)
            connect(addButton(row, icon, kFramePadding, kFrameSide, toolTip), &FlatButton::clicked,
                    this, slot);
    }
}

void ToolboxDialog::addDashes(QBoxLayout& rows) {
    auto* dashes = new QLabel(QStringLiteral("------"), this);
    dashes->setAlignment(Qt::AlignCenter);
    rows.addWidget(dashes);
}

void ToolboxDialog::refresh() {
    const Settings& current = settings();
    const auto show = [this](FlatButton* button, bool on) {
        button->setColors(on ? active_ : idle_);
    };
    for (const ToolInfo& tool : kTools)
        show(tools_[static_cast<std::size_t>(tool.tool)], tool.tool == current.activeTool);
    show(ghostPrevious_, current.ghostPrev);
    show(ghostNext_, current.ghostNext);
    picker_.setColor(current.activeColor);
}

void ToolboxDialog::refreshToolOptions() {
    if (options_->isVisible())
        options_->refresh();
}

bool ToolboxDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress)
        choosesColor_ = true;
    return PanelDialog::eventFilter(watched, event);
}

bool ToolboxDialog::event(QEvent* event) {
    if (event->type() == QEvent::WindowUnblocked && choosesColor_) {
        choosesColor_ = false;
        // Once Maya's chooser, which had the keyboard, has closed.
        QMetaObject::invokeMethod(
            this, [this] { actionDone(); }, Qt::QueuedConnection);
    }
    return PanelDialog::event(event);
}

void ToolboxDialog::hideEvent(QHideEvent* event) {
    options_->hide();
    PanelDialog::hideEvent(event);
}

/// Nothing of this object is touched after it.
void ToolboxDialog::run(const PanelCommands& commands) {
    actionDone();
    issue(commands);
}

void ToolboxDialog::choose(Tool tool) {
    run(toolbox::chooseTool(tool));
}

void ToolboxDialog::ToggleGhostPrevious() {
    run(toolbox::switchGhostPrevious(settings()));
}

void ToolboxDialog::ToggleGhostNext() {
    run(toolbox::switchGhostNext(settings()));
}

void ToolboxDialog::InsertKey() {
    run(toolbox::insertFrames(hasActiveNode()));
}

void ToolboxDialog::DuplicateKey() {
    run(toolbox::frames("-duplicate"));
}

void ToolboxDialog::DeleteKey() {
    run(toolbox::frames("-delete"));
}

void ToolboxDialog::CutKey() {
    run(toolbox::frames("-cut"));
}

void ToolboxDialog::CopyKey() {
    run(toolbox::frames("-copy"));
}

void ToolboxDialog::PasteKey() {
    run(toolbox::frames("-paste"));
}

void ToolboxDialog::SetGhostPreviousCount() {
    if (const auto* entry = qobject_cast<const QAction*>(sender()))
        run(toolbox::ghostPreviousCount(entry->data().toInt()));
}

void ToolboxDialog::SetGhostNextCount() {
    if (const auto* entry = qobject_cast<const QAction*>(sender()))
        run(toolbox::ghostNextCount(entry->data().toInt()));
}

void ToolboxDialog::ShowGhostingSettings() {
    run(toolbox::ghostingSettings());
}

void ToolboxDialog::ShowContextMenu(const QPoint& position) {
    const QWidget* under = childAt(position);
    const Settings& current = settings();
    if (current.toolboxGhostingContextMenu && under == ghostPrevious_)
        showGhostMenu(current.ghostPrevCount, &ToolboxDialog::SetGhostPreviousCount,
                      mapToGlobal(position));
    if (current.toolboxGhostingContextMenu && under == ghostNext_)
        showGhostMenu(current.ghostNextCount, &ToolboxDialog::SetGhostNextCount,
                      mapToGlobal(position));
    const auto tool = std::find(tools_.begin(), tools_.end(), under);
    if (current.toolboxDrawToolContextMenu && tool != tools_.end())
        showOptions(**tool, static_cast<Tool>(tool - tools_.begin()));
}

void ToolboxDialog::showGhostMenu(int current, Slot setCount, const QPoint& globalPosition) {
    auto* menu = new QMenu;
    for (int count = 1; count <= kLargestOfferedCount; ++count) {
        QAction* entry = menu->addAction(QString::number(count), this, setCount);
        entry->setData(count);
        entry->setCheckable(true);
        entry->setChecked(count == current);
    }
    menu->addSeparator();
    const QAction* ghosting = menu->addAction(QStringLiteral("Settings..."));
    // The dialog's event loop may take the menu away, so it begins when the menu's event is done.
    connect(ghosting, &QAction::triggered, this, &ToolboxDialog::ShowGhostingSettings,
            Qt::QueuedConnection);
    popUp(menu, globalPosition);
}

/// Beside the button; on its other side where the screen ends.
void ToolboxDialog::showOptions(const FlatButton& button, Tool tool) {
    const int gap = MQtUtil::dpiScale(kGap);
    options_->showTool(tool);
    options_->adjustSize();
    QPoint place = button.mapToGlobal(QPoint(button.height() + gap, gap));
    const QRect room = screen()->availableGeometry();
    if (place.x() + options_->width() > room.right() + 1)
        place.setX(button.mapToGlobal(QPoint(-gap - options_->width(), 0)).x());
    place.setY(std::min(place.y(), room.bottom() + 1 - options_->height()));
    options_->move(place);
    options_->show();
    setFocus(); // within this window, which is not the active one: the view keeps the keyboard
}

} // namespace vellum
