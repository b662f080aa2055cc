// The drawing tool. A left press starts a stroke on the active layer of the view's camera, the
// sampling thread fills it, the release commits it through rvVellumStroke. With "B" or "M" held a
// drag changes the tool's size or opacity instead. Main thread only.
#pragma once

#include "document/edits/TargetAdditions.h"
#include "plugin/base/Tool.h"
#include "plugin/session/PluginState.h"
#include "tools/gestures/AdjustDrag.h"
#include "tools/interaction/DrawContextInputHandler.h"
#include "tools/interaction/ScreenMarker.h"
#include "tools/interaction/ToolContext.h"

namespace vellum {

struct Stroke;

class DrawContext : public ToolContext, public TextTarget, public UnfinishedWork {
public:
    DrawContext();
    ~DrawContext() override;

    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;

    using ToolContext::doPress;
    MStatus doPress(MEvent& event) override;
    using ToolContext::doRelease;
    MStatus doRelease(MEvent& event) override;
    using ToolContext::doDrag;
    MStatus doDrag(MEvent& event) override;
    using MPxContext::doHold;
    MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;
    using MPxContext::doPtrMoved;
    MStatus doPtrMoved(MEvent& event) override;
    MStatus helpStateHasChanged(MEvent& event) override;

    bool typeKey(const QKeyEvent& event) override;
    void typeText(const QString& text, const QString& composing) override;
    bool commitText() override;
    bool settleText() override;

    void finish() override;
    void forget() override;

private:
    Stroke* strokeInProgress() const;
    bool isTextStroke() const;
    bool isTyping() const;

    void pointerLost() override;

    void beginAdjusting(AdjustDrag::Option option, const MEvent& event);
    void adjust(const MEvent& event);
    void forgetAdjusting();
    void beginStroke(const MEvent& press);
    void startSampling(Tool tool, const MEvent& press);
    static QPoint samplingPosition(const MEvent& event);
    void makeLayersOfViewCurrent();
    void textChanged(Stroke& stroke, const QString& before);
    QString obstacleToText() const;
    void tellRefused(const QString& reason);
    void discardText();
    void endStroke();
    void commit();
    void followCamera();
    bool merge();
    void discardStroke();
    void forgetStroke();

    double sizeCursorRadius() const;
    void showSizeCursor();
    void drawSizeCursor();
    void eraseSizeCursor();

    // The target stands from the press to the release, and while typing.
    TargetAdditions added_; ///< what the stroke needed first
    // Of a text.
    quint64 layer_ = 0;    ///< Layer::id() of the one it was begun on
    int composing_ = 0;    ///< units at its end that an input method has not settled
    bool refused_ = false; ///< the user has been told that it has nowhere to go

    AdjustDrag adjusting_;
    Tool adjustedTool_ = Tool::Pencil;

    ScreenMarker legacyCursor_;
    double cursorRadius_ = 1.0; ///< view pixels

    DrawContextInputHandler handler_;
};

} // namespace vellum
