#include "tools/interaction/DrawContextInputHandler.h"

#include "plugin/base/QtCompat.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/TimeSlider.h"
#include "tools/interaction/ThreadManager.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTabletEvent>

#include <maya/M3dView.h>

#include <algorithm>

namespace vellum {

namespace {

// A press that long after the pen's last sign comes from a mouse.
constexpr int kPenGoneMs = 1000;

// Keys that are held while others are pressed.
bool isModifierKey(int key) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Mode_switch:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
        return true;
    default:
        return false;
    }
}

// Keys that write together with the next one, dead ones and those of input methods.
bool isComposingKey(int key) {
    return key >= Qt::Key_Multi_key && key <= Qt::Key_Dead_Longsolidusoverlay;
}

// The widgets of all 3D views.
QList<QWidget*> viewWidgets() {
    QList<QWidget*> all;
    M3dView view;
    for (unsigned i = 0; i < M3dView::numberOf3dViews(); ++i) {
        QWidget* widget = M3dView::get3dView(i, view) == MS::kSuccess ? view.widget() : nullptr;
        if (widget)
            all.append(widget);
    }
    return all;
}

/// Undo or redo while the pen is down. It would take away what came before the stroke, which then
/// clears what could be redone: one slip of the other hand, and a drawing is gone.
bool isUndoInStroke(const QKeyEvent& event) {
    return ThreadManager::instance().isActive() &&
           (event.key() == Qt::Key_Z || event.matches(QKeySequence::Undo) ||
            event.matches(QKeySequence::Redo));
}

} // namespace

bool isCommandKey(const QKeyEvent& event) {
    if (isModifierKey(event.key()) || isComposingKey(event.key()))
        return false;
    const Qt::KeyboardModifiers held = event.modifiers();
    const bool control = held.testFlag(Qt::ControlModifier);
#ifdef __APPLE__
    const bool alt = false; // Option types characters
#else
    const bool alt = held.testFlag(Qt::AltModifier);
#endif
    const bool altGr = held.testFlag(Qt::GroupSwitchModifier) || (control && alt);
    return held.testFlag(Qt::MetaModifier) ||
           ((control || alt) && !(altGr && isWritten(event.text())));
}

// Joiners and other signs without a shape of their own belong to what some scripts are written
// with.
bool isWritten(const QString& keyText) {
    return !keyText.isEmpty() &&
           (keyText.at(0) == QLatin1Char('\t') || keyText.at(0).category() != QChar::Other_Control);
}

float pressureCurve(float raw) {
    constexpr float kMiddle = 0.5F;
    constexpr float kInvisibleBelow = 0.08F;
    constexpr float kFaintest = 0.15F;
    constexpr float kFullAbove = 0.98F;
    float pressure = raw;
    if (raw > kMiddle) {
        const float t = (1.0F - raw) * 2.0F;
        pressure = 1.0F - t * t * kMiddle;
    }
    if (pressure < kInvisibleBelow)
        return 0.0F;
    if (pressure < kFaintest)
        return kFaintest;
    return pressure > kFullAbove ? 1.0F : pressure;
}

DrawContextInputHandler::~DrawContextInputHandler() {
    textTarget_ = nullptr; // its owner is going as well
    activate(false);
}

void DrawContextInputHandler::activate(bool active) {
    if (!active && !isActive())
        return;
    commitPendingText();
    windows_.clear();
    if (timeSlider_)
        timeSlider_->removeEventFilter(this);
    if (active) {
        forgetPen();
        if (!timeSlider_ && pluginState().interactive)
            timeSlider_ = timeControlWidget();
        if (timeSlider_)
            timeSlider_->installEventFilter(this);
    }
    ToolInputHandler::activate(active);
}

void DrawContextInputHandler::watchPens() {
    for (QWidget* view : viewWidgets()) {
        QWidget* window = view->window();
        // A view that is a window of its own is watched when it is drawn in.
        if (window != view && window != mainWindow_)
            windows_.add(window);
    }
}

void DrawContextInputHandler::watchActiveView() {
    watchPens();
    ToolInputHandler::watchActiveView();
}

void DrawContextInputHandler::setTextTarget(TextTarget* target) {
    acceptInputMethod(target != nullptr);
    textTarget_ = target;
}

void DrawContextInputHandler::commitPendingText() {
    if (textTarget_)
        textTarget_->commitText();
}

void DrawContextInputHandler::forgetPen() {
    pluginState().tabletPressure = 1.0F;
    pluginState().tabletEraser = false;
    pluginState().pressureAwaited = false;
    penDown_ = pressureKnown_ = false;
    sinceTablet_.invalidate();
}

// Dead keys and input methods reach only widgets that ask for them.
void DrawContextInputHandler::acceptInputMethod(bool accept) {
    for (const QPointer<QWidget>& view : views_.widgets()) {
        if (view)
            view->setAttribute(Qt::WA_InputMethodEnabled, accept);
    }
}

void DrawContextInputHandler::releaseKeys() {
    ToolInputHandler::releaseKeys();
    sizeKey_.letGo();
    opacityKey_.letGo();
}

bool DrawContextInputHandler::filterOther(QObject* watched, QEvent* event) {
    if (watched == timeSlider_.data())
        return filterTimeSlider(*event);
    if ((event->type() == QEvent::TabletMove || event->type() == QEvent::TabletPress) &&
        windows_.contains(watched))
        readTabletOver(*static_cast<QWidget*>(watched), *static_cast<QTabletEvent*>(event));
    // A text is typed in every window; the keys of a view drawn in come by the view.
    return textTarget_ && windows_.contains(watched) &&
           !views_.contains(QApplication::focusWidget()) && filterKey(event);
}

bool DrawContextInputHandler::filterView(QWidget& view, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        seeMouse(*static_cast<QMouseEvent*>(event));
        break;
    case QEvent::TabletMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        readTablet(*static_cast<QTabletEvent*>(event));
        break;
    default:
        if (textTarget_ && filterTyping(event))
            return true;
    }
    return ToolInputHandler::filterView(view, event);
}

bool DrawContextInputHandler::filterTyping(QEvent* event) {
    if (event->type() == QEvent::InputMethod) {
        const auto* input = static_cast<QInputMethodEvent*>(event);
        textTarget_->typeText(input->commitString(), input->preeditString());
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    // Qt's change of focus would take the Tab key, and all later ones, away from the text.
    const auto& key = *static_cast<QKeyEvent*>(event);
    return (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) && keyPressed(key);
}

void DrawContextInputHandler::seeMouse(const QMouseEvent& event) {
    if (event.type() == QEvent::MouseButtonPress)
        commitPendingText();
    if (event.type() == QEvent::MouseButtonRelease && event.button() == Qt::LeftButton)
        ThreadManager::instance().pointerUp();
    if (event.type() != QEvent::MouseButtonRelease && event.buttons() == event.button())
        relatePenTo(event);
}

bool DrawContextInputHandler::isMenuEnabled() const {
    return settings().drawToolContextMenu;
}

QMenu* DrawContextInputHandler::makeMenuAt(QPoint) {
    return makeDrawMenu(mainWindow_);
}

// Whether the first button that goes down is the pen's.
void DrawContextInputHandler::relatePenTo(const QMouseEvent& event) {
    if (!sinceTablet_.isValid())
        return;
    if (sinceTablet_.hasExpired(kPenGoneMs)) {
        forgetPen();
    } else if (event.button() == Qt::LeftButton && !pressureKnown_) {
        // A pen that was only seen hovering: its touch may be told by what it says next.
        penDown_ = true;
        pluginState().pressureAwaited = true;
    }
}

void DrawContextInputHandler::readTablet(const QTabletEvent& event) {
    const auto raw = static_cast<float>(event.pressure());
    sinceTablet_.start();
    pluginState().tabletEraser = qt::isEraser(&event);
    if (raw > 0.0F) {
        pluginState().tabletPressure = pressureCurve(std::min(raw, 1.0F));
        pressureKnown_ = true;
    }
    if (event.type() == QEvent::TabletRelease)
        penDown_ = pressureKnown_ = false;
    else if (event.type() == QEvent::TabletPress || event.buttons() != Qt::NoButton)
        penDown_ = true;
    pluginState().pressureAwaited = penDown_ && !pressureKnown_;
}

bool DrawContextInputHandler::filterTimeSlider(const QEvent& event) {
    if (event.type() != QEvent::MouseButtonPress || !settings().timelineContextMenu ||
        !isPlainRightPress(static_cast<const QMouseEvent&>(event)))
        return false;
    showMenu(makeTimelineMenu(mainWindow_));
    return true;
}

bool DrawContextInputHandler::filterMainWindow(QEvent* event) {
    switch (event->type()) {
    case QEvent::TabletMove:
    case QEvent::TabletPress:
        readTabletOver(*mainWindow_, *static_cast<QTabletEvent*>(event));
        return false;
    default:
        return ToolInputHandler::filterMainWindow(event);
    }
}

// The press that begins the first stroke in a view comes before the view is watched.
void DrawContextInputHandler::readTabletOver(const QWidget& window, const QTabletEvent& event) {
    if (viewWidgets().contains(window.childAt(qt::position(&event).toPoint())))
        readTablet(event);
}

bool DrawContextInputHandler::filterKey(QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Where the key is a hotkey, the press never comes.
        if (isCommandKey(*static_cast<QKeyEvent*>(event)))
            commitPendingText();
        // Otherwise a hotkey on the same key fires and the press never comes.
        if (!wantsKey(*static_cast<QKeyEvent*>(event)))
            return false;
        event->accept();
        return true;
    case QEvent::KeyPress:
        return keyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
        return keyReleased(*static_cast<QKeyEvent*>(event));
    default:
        return ToolInputHandler::filterKey(event);
    }
}

bool DrawContextInputHandler::wantsKey(const QKeyEvent& event) const {
    const int key = event.key();
    if (isUndoInStroke(event))
        return true;
    if (isCommandKey(event) || isModifierKey(key) || panZoomKey_.is(key))
        return false;
    return textTarget_ != nullptr || sizeKey_.is(key) || opacityKey_.is(key);
}

bool DrawContextInputHandler::keyPressed(const QKeyEvent& event) {
    if (isUndoInStroke(event))
        return true;
    if (panZoomKey_.press(event.key()))
        return false;
    if (textTarget_ && isCommandKey(event))
        textTarget_->settleText();
    else if (textTarget_ && !isModifierKey(event.key()))
        return textTarget_->typeKey(event);
    return wantsKey(event) && (sizeKey_.press(event.key()) || opacityKey_.press(event.key()));
}

bool DrawContextInputHandler::keyReleased(const QKeyEvent& event) {
    const int key = event.key();
    const bool repeats = event.isAutoRepeat();
    if (panZoomKey_.release(key, repeats))
        return false;
    return sizeKey_.release(key, repeats) || opacityKey_.release(key, repeats);
}

} // namespace vellum
