#pragma once

#include "render/View.h"
#include "ui/CameraNavigation.h"

#include <QOpenGLWidget>
#include <QPoint>

#include <optional>

namespace host {

/// A 3D view on the screen: shows one host::View, brings mouse events to the current tool and
/// moves the camera when Alt is held, or its picture while the backslash key is (left or middle
/// button pan, the right one zooms). The wheel dollies.
class ViewWidget : public QOpenGLWidget {
    Q_OBJECT
public:
    explicit ViewWidget(const QString& panelName, QWidget* parent = nullptr);
    ~ViewWidget() override;

    View& view() { return view_; }

    /// Port size: logical size times the screen's scale, rounded as Qt rounds its framebuffer.
    QSize portSize() const;
    /// View pixel (origin bottom left) under a point in logical pixels of the top-level window.
    QPoint viewPixel(QPointF windowPosition) const;

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    enum class ToolCall { Press, Hold, Drag, Release, Move, Enter, Leave };

    void makeActive();
    void callTool(ToolCall call, QPointF windowPosition, Qt::KeyboardModifiers modifiers,
                  Qt::MouseButtons buttons);
    void showToolCursor();
    void syncPort();

    View view_;
    Qt::MouseButton toolButton_ = Qt::NoButton; ///< held for the tool
    std::optional<CameraNavigation> navigation_;
    QPointF lastPosition_; ///< of the pointer, in the window
    int toolListener_ = 0;
};

} // namespace host
