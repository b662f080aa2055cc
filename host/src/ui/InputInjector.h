#pragma once

#include <QPoint>
#include <QPointF>
#include <Qt>

#include <memory>

class QWidget;
class QWindow;

namespace host {

/// Sends input the way a user's hand does: through the window system. On X11 with the XTEST
/// extension the server's own pointer and keyboard act; elsewhere the events enter at Qt's
/// platform layer and the cursor is moved beside them. Positions are device pixels of the screen.
/// Nothing is delivered before the event loop runs.
class InputInjector {
public:
    static std::unique_ptr<InputInjector> create();
    virtual ~InputInjector() = default;

    /// True when the window system's own pointer and keyboard are used.
    virtual bool isReal() const = 0;
    virtual void moveTo(QPoint position) = 0;
    virtual void press(Qt::MouseButton button) = 0;
    virtual void release(Qt::MouseButton button) = 0;
    /// One notch; positive away from the user.
    virtual void wheel(int notches) = 0;
    /// False when the keyboard has no such key.
    virtual bool key(Qt::Key key, bool down) = 0;
    /// Whether Shift must be held for this key's character, a letter's capital not considered.
    virtual bool needsShift(Qt::Key) const { return false; }
    /// Held keys send one press each as long as this object lives.
    virtual void stopKeyRepeat() {}

    enum class TabletPhase { Press, Move, Release };
    /// A pen's sample for the window, beside the pointer events (which this does not send).
    static void tablet(QWindow* window, TabletPhase phase, QPoint position, double pressure,
                       bool eraser);

    /// Screen position in device pixels of a point given in device pixels from the widget's top
    /// left corner.
    static QPoint toScreen(const QWidget* widget, QPointF devicePixels);
    /// Where the pointer is now.
    virtual QPoint position() const = 0;

protected:
    static QWindow* windowAt(QPoint devicePixels);
};

} // namespace host
