#include "tools/interaction/ToolContext.h"

#include "node/BaseNode.h"
#include "plugin/session/Keyboard.h"
#include "tools/interaction/DrawManagerScope.h"

namespace vellum {

void ToolContext::listenTo(ToolInputHandler& handler) {
    handler_ = &handler;
    QObject::connect(&handler, &ToolInputHandler::PointerLost, &handler,
                     [this](const QWidget* view) {
                         // Not at once: a view that is hidden may be about to be deleted.
                         if (view == pressedView_)
                             QMetaObject::invokeMethod(
                                 handler_, [this] { pointerLost(); }, Qt::QueuedConnection);
                     });
}

MStatus ToolContext::doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                             const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doPress(event);
}

MStatus ToolContext::doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                               const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doRelease(event);
}

MStatus ToolContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                            const MHWRender::MFrameContext&) {
    const DrawManagerScope scope(drawManager_, drawManager);
    return doDrag(event);
}

QPoint ToolContext::positionOf(const MEvent& event) {
    short x = 0;
    short y = 0;
    event.getPosition(x, y);
    return {x, y};
}

QWidget* ToolContext::holdActiveView() {
    QWidget* widget = activeViewWidget();
    letGoOfView();
    pressedView_ = widget;
    // Not at once: the view is being deleted then.
    if (widget)
        viewClosed_ = QObject::connect(
            widget, &QObject::destroyed, handler_, [this] { pointerLost(); }, Qt::QueuedConnection);
    return widget;
}

void ToolContext::letGoOfView() {
    QObject::disconnect(viewClosed_);
    pressedView_ = nullptr;
}

BaseNode* ToolContext::node() const {
    return nodeHandle_.isValid() ? BaseNode::fromObject(nodeHandle_.object()) : nullptr;
}

void ToolContext::forgetTarget() {
    document_.reset();
    nodeHandle_ = MObjectHandle();
    camera_.clear();
}

} // namespace vellum
