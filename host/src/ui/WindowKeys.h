#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace host {

/// The backslash key: while it is held the mouse pans and zooms a view's picture; tapped, it
/// switches between that picture and the whole one.
class PanZoomKey {
public:
    static PanZoomKey& instance();

    bool isHeld() const { return held_; }
    void use() { used_ = true; } ///< the mouse did something with it: no tap any more

    void press();
    void release();

private:
    PanZoomKey();

    bool held_ = false;
    bool used_ = false;
};

/// Keys that belong to no menu, in every window that can hold a view. True when it was one.
bool windowKeyPressed(const QWidget& window, const QKeyEvent& event);
bool windowKeyReleased(const QKeyEvent& event);

/// Hands the backslash key on from the dialogs of plug-ins over the main window, when nothing in
/// them has taken it; their other keys are their own. Hotkeys of the menus need no help. Belongs
/// to the main window.
class DialogKeys : public QObject {
public:
    explicit DialogKeys(QWidget& mainWindow);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isToolDialog(const QObject& object) const;
};

} // namespace host
