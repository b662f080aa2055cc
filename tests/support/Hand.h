// The user's hand: the window system's own pointer and keyboard, one event at a time.
#pragma once

#include <QPointF>
#include <Qt>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace host {
class InputInjector;
}

namespace support {

/// Runs the event loop until the condition holds; false when it does not within the time.
bool waitFor(const std::function<bool()>& condition, int milliseconds = 5000);

/// What is in the queues now has been handled.
void settle();

/// Each call waits until the program got the event; one that never comes fails the test.
class Hand {
public:
    Hand();
    ~Hand();

    /// Whether the window system's own pointer acts.
    bool isReal() const;

    /// Device pixels from the widget's top left corner.
    void moveTo(const QWidget& widget, QPointF position);
    void press(Qt::MouseButton button = Qt::LeftButton);
    void release(Qt::MouseButton button = Qt::LeftButton);
    void click(const QWidget& widget, QPointF position);
    void wheel(int notches); ///< positive away from the user
    void key(Qt::Key key, bool down);
    void type(std::vector<Qt::Key> keys); ///< down in this order, up in the other

private:
    std::unique_ptr<host::InputInjector> injector_;
};

} // namespace support
