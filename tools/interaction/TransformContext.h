// The region transform tool. A rectangle dragged over the drawing is selected; Enter lets its
// pixels float over the current frame, where they are moved, rotated, scaled and flipped until
// Enter merges them (through rvVellumStroke), Backspace puts everything back, Escape leaves the
// tool. Main thread only.
#pragma once

#include "document/LayerAddress.h"
#include "plugin/session/PluginState.h"
#include "tools/gestures/RegionGesture.h"
#include "tools/interaction/TransformContextInputHandler.h"

#include <QSize>
#include <QString>
#include <maya/MObjectHandle.h>
#include <maya/MPxContext.h>
#include <memory>

class M3dView;

namespace vellum {

class BaseNode;
class Layer;
class LayerManager;
struct Stroke;

class TransformContext : public MPxContext, public TimeListener {
public:
    TransformContext();
    ~TransformContext() override;

    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;

    MStatus doPress(MEvent& event) override;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                      const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;
    MStatus helpStateHasChanged(MEvent& event) override;

    void deleteAction() override;   ///< Backspace: revert
    void completeAction() override; ///< Enter: begin, or apply
    void abortAction() override;    ///< Escape: revert and leave the tool

    void timeChanged() override;

    TransformContextInputHandler& inputHandler() { return handler_; }

    // What the context menu offers.
    bool isTransforming() const { return gesture_.isTransforming(); }
    bool canPaste() const;
    void transform(bool copy); ///< with `copy` the source pixels stay where they are
    void flip(bool horizontally);
    void cut();
    void copy();
    void paste(bool thenTransform); ///< at the handler's menu position

private:
    using Corners = RegionGesture::Corners;

    void startSelecting();
    bool begin(bool paste);
    bool beginTransform(bool copy = false, bool cut = false);
    bool lift(bool copy, bool cut);
    bool ensureBegun();
    bool hasMoved() const;
    void followView();
    void publish();
    void apply();
    void cleanUp();
    void takeBackAdditions(LayerManager& document);
    bool takeBackFrame(LayerManager& document, const Layer& layer);

    BaseNode* node() const;
    Stroke* strokeInProgress() const;
    void showOutline();
    void eraseOutline();
    void forgetOutline();
    void toggleXorOutline(const Corners& corners);

    RegionGesture gesture_;
    MObjectHandle nodeHandle_;               ///< node worked on since the transform was begun
    std::shared_ptr<LayerManager> document_; ///< its document
    QString camera_;
    LayerAddress layer_; ///< active when begun
    int frame_ = 0;      ///< current when begun
    QSize clipboard_;    ///< of what was last cut or copied, view pixels
    int addedLayer_ = -1;
    bool frameAdded_ = false;
    quint64 frameRevision_ = 0; ///< picture of the added frame: blank

    MHWRender::MUIDrawManager* drawManager_ = nullptr; ///< during one call
    bool xorDrawn_ = false;                            ///< legacy views: waits to be erased
    Corners xorCorners_{};

    TransformContextInputHandler handler_;
};

} // namespace vellum
