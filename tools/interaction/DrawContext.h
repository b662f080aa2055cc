// The drawing tool. A left press starts a stroke on the active layer of the view's camera, the
// sampling thread fills it, the release commits it through rvVellumStroke. With "B" or "M" held a
// drag changes the tool's size or opacity instead. Main thread only.
#pragma once

#include "document/edits/TargetAdditions.h"
#include "tools/interaction/DrawContextInputHandler.h"

#include <QString>
#include <maya/MObjectHandle.h>
#include <maya/MPxContext.h>
#include <memory>

namespace vellum {

class BaseNode;
class LayerManager;
struct Stroke;

class DrawContext : public MPxContext, public TextTarget {
public:
    DrawContext();
    ~DrawContext() override;

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
    using MPxContext::doHold;
    MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;
    using MPxContext::doPtrMoved;
    MStatus doPtrMoved(MEvent& event) override;
    MStatus helpStateHasChanged(MEvent& event) override;

    bool typeKey(const QKeyEvent& event) override;
    void typeText(const QString& text, const QString& composing) override;
    void commitText() override;

private:
    enum class Adjusting { Nothing, Size, Opacity };

    struct Position {
        short x = 0, y = 0; // view pixels, origin at the bottom left
    };
    static Position positionOf(const MEvent& event);

    BaseNode* node() const;
    Stroke* strokeInProgress() const;
    bool isTextStroke() const;

    QWidget* holdActiveView();
    void pointerLost();

    void beginAdjusting(Adjusting what, const MEvent& event);
    void adjust(const MEvent& event);
    void forgetAdjusting();
    void beginStroke(const MEvent& press);
    void startSampling(int tool, const MEvent& press);
    static QPoint samplingPosition(const MEvent& event);
    void makeLayersOfViewCurrent();
    void textChanged(Stroke& stroke);
    void endStroke();
    void commit();
    void forgetStroke();

    double sizeCursorRadius() const;
    void toggleSizeCursor(double radius);
    void drawSizeCursor(double radius) const;
    void eraseSizeCursor();

    MObjectHandle nodeHandle_;               ///< node drawn on, during a press or while typing
    std::shared_ptr<LayerManager> document_; ///< its document
    QString camera_;
    int pressFrame_ = 0;    ///< frame drawn on
    TargetAdditions added_; ///< what the stroke needed first
    int composing_ = 0;     ///< units at the end of the text that an input method has not settled
    QPointer<QWidget> pressedView_; ///< where the button went down
    QMetaObject::Connection viewClosed_;

    Adjusting adjusting_ = Adjusting::Nothing;
    int adjustedTool_ = 0;
    int startValue_ = 0;
    Position anchor_;

    MHWRender::MUIDrawManager* drawManager_ = nullptr; ///< during one call
    bool cursorDrawn_ = false;                         ///< legacy views: waits to be erased
    double cursorRadius_ = 1.0;

    DrawContextInputHandler handler_;
};

} // namespace vellum
