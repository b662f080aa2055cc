#include "ui/InputInjector.h"

#include "ui/XTestInput.h"

#include <QCursor>
#include <QGuiApplication>
#include <QTabletEvent>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformwindow.h>
#include <qpa/qwindowsysteminterface.h>

#include <cmath>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QPointingDevice>
#endif

namespace host {

namespace {

QPoint nativeOrigin(const QWindow* window) {
    return window && window->handle() ? window->handle()->mapToGlobal(QPoint(0, 0)) : QPoint();
}

/// The X server's pointer and keyboard.
class XTestInjector : public InputInjector {
public:
    explicit XTestInjector(std::unique_ptr<XTestInput> input) : input_(std::move(input)) {}

    bool isReal() const override { return true; }
    void moveTo(QPoint position) override { input_->move(position.x(), position.y()); }
    void press(Qt::MouseButton button) override { input_->button(number(button), true); }
    void release(Qt::MouseButton button) override { input_->button(number(button), false); }

    void wheel(int notches) override {
        for (int i = 0; i < std::abs(notches); ++i) {
            input_->button(notches > 0 ? 4 : 5, true);
            input_->button(notches > 0 ? 4 : 5, false);
        }
    }

    bool key(Qt::Key key, bool down) override { return input_->key(int(key), down); }
    bool needsShift(Qt::Key key) const override { return input_->needsShift(int(key)); }
    void stopKeyRepeat() override { input_->stopKeyRepeat(); }

    QPoint position() const override {
        int x = 0, y = 0;
        input_->pointer(x, y);
        return {x, y};
    }

private:
    static int number(Qt::MouseButton button) {
        return button == Qt::RightButton ? 3 : button == Qt::MiddleButton ? 2 : 1;
    }

    std::unique_ptr<XTestInput> input_;
};

/// Events at Qt's platform layer, for window systems that let no program move the pointer.
class PlatformInjector : public InputInjector {
public:
    bool isReal() const override { return false; }

    void moveTo(QPoint position) override {
        position_ = position;
        if (const QScreen* screen = QGuiApplication::primaryScreen())
            QCursor::setPos((QPointF(position) / screen->devicePixelRatio()).toPoint());
        send(Qt::NoButton, QEvent::MouseMove);
    }

    void press(Qt::MouseButton button) override {
        buttons_ |= button;
        send(button, QEvent::MouseButtonPress);
    }

    void release(Qt::MouseButton button) override {
        buttons_ &= ~Qt::MouseButtons(button);
        send(button, QEvent::MouseButtonRelease);
        if (buttons_ == Qt::NoButton)
            grabber_ = nullptr;
    }

    void wheel(int notches) override {
        if (QWindow* window = windowAt(position_))
            QWindowSystemInterface::handleWheelEvent(window, local(window), QPointF(position_),
                                                     QPoint(), QPoint(0, 120 * notches),
                                                     modifiers_);
    }

    bool key(Qt::Key key, bool down) override {
        const Qt::KeyboardModifier modifier = modifierOf(key);
        if (down)
            modifiers_ |= modifier;
        const bool letter = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde;
        QString text = letter ? QString(QChar(ushort(key))) : QString();
        if (!(modifiers_ & Qt::ShiftModifier))
            text = text.toLower();
        QWindow* window = QGuiApplication::focusWindow();
        if (!window)
            window = windowAt(position_);
        if (window)
            QWindowSystemInterface::handleKeyEvent(
                window, down ? QEvent::KeyPress : QEvent::KeyRelease, key, modifiers_, text);
        if (!down)
            modifiers_ &= ~Qt::KeyboardModifiers(modifier);
        return true;
    }

    QPoint position() const override { return position_; }

private:
    static Qt::KeyboardModifier modifierOf(Qt::Key key) {
        switch (key) {
        case Qt::Key_Shift:
            return Qt::ShiftModifier;
        case Qt::Key_Control:
            return Qt::ControlModifier;
        case Qt::Key_Alt:
            return Qt::AltModifier;
        default:
            return Qt::NoModifier;
        }
    }

    QPointF local(const QWindow* window) const { return QPointF(position_ - nativeOrigin(window)); }

    void send(Qt::MouseButton button, QEvent::Type type) {
        QWindow* window = grabber_ ? grabber_ : windowAt(position_);
        if (!window)
            return;
        if (type == QEvent::MouseButtonPress && !grabber_)
            grabber_ = window; // a held button keeps its window, as window systems do
        QWindowSystemInterface::handleMouseEvent(window, local(window), QPointF(position_),
                                                 buttons_, button, type, modifiers_);
    }

    QPoint position_;
    Qt::MouseButtons buttons_;
    Qt::KeyboardModifiers modifiers_;
    QWindow* grabber_ = nullptr;
};

} // namespace

std::unique_ptr<InputInjector> InputInjector::create() {
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        if (auto input = XTestInput::open())
            return std::make_unique<XTestInjector>(std::move(input));
    }
    return std::make_unique<PlatformInjector>();
}

QWindow* InputInjector::windowAt(QPoint devicePixels) {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    QWindow* found = nullptr;
    for (QWindow* window : windows) {
        if (!window->isVisible() || !window->handle())
            continue;
        const QRect area(nativeOrigin(window), window->handle()->geometry().size());
        // Dialogs and menus are made after the windows they cover.
        if (area.contains(devicePixels))
            found = window;
    }
    return found;
}

QPoint InputInjector::toScreen(const QWidget* widget, QPointF devicePixels) {
    const QWidget* top = widget->window();
    const double scale = top->devicePixelRatioF();
    const QPointF inWindow = QPointF(widget->mapTo(top, QPoint(0, 0))) * scale;
    // The pixel a point lies in, where the widget itself begins at a rounded pixel.
    const QPoint corner(qRound(inWindow.x()), qRound(inWindow.y()));
    const QPoint pixel(int(std::floor(devicePixels.x())), int(std::floor(devicePixels.y())));
    return nativeOrigin(top->windowHandle()) + corner + pixel;
}

void InputInjector::tablet(QWindow* window, TabletPhase phase, QPoint position, double pressure,
                           bool eraser) {
    const QPointF global(position);
    const QPointF local(position - nativeOrigin(window));
    const Qt::MouseButtons buttons =
        phase == TabletPhase::Release || (phase == TabletPhase::Move && pressure <= 0)
            ? Qt::NoButton
            : Qt::LeftButton;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const auto makeDevice = [](QPointingDevice::PointerType type, qint64 id) {
        auto* device = new QPointingDevice(
            QStringLiteral("replayed pen"), id, QInputDevice::DeviceType::Stylus, type,
            QInputDevice::Capability::Position | QInputDevice::Capability::Pressure, 1, 1,
            QString(), QPointingDeviceUniqueId(), QCoreApplication::instance());
        QWindowSystemInterface::registerInputDevice(device);
        return device;
    };
    static QPointingDevice* pen = makeDevice(QPointingDevice::PointerType::Pen, 0x56320001);
    static QPointingDevice* rubber = makeDevice(QPointingDevice::PointerType::Eraser, 0x56320002);
    QWindowSystemInterface::handleTabletEvent(window, eraser ? rubber : pen, local, global, buttons,
                                              pressure, 0, 0, 0, 0, 0);
#else
    constexpr qint64 penId = 0x5632;
    QWindowSystemInterface::handleTabletEvent(window, local, global, QTabletEvent::Stylus,
                                              eraser ? QTabletEvent::Eraser : QTabletEvent::Pen,
                                              buttons, pressure, 0, 0, 0, 0, 0, penId);
#endif
}

} // namespace host
