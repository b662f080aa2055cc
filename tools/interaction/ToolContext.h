// What both tools share: the drawing worked on, the view in which a button went down, the drawing
// interface of an event. Main thread only.
#pragma once

#include "tools/interaction/ToolInputHandler.h"

#include <QPoint>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <maya/MObjectHandle.h>
#include <maya/MPxContext.h>

#include <memory>

namespace vellum {

class BaseNode;
class LayerManager;

class ToolContext : public MPxContext {
public:
    // Viewport 2.0: the same as without a drawing interface.
    using MPxContext::doPress;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context) override;
    using MPxContext::doRelease;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                      const MHWRender::MFrameContext& context) override;
    using MPxContext::doDrag;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;

protected:
    /// To be called once, when the derived class and its handler are whole.
    void listenTo(ToolInputHandler& handler);

    /// The release will not come. Never called from within an event of the view.
    virtual void pointerLost() = 0;

    /// View pixels, origin at the bottom left.
    static QPoint positionOf(const MEvent& event);

    /// The active view, in which a button goes down now; its end is the end of what the button
    /// does.
    QWidget* holdActiveView();
    void letGoOfView();

    /// The node worked on; null when there is none or it has been deleted.
    BaseNode* node() const;
    void forgetTarget();

    MObjectHandle nodeHandle_;
    std::shared_ptr<LayerManager> document_; ///< the node's
    QString camera_;

    MHWRender::MUIDrawManager* drawManager_ = nullptr; ///< during one call

private:
    ToolInputHandler* handler_ = nullptr;
    QPointer<QWidget> pressedView_; ///< where the button went down
    QMetaObject::Connection viewClosed_;
};

} // namespace vellum
