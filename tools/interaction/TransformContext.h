// The region transform tool. A rectangle dragged over the drawing is selected; Enter lets its
// pixels float over the current frame, where they are moved, rotated, scaled and flipped until
// Enter merges them (through rvVellumStroke), Backspace puts everything back, Escape leaves the
// tool. Main thread only.
#pragma once

#include "document/LayerAddress.h"
#include "document/edits/TargetAdditions.h"
#include "plugin/session/PluginState.h"
#include "tools/interaction/TransformContextInputHandler.h"
#include "tools/raster/RegionTransform.h"
#include "tools/raster/ViewToImage.h"

#include <QPoint>
#include <QRect>
#include <QString>
#include <array>
#include <maya/MObjectHandle.h>
#include <maya/MPxContext.h>
#include <memory>

class M3dView;

namespace vellum {

class BaseNode;
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
    bool isTransforming() const { return mode_ == Mode::Transforming; }
    bool canPaste() const;
    void transform(bool copy); ///< with `copy` the source pixels stay where they are
    void flip(bool horizontally);
    void cut();
    void copy();
    void paste(bool thenTransform); ///< at the handler's menu position

private:
    enum class Mode { Selecting, Transforming };
    enum class Dragging { Nothing, Select, Translate, Rotate, Scale };
    /// View pixels, origin at the bottom left.
    using Corners = std::array<QPoint, 4>;

    void startSelecting();
    bool begin(bool paste);
    void beginPressed(MEvent& event, QPoint position);
    bool beginTransform();
    bool lift(bool copy, bool cut);
    bool selectRegion();
    bool ensureBegun();
    bool hasMoved() const;
    void followView();
    void fitToRegion();
    void drag(MEvent& event, QPoint position);
    void scale(MEvent& event, QPoint position);
    void publish();
    void apply();
    void cleanUp();

    BaseNode* node() const;
    Stroke* strokeInProgress() const;
    void setSelection(QPoint first, QPoint opposite);
    void normaliseSelection();
    Corners outline() const;
    void showOutline();
    void eraseOutline();
    void forgetOutline();
    void toggleXorOutline(const Corners& corners);

    Mode mode_ = Mode::Selecting;
    MObjectHandle nodeHandle_;               ///< node worked on since the transform was begun
    std::shared_ptr<LayerManager> document_; ///< its document
    QString camera_;
    LayerAddress layer_; ///< active when begun
    int frame_ = 0;      ///< current when begun

    ViewMapping mapping_; ///< of the view whose pixels are meant
    Corners corners_{};   ///< first corner (upper left once normalised), then around
    RegionTransform state_;
    QPoint viewOffset_;
    float scaleX_ = 1.0F;
    float scaleY_ = 1.0F;
    bool flipX_ = false;
    bool flipY_ = false;

    Dragging dragging_ = Dragging::Nothing;
    QPoint translateAnchor_;
    float rotateAnchor_ = 0.0F;
    float scaleAnchorX_ = 0.0F;
    float scaleAnchorY_ = 0.0F;
    bool invalid_ = false; ///< camera or frame are others than when begun

    QRect clipboard_;       ///< what was last cut or copied, view pixels from the upper left corner
    TargetAdditions added_; ///< what pasting needed first

    MHWRender::MUIDrawManager* drawManager_ = nullptr; ///< during one call
    bool xorDrawn_ = false;                            ///< legacy views: waits to be erased
    Corners xorCorners_{};

    TransformContextInputHandler handler_;
};

} // namespace vellum
