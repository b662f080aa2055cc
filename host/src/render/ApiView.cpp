// M3dView on top of host::View.

#include "foundation/Counters.h"
#include "render/View.h"
#include "render/Views.h"

#include <QOpenGLFunctions>
#include <QPoint>
#include <QWidget>

#include <maya/M3dView.h>

#include <cmath>
#include <limits>

namespace {

void set(MStatus* status, const MStatus& value) {
    if (status)
        *status = value;
}

short toShort(double value) {
    using limits = std::numeric_limits<short>;
    // Written so that a value that is no number ends at a limit.
    if (!(value > limits::min()))
        return limits::min();
    return value < limits::max() ? short(std::lround(value)) : limits::max();
}

} // namespace

M3dView::M3dView() = default;
M3dView::~M3dView() = default;

M3dView M3dView::active3dView(MStatus* ReturnStatus) {
    const host::View* view = host::Views::instance().active();
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view ? view->handle() : M3dView();
}

unsigned int M3dView::numberOf3dViews() {
    return static_cast<unsigned int>(host::Views::instance().all().size());
}

MStatus M3dView::get3dView(const unsigned int index, M3dView& view) {
    const auto& views = host::Views::instance().all();
    if (index >= views.size())
        return MS::kInvalidParameter;
    view = views[index]->handle();
    return MS::kSuccess;
}

MStatus M3dView::getM3dViewFromModelPanel(const MString& modelPaneName, M3dView& view) {
    const host::View* found = host::Views::instance().byPanel(modelPaneName.asChar());
    if (!found)
        return MS::kInvalidParameter;
    view = found->handle();
    return MS::kSuccess;
}

MStatus M3dView::getM3dViewFromModelEditor(const MString& modelPaneName, M3dView& view) {
    return getM3dViewFromModelPanel(modelPaneName, view);
}

MStatus M3dView::scheduleRefreshAllViews() {
    ++host::counters().allViewRefreshes;
    host::Views::instance().refreshAll();
    return MS::kSuccess;
}

QWidget* M3dView::widget(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    QWidget* widget = view ? view->surface().widget : nullptr;
    set(ReturnStatus, widget ? MS::kSuccess : MS::kFailure);
    return widget;
}

int M3dView::portWidth(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view ? view->portWidth() : 0;
}

int M3dView::portHeight(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view ? view->portHeight() : 0;
}

MStatus M3dView::getScreenPosition(int& x, int& y) const {
    const QWidget* shown = widget();
    if (!shown)
        return MS::kFailure;
    const QPoint corner = shown->mapToGlobal(QPoint(0, 0));
    x = corner.x();
    y = corner.y();
    return MS::kSuccess;
}

bool M3dView::isVisible(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view && view->surface().visible && view->surface().visible();
}

MStatus M3dView::getCamera(MDagPath& camera) const {
    const host::View* view = host::View::fromHandle(*this);
    if (!view || !view->camera().isValid())
        return MS::kFailure;
    camera = view->camera();
    return MS::kSuccess;
}

MStatus M3dView::setCamera(MDagPath& camera) {
    host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    if (!view->setCamera(camera))
        return MS::kInvalidParameter;
    view->refresh();
    return MS::kSuccess;
}

M3dView::RendererName M3dView::getRendererName(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view && view->renderer() == host::Renderer::Viewport2 ? kViewport2Renderer
                                                                 : kDefaultQualityRenderer;
}

MString M3dView::rendererString(MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    return view ? MString(host::rendererName(view->renderer()).c_str()) : MString();
}

MStatus M3dView::beginGL() {
    host::View* view = host::View::fromHandle(*this);
    return view && view->beginDirect() ? MS::kSuccess : MS::kFailure;
}

MStatus M3dView::endGL() {
    host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    view->endDirect();
    return MS::kSuccess;
}

MStatus M3dView::beginXorDrawing(bool drawOrthographic, bool disableDepthTesting, float lineWidth,
                                 LineStipplePattern stipplePattern, const MColor& lineColor) {
    if (!beginGL())
        return MS::kFailure;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    if (drawOrthographic) {
        glLoadIdentity();
        glOrtho(0, portWidth(), 0, portHeight(), -1, 1);
    }
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    if (drawOrthographic) {
        glLoadIdentity();
        glTranslated(0.375, 0.375, 0);
    }
    if (disableDepthTesting)
        glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
    glEnable(GL_COLOR_LOGIC_OP);
    glLogicOp(GL_XOR);
    glLineWidth(lineWidth);
    if (stipplePattern == kStippleDashed) {
        glEnable(GL_LINE_STIPPLE);
        glLineStipple(1, 0x0f0f);
    }
    glColor3f(lineColor.r, lineColor.g, lineColor.b);
    return MS::kSuccess;
}

MStatus M3dView::endXorDrawing() {
    if (!host::View::fromHandle(*this))
        return MS::kFailure;
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
    return endGL();
}

MStatus M3dView::refresh(bool all, bool force) {
    host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    ++host::counters().viewRefreshes;
    if (all)
        host::Views::instance().refreshAll(force);
    else
        view->refresh(force);
    return MS::kSuccess;
}

MStatus M3dView::refresh(bool all, bool force, bool) {
    return refresh(all, force);
}

MStatus M3dView::scheduleRefresh() {
    return refresh(false, false);
}

MStatus M3dView::modelViewMatrix(MMatrix& matrix) const {
    const host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    matrix = view->frame()->view;
    return MS::kSuccess;
}

MStatus M3dView::projectionMatrix(MMatrix& matrix) const {
    const host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    matrix = view->frame()->projection;
    return MS::kSuccess;
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& worldPt,
                             MVector& worldVector) const {
    MPoint farClip;
    const MStatus status = viewToWorld(x_pos, y_pos, worldPt, farClip);
    if (status)
        worldVector = (farClip - worldPt).normal();
    return status;
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt,
                             MPoint& farClipPt) const {
    const host::View* view = host::View::fromHandle(*this);
    if (!view)
        return MS::kFailure;
    const auto frame = view->frame();
    nearClipPt = frame->unproject(x_pos, y_pos, -1);
    farClipPt = frame->unproject(x_pos, y_pos, 1);
    return MS::kSuccess;
}

bool M3dView::worldToView(const MPoint& worldPt, short& x_pos, short& y_pos,
                          MStatus* ReturnStatus) const {
    const host::View* view = host::View::fromHandle(*this);
    set(ReturnStatus, view ? MS::kSuccess : MS::kFailure);
    if (!view)
        return false;
    const host::Frame::Projected point = view->frame()->project(worldPt);
    x_pos = toShort(point.x);
    y_pos = toShort(point.y);
    return point.inside(view->portWidth(), view->portHeight());
}

const char* M3dView::className() {
    return "M3dView";
}
