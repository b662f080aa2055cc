// What the transform tool is not told by Maya: its right-button menu. A filter on the main window
// and every view worked in. Main thread only.
#pragma once

#include "tools/interaction/WatchedWidgets.h"

#include <QObject>
#include <QPoint>
#include <QPointer>

class QMenu;
class QMouseEvent;

namespace vellum {

class TransformContext;

class TransformContextInputHandler : public QObject {
    Q_OBJECT

public:
    /// `context` owns the handler; null: every slot does nothing.
    explicit TransformContextInputHandler(TransformContext* context)
        : context_(context), views_(this) {}
    ~TransformContextInputHandler() override;

    void activate(bool active);

    /// Adds the active 3D view to those whose events are seen.
    void watchActiveView() { views_.add(activeViewWidget()); }

    /// Where the menu was last asked for: device pixels from the view's upper left corner.
    QPoint menuPosition() const { return menuPosition_; }

    /// Built anew at every call. The caller owns it.
    QMenu* makeMenu(QWidget* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

public Q_SLOTS:
    void Transform();
    void TransformCopy();
    void FlipHorizontal();
    void FlipVertical();
    void Cut();
    void Copy();
    void Paste();
    void PasteAndTransform();
    void Apply();
    void Revert();
    void Cancel();

private:
    bool filterMouse(QWidget& view, const QMouseEvent& event);
    void filterKey(const QEvent& event);

    TransformContext* context_;
    WatchedWidgets views_;
    QPointer<QWidget> mainWindow_;
    QPointer<QMenu> menu_; ///< the one that is open
    QPoint menuPosition_;
    bool panZoomKeyHeld_ = false;
    bool active_ = false;
};

} // namespace vellum
