#include "ui/ViewWidget.h"

#include "render/DrawManager.h"
#include "render/Frame.h"
#include "render/Views.h"
#include "ui/ContextState.h"
#include "ui/QtCompat.h"
#include "ui/Tools.h"
#include "ui/WindowKeys.h"

#include <QMouseEvent>
#include <QPointer>
#include <QSurfaceFormat>
#include <QWheelEvent>

#include <cmath>

namespace host {

namespace {

int buttonBits(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton ? MEvent::kLeftMouse : 0) |
           (buttons & Qt::MiddleButton ? MEvent::kMiddleMouse : 0);
}

int modifierBits(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? MEvent::shiftKey : 0) |
           (modifiers & Qt::ControlModifier ? MEvent::controlKey : 0);
}

CameraNavigation::Mode navigationMode(Qt::MouseButton button, bool panZoom) {
    if (panZoom)
        return button == Qt::RightButton ? CameraNavigation::Mode::Zoom
                                         : CameraNavigation::Mode::Pan;
    switch (button) {
    case Qt::MiddleButton:
        return CameraNavigation::Mode::Track;
    case Qt::RightButton:
        return CameraNavigation::Mode::Dolly;
    default:
        return CameraNavigation::Mode::Tumble;
    }
}

} // namespace

ViewWidget::ViewWidget(const QString& panelName, QWidget* parent)
    : QOpenGLWidget(parent), view_(panelName.toStdString()) {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setVersion(2, 1);
    format.setDepthBufferSize(24);
    setFormat(format);
    // No alpha: what is blended over the scene must not let the window shine through.
    setTextureFormat(GL_RGB8);
    // A tool may draw straight into the view, which must still be there at the next paint.
    setUpdateBehavior(QOpenGLWidget::PartialUpdate);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(64, 64);

    View::Surface surface;
    surface.widget = this;
    surface.makeCurrent = [this] {
        if (!isValid())
            return false;
        makeCurrent();
        return true;
    };
    surface.doneCurrent = [this] { doneCurrent(); };
    surface.repaint = [this](bool now) { now ? repaint() : update(); };
    surface.visible = [this] { return isVisible(); };
    view_.setSurface(std::move(surface));

    toolListener_ = Tools::instance().addListener([this] {
        view_.setToolDrawables({}); // what the former tool showed
        view_.refresh();
        showToolCursor();
    });
    showToolCursor();
}

ViewWidget::~ViewWidget() {
    Tools::instance().removeListener(toolListener_);
    if (isValid())
        makeCurrent(); // whatever the view deletes is in this context
    view_.setSurface({});
}

QSize ViewWidget::portSize() const {
    return size() * devicePixelRatioF();
}

QPoint ViewWidget::viewPixel(QPointF windowPosition) const {
    // Positions inside the top-level window keep their fraction on scaled displays. The small
    // addend makes up for what dividing and multiplying by the scale loses.
    constexpr double rounding = 1e-6;
    const QPointF local = windowPosition - QPointF(mapTo(window(), QPoint(0, 0)));
    const double scale = devicePixelRatioF();
    const int x = int(std::floor(local.x() * scale + rounding));
    const int y = int(std::floor(local.y() * scale + rounding));
    return {x, portSize().height() - 1 - y};
}

void ViewWidget::syncPort() {
    view_.setPortSize(portSize().width(), portSize().height());
}

void ViewWidget::initializeGL() {
}

void ViewWidget::resizeGL(int, int) {
    syncPort();
    view_.refresh();
}

void ViewWidget::paintGL() {
    syncPort();
    view_.paint();
}

void ViewWidget::makeActive() {
    Views::instance().setActive(&view_);
}

void ViewWidget::showToolCursor() {
    const MPxContext* tool = Tools::instance().current();
    setCursor(tool ? CursorShape::toQt(ContextState::of(*tool).cursor) : QCursor());
}

void ViewWidget::callTool(ToolCall call, QPointF windowPosition, Qt::KeyboardModifiers modifiers,
                          Qt::MouseButtons buttons) {
    MPxContext* tool = Tools::instance().current();
    if (!tool)
        return;
    const QPoint pixel = viewPixel(windowPosition);
    const QPoint inWindow = (windowPosition * devicePixelRatioF()).toPoint();
    MEvent event = EventAccess::make(pixel.x(), pixel.y(), inWindow.x(), inWindow.y(),
                                     buttonBits(toolButton_), modifierBits(modifiers),
                                     buttonBits(buttons & ~Qt::MouseButtons(toolButton_)));

    using Plain = MStatus (MPxContext::*)(MEvent&);
    using Modern = MStatus (MPxContext::*)(MEvent&, MHWRender::MUIDrawManager&,
                                           const MHWRender::MFrameContext&);
    static const struct {
        Plain plain;
        Modern modern;
    } calls[] = {
        {&MPxContext::doPress, &MPxContext::doPress},
        {&MPxContext::doHold, &MPxContext::doHold},
        {&MPxContext::doDrag, &MPxContext::doDrag},
        {&MPxContext::doRelease, &MPxContext::doRelease},
        {&MPxContext::doPtrMoved, &MPxContext::doPtrMoved},
        {&MPxContext::doEnterRegion, nullptr},
        {&MPxContext::doExitRegion, nullptr},
    };
    const auto& entry = calls[int(call)];

    // A tool can run any script, even one that deletes this panel or the tool.
    const QPointer<ViewWidget> alive(this);
    const std::string name = Tools::instance().currentName();
    if (view_.renderer() == Renderer::Viewport2 && entry.modern) {
        DrawManager drawing("tool " + name);
        const auto context = FrameAccess::context(view_.frame());
        const MStatus status = (tool->*entry.modern)(event, drawing.api(), *context);
        if (!alive)
            return;
        DrawList drawables = drawing.take();
        const bool redraw = !drawables.empty() || !view_.toolDrawables().empty();
        view_.setToolDrawables(std::move(drawables));
        if (redraw || call != ToolCall::Move)
            view_.refresh();
        if (status || Tools::instance().find(name) != tool)
            return;
    }
    (tool->*entry.plain)(event);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    makeActive();
    setFocus(Qt::MouseFocusReason);
    lastPosition_ = qt::windowPosition(*event);
    // A release that went elsewhere, e.g. to a menu, is noticed now.
    if (event->button() == toolButton_ || !(event->buttons() & toolButton_))
        toolButton_ = Qt::NoButton;
    if (event->buttons() == event->button())
        navigation_.reset();
    if (toolButton_ != Qt::NoButton || navigation_)
        return; // a second button changes nothing while one is in use
    PanZoomKey& panZoom = PanZoomKey::instance();
    if (panZoom.isHeld() || event->modifiers() & Qt::AltModifier) {
        panZoom.use();
        navigation_.emplace(view_.camera(), navigationMode(event->button(), panZoom.isHeld()));
        return;
    }
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)
        return;
    toolButton_ = event->button();
    syncPort();
    const QPointer<ViewWidget> alive(this);
    callTool(ToolCall::Press, lastPosition_, event->modifiers(), event->buttons());
    if (alive)
        callTool(ToolCall::Hold, lastPosition_, event->modifiers(), event->buttons());
}

void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF position = qt::windowPosition(*event);
    const QPointF delta = (position - lastPosition_) * devicePixelRatioF();
    lastPosition_ = position;
    if (navigation_)
        navigation_->drag({delta.x(), -delta.y()}, portSize());
    else
        callTool(toolButton_ == Qt::NoButton ? ToolCall::Move : ToolCall::Drag, position,
                 event->modifiers(), event->buttons());
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (navigation_) {
        if (event->buttons() == Qt::NoButton)
            navigation_.reset();
        return;
    }
    if (toolButton_ == Qt::NoButton || event->button() != toolButton_)
        return;
    const QPointer<ViewWidget> alive(this);
    callTool(ToolCall::Release, qt::windowPosition(*event), event->modifiers(), event->buttons());
    if (!alive)
        return;
    toolButton_ = Qt::NoButton;
    view_.refresh();
}

void ViewWidget::wheelEvent(QWheelEvent* event) {
    makeActive();
    CameraNavigation::dollyStep(view_.camera(), event->angleDelta().y() / 120.0);
    event->accept();
}

void ViewWidget::focusInEvent(QFocusEvent* event) {
    // A window that comes to the front gives the focus back to where it was; the active view, which
    // scripts set too, stays if it is in that window.
    const View* active = Views::instance().active();
    const QWidget* widget = active ? active->surface().widget : nullptr;
    if (event->reason() != Qt::ActiveWindowFocusReason || !widget || widget->window() != window())
        makeActive();
    QOpenGLWidget::focusInEvent(event);
}

bool ViewWidget::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        callTool(event->type() == QEvent::Enter ? ToolCall::Enter : ToolCall::Leave, lastPosition_,
                 Qt::NoModifier, Qt::NoButton);
    return QOpenGLWidget::event(event);
}

} // namespace host
