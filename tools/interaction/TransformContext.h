// The region transform tool. A rectangle dragged over the drawing is selected; Enter lets its
// pixels float over the current frame, where they are moved, rotated, scaled and flipped until
// Enter merges them (through rvVellumStroke), Backspace puts everything back, Escape leaves the
// tool. Main thread only.
#pragma once

#include "document/LayerAddress.h"
#include "document/edits/TargetAdditions.h"
#include "plugin/session/PluginState.h"
#include "tools/gestures/RegionGesture.h"
#include "tools/interaction/ToolContext.h"
#include "tools/interaction/TransformContextInputHandler.h"
#include "tools/interaction/XorLine.h"

#include <QSize>

namespace vellum {

struct Stroke;

class TransformContext : public ToolContext, public TimeListener {
public:
    TransformContext();
    ~TransformContext() override;

    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;

    using ToolContext::doPress;
    MStatus doPress(MEvent& event) override;
    using ToolContext::doRelease;
    MStatus doRelease(MEvent& event) override;
    using ToolContext::doDrag;
    MStatus doDrag(MEvent& event) override;
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
    void pointerLost() override;
    MStatus endDrag();

    void startSelecting();
    bool begin(bool paste);
    bool beginTransform(bool copy = false, bool cut = false);
    bool lift(bool copy, bool cut);
    bool ensureBegun();
    bool hasMoved() const;
    void reportLoss() const;
    void followCamera();
    void followView();
    void publish();
    void apply();
    void cleanUp();

    Stroke* strokeInProgress() const;
    void showOutline();
    void eraseOutline();
    void forgetOutline();

    RegionGesture gesture_;

    // The target stands since the transform was begun.
    LayerAddress layer_;    ///< active when begun
    int frame_ = 0;         ///< current when begun
    QSize clipboard_;       ///< of what was last cut or copied, view pixels
    TargetAdditions added_; ///< what pasting needed first

    XorLine legacyOutline_;

    TransformContextInputHandler handler_;
};

} // namespace vellum
