#include "support/Hand.h"

#include "ui/InputInjector.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <gtest/gtest.h>

namespace support {

namespace {

/// Sees the first of some events come to a window.
class EventWatch : public QObject {
public:
    explicit EventWatch(std::vector<QEvent::Type> types) : types_(std::move(types)) {
        qApp->installEventFilter(this);
    }
    bool seen() const { return seen_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched->isWindowType() &&
            std::find(types_.begin(), types_.end(), event->type()) != types_.end())
            seen_ = true;
        return false;
    }

private:
    std::vector<QEvent::Type> types_;
    bool seen_ = false;
};

void act(const std::function<void()>& what, const std::vector<QEvent::Type>& types) {
    const EventWatch watch(types);
    what();
    ASSERT_TRUE(waitFor([&] { return watch.seen(); }))
        << "an event of type " << types.front() << " did not arrive";
    settle();
}

} // namespace

bool waitFor(const std::function<bool()>& condition, int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > milliseconds)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

Hand::Hand() : injector_(host::InputInjector::create()) {
    injector_->stopKeyRepeat(); // on a busy machine every key is held for long
}

Hand::~Hand() = default;

bool Hand::isReal() const {
    return injector_->isReal();
}

void Hand::moveTo(const QWidget& widget, QPointF position) {
    const QPoint target = host::InputInjector::toScreen(&widget, position);
    if (injector_->position() != target)
        act([&] { injector_->moveTo(target); }, {QEvent::MouseMove, QEvent::Enter});
}

void Hand::press(Qt::MouseButton button) {
    act([&] { injector_->press(button); }, {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick});
}

void Hand::release(Qt::MouseButton button) {
    act([&] { injector_->release(button); }, {QEvent::MouseButtonRelease});
}

void Hand::click(const QWidget& widget, QPointF position) {
    moveTo(widget, position);
    press();
    release();
}

void Hand::wheel(int notches) {
    act([&] { injector_->wheel(notches); }, {QEvent::Wheel});
}

void Hand::key(Qt::Key key, bool down) {
    // An accepted shortcut leaves no key press behind.
    act([&] { ASSERT_TRUE(injector_->key(key, down)); },
        {down ? QEvent::ShortcutOverride : QEvent::KeyRelease, QEvent::KeyPress});
}

void Hand::type(std::vector<Qt::Key> keys) {
    for (const Qt::Key each : keys)
        key(each, true);
    std::reverse(keys.begin(), keys.end());
    for (const Qt::Key each : keys)
        key(each, false);
}

} // namespace support
