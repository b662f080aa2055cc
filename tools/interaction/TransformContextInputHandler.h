// The transform tool's right-button menu. Main thread only.
#pragma once

#include "tools/interaction/ToolInputHandler.h"

#include <QPoint>

class QMenu;

namespace vellum {

class TransformContext;

class TransformContextInputHandler : public ToolInputHandler {
    Q_OBJECT

public:
    /// `context` owns the handler; null: every slot does nothing.
    explicit TransformContextInputHandler(TransformContext* context) : context_(context) {}
    ~TransformContextInputHandler() override;

    /// Where the menu was last asked for: device pixels from the view's upper left corner.
    QPoint menuPosition() const { return menuPosition_; }

    /// Built anew at every call. The caller owns it.
    QMenu* makeMenu(QWidget* parent);

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

protected:
    bool isMenuEnabled() const override;
    QMenu* makeMenuAt(QPoint viewPixel) override;

private:
    TransformContext* context_;
    QPoint menuPosition_;
};

} // namespace vellum
