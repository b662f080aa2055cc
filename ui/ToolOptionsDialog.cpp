#include "ui/ToolOptionsDialog.h"

#include "plugin/base/ToolTable.h"
#include "plugin/session/Keyboard.h"
#include "ui/ToolOptionsCommands.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include <maya/MQtUtil.h>

#include <initializer_list>

namespace vellum {

namespace {

constexpr int kWidth = 250;
constexpr int kBoxWidth = 32;
constexpr int kLargestOpacity = 100;

bool same(const ToolOptions& a, const ToolOptions& b) {
    return a.size == b.size && a.opacity == b.opacity && a.tabletEnabled == b.tabletEnabled &&
           a.hardness == b.hardness && a.fontFamily == b.fontFamily;
}

} // namespace

void ToolOptionsDialog::Pair::set(int value, int largest) const {
    box->setMaximum(largest);
    box->setValue(value);
    slider->setMaximum(largest);
    slider->setValue(value);
}

void ToolOptionsDialog::Pair::setVisible(bool visible) const {
    box->setVisible(visible);
    slider->setVisible(visible);
}

ToolOptionsDialog::ToolOptionsDialog(Form form, Tool tool, QWidget* parent)
    : PanelDialog(form == Form::StandAlone ? &Settings::toolOptionsGeometry : nullptr,
                  Keyboard::InFields, parent),
      form_(form), tool_(tool) {
    if (form == Form::PopUp)
        setWindowFlags(Qt::Popup);
    setFocusPolicy(Qt::NoFocus);
    setMinimumWidth(MQtUtil::dpiScale(kWidth));

    auto* all = new QVBoxLayout(this);
    rows_ = new QFormLayout;
    all->addLayout(rows_);
    all->addStretch();
    fontLabel_ = new QLabel(QStringLiteral("Font:"), this);
    fonts_ = new QFontComboBox(this);
    fonts_->setFocusPolicy(Qt::StrongFocus);
    size_ = addPair(QStringLiteral("Size:"), QStringLiteral("size"));
    opacity_ = addPair(QStringLiteral("Opacity:"), QStringLiteral("opacity"));
    opacityLabel_ = qobject_cast<QLabel*>(rows_->itemAt(1, QFormLayout::LabelRole)->widget());
    tabletLabel_ = new QLabel(this);
    tablet_ = new QCheckBox(QStringLiteral("Tablet pressure enabled"), this);
    tablet_->setFocusPolicy(Qt::NoFocus);
    rows_->addRow(tabletLabel_, tablet_);
    connectControls();
    refresh();
}

ToolOptionsDialog::Pair ToolOptionsDialog::addPair(const QString& label, const QString& name) {
    Pair pair{new QSpinBox(this), new QSlider(Qt::Horizontal, this)};
    pair.box->setObjectName(name + QStringLiteral("SpinBox"));
    pair.box->setFixedWidth(MQtUtil::dpiScale(kBoxWidth));
    pair.box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    pair.box->setAlignment(Qt::AlignRight);
    pair.box->setStyleSheet(QStringLiteral("QSpinBox { padding: 1px 0px }")); // three digits fit
    pair.box->setFocusPolicy(Qt::StrongFocus); // the wheel does not bring it the keyboard
    pair.box->setMinimum(1);
    pair.slider->setObjectName(name + QStringLiteral("Slider"));
    pair.slider->setFocusPolicy(Qt::NoFocus);
    pair.slider->setMinimum(1);
    auto* row = new QHBoxLayout;
    row->addWidget(pair.box);
    row->addWidget(pair.slider);
    rows_->addRow(new QLabel(label, this), row);
    return pair;
}

void ToolOptionsDialog::connectControls() {
    using Self = ToolOptionsDialog;
    connect(size_.box, &QSpinBox::editingFinished, this, qOverload<>(&Self::SetSize));
    connect(size_.slider, &QSlider::valueChanged, this, qOverload<int>(&Self::SetSize));
    connect(opacity_.box, &QSpinBox::editingFinished, this, qOverload<>(&Self::SetOpacity));
    connect(opacity_.slider, &QSlider::valueChanged, this, qOverload<int>(&Self::SetOpacity));
    connect(tablet_, &QCheckBox::clicked, this, &Self::SetTabletPressureEnabled);
    connect(fonts_, &QFontComboBox::editTextChanged, this, &Self::SetFontFamily);
    // Once its list has closed, which has the keyboard until then.
    connect(
        fonts_, qOverload<int>(&QFontComboBox::activated), this, [this] { finish(); },
        Qt::QueuedConnection);
    const std::initializer_list<QWidget*> watched{size_.box,       size_.slider, opacity_.box,
                                                  opacity_.slider, tablet_,      fonts_};
    for (QWidget* each : watched)
        each->installEventFilter(this);
}

void ToolOptionsDialog::showTool(Tool tool) {
    tool_ = tool;
    refresh();
}

void ToolOptionsDialog::refresh() {
    if (form_ == Form::StandAlone)
        tool_ = settings().activeTool;
    const ToolInfo* info = findTool(tool_);
    const QScopedValueRollback<bool> showing(showing_, true);
    if (arranged_ != tool_) {
        arrangeFor(info);
        arranged_ = tool_;
        shown_.reset();
    }
    if (!info || (shown_ && same(*shown_, settings().of(tool_))))
        return;
    shown_ = settings().of(tool_);
    showValues(*info, *shown_);
}

void ToolOptionsDialog::arrangeFor(const ToolInfo* tool) {
    const bool hasFont = tool && tool->factoryFont;
    const bool opacity = !tool || tool->opacity.keep == Keep::File;
    const bool tablet = tool && tool->tablet.keep == Keep::File;
    if (rows_->indexOf(fonts_) >= 0) {
        const QFormLayout::TakeRowResult row = rows_->takeRow(fonts_);
        delete row.labelItem;
        delete row.fieldItem;
    }
    if (hasFont)
        rows_->insertRow(0, fontLabel_, fonts_);
    fontLabel_->setVisible(hasFont);
    fonts_->setVisible(hasFont);
    opacityLabel_->setVisible(opacity);
    opacity_.setVisible(opacity);
    tabletLabel_->setVisible(tablet);
    tablet_->setVisible(tablet);
    const QString name = tool ? QString::fromLatin1(tool->name) : QStringLiteral("Unknown");
    setWindowTitle(QStringLiteral("%1 Options").arg(name));
}

void ToolOptionsDialog::showValues(const ToolInfo& tool, const ToolOptions& options) {
    size_.set(options.size, tool.size.largest);
    opacity_.set(options.opacity, kLargestOpacity);
    tablet_->setChecked(options.tabletEnabled);
    if (tool.factoryFont)
        showFont(options.fontFamily);
}

void ToolOptionsDialog::showFont(const QString& family) {
    // What is being typed stays as it is, letter by letter, with what the field completes.
    if (fonts_->currentText().compare(family, Qt::CaseInsensitive) == 0)
        return;
    const int entry = fonts_->findText(family, Qt::MatchFixedString);
    if (entry < 0)
        return;
    fonts_->setCurrentIndex(entry);
    fonts_->setEditText(fonts_->itemText(entry)); // also where something was typed over this entry
}

void ToolOptionsDialog::SetSize() {
    SetSize(size_.box->value());
}

void ToolOptionsDialog::SetSize(int size) {
    if (!showing_)
        issue(tool_options::setSize(settings(), tool_, size));
}

void ToolOptionsDialog::SetOpacity() {
    SetOpacity(opacity_.box->value());
}

void ToolOptionsDialog::SetOpacity(int percent) {
    if (!showing_)
        issue(tool_options::setOpacity(settings(), tool_, percent));
}

void ToolOptionsDialog::SetTabletPressureEnabled(bool on) {
    if (!showing_)
        issue(tool_options::setTabletEnabled(settings(), tool_, on));
}

void ToolOptionsDialog::SetFontFamily(const QString& family) {
    if (!showing_)
        issue(tool_options::setFontFamily(settings(), tool_, family));
}

QWidget* ToolOptionsDialog::typedField() const {
    QWidget* field = focusWidget();
    return field && field->hasFocus() ? field : nullptr;
}

void ToolOptionsDialog::leaveField() {
    if (QWidget* field = focusWidget())
        field->clearFocus();
}

void ToolOptionsDialog::finish() {
    leaveField();
    actionDone();
}

void ToolOptionsDialog::restoreField(const QWidget& field) {
    const QPointer<ToolOptionsDialog> self(this);
    if (&field == fonts_)
        issue(tool_options::setFontFamily(settings(), tool_, familyBefore_));
    if (!self)
        return;
    shown_.reset();
    refresh();
    const QScopedValueRollback<bool> showing(showing_, true);
    if (&field == fonts_)
        fonts_->setEditText(fontTextBefore_);
}

// A pop-up is given every key by Qt while it is open. One that no field of it is waiting for is
// meant for Maya: it closes the pop-up and goes on to the view. The asking for shortcuts comes
// first, the press and the release still come here.
bool ToolOptionsDialog::passesOn(QKeyEvent& key) {
    const bool open = isVisible();
    if (form_ != Form::PopUp || typedField() || (open && key.type() == QEvent::KeyRelease))
        return false;
    if (open && key.matches(QKeySequence::Cancel)) {
        key.setAccepted(key.type() == QEvent::ShortcutOverride); // only closes
        return key.isAccepted();
    }
    hide();
    giveKeyboardToView();
    if (QWidget* view = activeViewWidget())
        QCoreApplication::sendEvent(view, &key);
    return true;
}

bool ToolOptionsDialog::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (passesOn(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    default:
        break;
    }
    return PanelDialog::event(event);
}

bool ToolOptionsDialog::eventFilter(QObject* watched, QEvent* event) {
    const bool isBox = watched == size_.box || watched == opacity_.box;
    const bool isFont = watched == fonts_;
    switch (event->type()) {
    case QEvent::Wheel:
        // A number that nobody types would stand there without being set.
        if (isBox) {
            QCoreApplication::sendEvent(watched == size_.box ? size_.slider : opacity_.slider,
                                        event);
            return true;
        }
        break;
    case QEvent::FocusIn:
        if (isFont && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
            familyBefore_ = settings().of(tool_).fontFamily;
            fontTextBefore_ = fonts_->currentText();
        }
        break;
    case QEvent::MouseButtonPress:
        if (!isBox && !isFont)
            leaveField();
        break;
    case QEvent::MouseButtonRelease:
        // After the control has done its work.
        if (!isBox && !isFont)
            QMetaObject::invokeMethod(
                this, [this] { finish(); }, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return PanelDialog::eventFilter(watched, event);
}

void ToolOptionsDialog::keyPressEvent(QKeyEvent* event) {
    QWidget* field = typedField();
    const bool cancel = event->matches(QKeySequence::Cancel);
    if (cancel && field) {
        const QPointer<ToolOptionsDialog> self(this);
        restoreField(*field);
        if (self)
            finish();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        finish();
    } else if (cancel && form_ == Form::PopUp) {
        hide();
    } else {
        PanelDialog::keyPressEvent(event);
    }
}

// A field that kept the keyboard would have it again when the pop-up opens next.
void ToolOptionsDialog::hideEvent(QHideEvent* event) {
    leaveField();
    PanelDialog::hideEvent(event);
}

void ToolOptionsDialog::paintEvent(QPaintEvent* event) {
    PanelDialog::paintEvent(event);
    if (form_ != Form::PopUp)
        return;
    QPainter painter(this); // the window system gives a pop-up no frame
    painter.setPen(palette().color(QPalette::Midlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace vellum
