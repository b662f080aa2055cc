// What both tools are not told by Maya: the key that pans and zooms, the right-button menu, and a
// pointer that goes astray. A filter on the main window and every view worked in. Main thread only.
#pragma once

#include "tools/gestures/HeldKey.h"
#include "tools/interaction/WatchedWidgets.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class QMenu;
class QMouseEvent;

namespace vellum {

class ToolInputHandler : public QObject {
    Q_OBJECT

public:
    ~ToolInputHandler() override;

    /// While its tool is current. Derived classes call activate(false) in their destructor.
    virtual void activate(bool active);
    bool isActive() const { return active_; }

    /// Adds the active 3D view to those whose events are seen.
    virtual void watchActiveView();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// A button that is down over the view may be released unseen: the view is hidden, a dialog
    /// blocks its window, or a menu has opened and takes the pointer.
    void PointerLost(QWidget* view);

protected:
    // Each gets what happens in its place, and returns whether the event ends there.

    virtual bool filterView(QWidget& view, QEvent* event);
    virtual bool filterMainWindow(QEvent* event) { return filterKey(event); }
    virtual bool filterOther(QObject* watched, QEvent* event);
    /// Keys of the main window, and of views in windows of their own.
    virtual bool filterKey(QEvent* event);

    virtual bool isMenuEnabled() const = 0;
    /// Asked for at device pixels from the view's upper left corner.
    virtual QMenu* makeMenuAt(QPoint viewPixel) = 0;
    /// At the pointer, in the place of one that is still open. Deletes itself when it is closed.
    void showMenu(QMenu* menu);

    /// The keys that are held will be released elsewhere.
    virtual void releaseKeys() { panZoomKey_.letGo(); }

    WatchedWidgets views_{this};
    QPointer<QWidget> mainWindow_;
    HeldKey panZoomKey_{Qt::Key_Backslash};

private:
    bool filterMenu(QWidget& view, const QMouseEvent& event);

    QPointer<QMenu> menu_; ///< the one that is open
    bool active_ = false;
};

} // namespace vellum
