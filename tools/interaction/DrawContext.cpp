#include "tools/interaction/DrawContext.h"

#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/Tool.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/session/ActiveNode.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/Timeline.h"
#include "tools/interaction/ThreadManager.h"
#include "tools/interaction/ViewMeasure.h"

#include <QKeyEvent>
#include <maya/M3dView.h>
#include <maya/MCursor.h>
#include <utility>

namespace vellum {

namespace {

// The view that a widget shows; false once it has gone.
bool viewOfWidget(const QWidget* widget, M3dView& view) {
    for (unsigned i = 0; widget && i < M3dView::numberOf3dViews(); ++i) {
        if (M3dView::get3dView(i, view) == MS::kSuccess && view.widget() == widget)
            return true;
    }
    return false;
}

// Where the drawing lies in the view of a widget. Keeps what it knew last when the view goes while
// the pointer is down.
class ViewMappingSource {
public:
    explicit ViewMappingSource(QWidget* widget) : widget_(widget) {}

    ViewMapping operator()() {
        M3dView view;
        if (widget_ && viewOfWidget(widget_, view))
            viewMapping(view, last_);
        return last_;
    }

private:
    QPointer<QWidget> widget_;
    ViewMapping last_;
};

// Keys such as Delete or Left have a control character or nothing for their text. Joiners and other
// signs without a shape of their own belong to what some scripts are written with.
bool isWritten(const QString& keyText) {
    return !keyText.isEmpty() &&
           (keyText.at(0) == QLatin1Char('\t') || keyText.at(0).category() != QChar::Other_Control);
}

SampleOptions optionsOf(int tool) {
    SampleOptions options;
    options.width = toolSize(tool);
    options.opacity = static_cast<float>(toolOpacity(tool)) / 100.0F;
    options.hardness = static_cast<float>(toolHardness(tool)) / 100.0F;
    options.pressureEnabled = toolTabletEnabled(tool);
    return options;
}

} // namespace

DrawContext::DrawContext() {
    setTitleString("Draw Context");
    setImage(":/icons/draw_context_01.png", MPxContext::kImage1);
    setCursor(MCursor::crossHairCursor);
    QObject::connect(&handler_, &DrawContextInputHandler::PointerLost, &handler_,
                     [this](const QWidget* view) {
                         // Not at once: a view that is hidden may be about to be deleted.
                         if (view == pressedView_)
                             QMetaObject::invokeMethod(
                                 &handler_, [this] { pointerLost(); }, Qt::QueuedConnection);
                     });
}

DrawContext::~DrawContext() {
    if (document_)
        ThreadManager::instance().stop();
}

void DrawContext::toolOnSetup(MEvent& event) {
    MPxContext::toolOnSetup(event);
    setHelpString("Draw on viewport");
    if (allNodes().empty())
        script::execute(command::createNode(), true, true);
    setDrawToolActive(true);
    handler_.activate(true);
}

void DrawContext::toolOffCleanup() {
    // A pointer that is still down: what was drawn is kept.
    endStroke();
    commitText();
    forgetAdjusting();
    setDrawToolActive(false);
    handler_.activate(false);
    MPxContext::toolOffCleanup();
}

DrawContext::Position DrawContext::positionOf(const MEvent& event) {
    Position position;
    event.getPosition(position.x, position.y);
    return position;
}

BaseNode* DrawContext::node() const {
    return nodeHandle_.isValid() ? BaseNode::fromObject(nodeHandle_.object()) : nullptr;
}

Stroke* DrawContext::strokeInProgress() const {
    return document_ ? document_->currentStroke() : nullptr;
}

bool DrawContext::isTextStroke() const {
    const Stroke* stroke = strokeInProgress();
    return stroke && stroke->tool == tool::kText;
}

MStatus DrawContext::doPress(MEvent& event) {
    endStroke(); // its release never came
    commitText();
    forgetAdjusting();
    added_ = {};
    handler_.watchActiveView();
    if (handler_.sizeKeyHeld()) {
        beginAdjusting(Adjusting::Size, event);
    } else if (handler_.opacityKeyHeld() && settings().activeTool != tool::kEraser) {
        beginAdjusting(Adjusting::Opacity, event);
    } else {
        const MEvent::MouseButtonType button = event.mouseButton();
        if (button == MEvent::kLeftMouse)
            beginStroke(event);
        else if (button == MEvent::kMiddleMouse)
            makeLayersOfViewCurrent();
    }
    return MS::kSuccess;
}

// The view in which a button goes down now; its end is the end of what the button does.
QWidget* DrawContext::holdActiveView() {
    MStatus status;
    const M3dView view = M3dView::active3dView(&status);
    QWidget* widget = status == MS::kSuccess ? view.widget() : nullptr;
    QObject::disconnect(viewClosed_);
    pressedView_ = widget;
    // Not at once: the view is being deleted then.
    if (widget)
        viewClosed_ = QObject::connect(
            widget, &QObject::destroyed, &handler_, [this] { pointerLost(); },
            Qt::QueuedConnection);
    return widget;
}

// The release will not come.
void DrawContext::pointerLost() {
    endStroke();
    forgetAdjusting();
}

void DrawContext::beginStroke(const MEvent& press) {
    const int number = pluginState().tabletEraser ? tool::kEraser : settings().activeTool;
    if (!isTool(number))
        return;
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    if (!document)
        return;
    document->RefreshActiveCamera();
    camera_ = currentCamera();
    pressFrame_ = currentFrame();
    DrawingTarget target = drawingTarget(*active, camera_);
    added_ = std::move(target.added);
    if (!target || !document->beginStroke(camera_, number, settings().activeColor))
        return;
    nodeHandle_ = MObjectHandle(active->thisMObject());
    document_ = document;
    startSampling(number, press);
}

void DrawContext::startSampling(int number, const MEvent& press) {
    QWidget* widget = holdActiveView();
    ThreadManager::Target target;
    target.stroke = [this] { return strokeInProgress(); };
    target.mapping = ViewMappingSource(widget);
    target.requestRedraw = [this] {
        if (BaseNode* drawn = node())
            drawn->forceRedraw();
    };
    if (!widget) {
        ThreadManager::instance().start(std::move(target));
        return;
    }
    const M3dView view = M3dView::active3dView();
    ThreadManager::instance().start(
        std::move(target), CursorPoller::forView(*widget, view.portWidth(), view.portHeight()),
        optionsOf(number), samplingPosition(press));
}

// From pixels of the view to the sampling's convention.
QPoint DrawContext::samplingPosition(const MEvent& event) {
    const Position at = positionOf(event);
    return {at.x + 1, at.y + 2};
}

void DrawContext::makeLayersOfViewCurrent() {
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    const QString camera = currentCamera();
    if (!document || camera.isEmpty() || camera == document->currentCamera())
        return;
    document->setActiveLayer(camera, document->activeLayerIndex(camera), true);
}

MStatus DrawContext::doDrag(MEvent& event) {
    if (adjusting_ != Adjusting::Nothing)
        adjust(event);
    else if (BaseNode* drawn = node())
        drawn->forceRedraw();
    return MS::kSuccess;
}

MStatus DrawContext::doRelease(MEvent& event) {
    if (adjusting_ != Adjusting::Nothing) {
        eraseSizeCursor();
        adjusting_ = Adjusting::Nothing;
        forgetStroke();
    } else if (document_) {
        ThreadManager::instance().finish(samplingPosition(event));
        endStroke();
    }
    handler_.forgetPen();
    return MS::kSuccess;
}

// The pointer is up, or treated as if it were. A text stays open for typing.
void DrawContext::endStroke() {
    if (!document_ || !ThreadManager::instance().isActive())
        return;
    ThreadManager::instance().finish(std::nullopt);
    ThreadManager::instance().stop();
    if (!isTextStroke()) {
        commit();
        return;
    }
    if (BaseNode* drawn = node())
        drawn->forceRedraw();
    handler_.setTextTarget(this);
}

bool DrawContext::typeKey(const QKeyEvent& event) {
    Stroke* stroke = strokeInProgress();
    if (!isTextStroke())
        return false;
    if (isCommandKey(event))
        return false;
    QString& text = stroke->text;
    text.chop(composing_);
    composing_ = 0;
    switch (event.key()) {
    case Qt::Key_Escape:
        commitText();
        return true;
    case Qt::Key_Backspace:
        // A character outside the basic plane is two units.
        if (text.size() > 1 && text.at(text.size() - 1).isLowSurrogate())
            text.chop(1);
        text.chop(1);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        text += QLatin1Char('\n');
        break;
    default:
        if (isWritten(event.text()))
            text += event.text();
        break;
    }
    textChanged(*stroke);
    return true;
}

void DrawContext::typeText(const QString& text, const QString& composing) {
    Stroke* stroke = strokeInProgress();
    if (!isTextStroke())
        return;
    stroke->text.chop(composing_);
    stroke->text += text + composing;
    composing_ = composing.size();
    textChanged(*stroke);
}

void DrawContext::textChanged(Stroke& stroke) {
    stroke.dirty = true;
    if (BaseNode* drawn = node())
        drawn->forceRedraw();
}

void DrawContext::commitText() {
    handler_.setTextTarget(nullptr); // an input method settles what is being composed
    if (!document_ || !isTextStroke())
        return;
    typeText(QString(), QString());
    commit();
}

// Merges the stroke through its command. The stroke belongs to the frame that was current at the
// press, even when the time has moved since.
void DrawContext::commit() {
    const auto document = document_;
    const Stroke* stroke = strokeInProgress();
    const bool empty = !stroke || stroke->points.empty();
    if (empty && added_.isEmpty()) {
        if (document)
            document->discardStroke();
        forgetStroke();
        return;
    }
    const int now = currentFrame();
    if (now != pressFrame_)
        document->timeChanged(pressFrame_);
    const bool done = script::execute(
        command::commitStroke(camera_, added_.layerIndex(*document), added_.hasFrame()), true,
        true);
    if (now != pressFrame_)
        document->timeChanged(now);
    if (!done && document->currentStroke())
        document->discardStroke();
    if (BaseNode* drawn = node())
        drawn->forceRedraw();
    forgetStroke();
}

void DrawContext::forgetStroke() {
    QObject::disconnect(viewClosed_);
    pressedView_ = nullptr;
    composing_ = 0;
    document_.reset();
    nodeHandle_ = MObjectHandle();
    camera_.clear();
    added_ = {};
}

// The hovering pointer: a view may have been opened since the tool was chosen.
MStatus DrawContext::doPtrMoved(MEvent&) {
    handler_.watchPens();
    return MS::kSuccess;
}

MStatus DrawContext::helpStateHasChanged(MEvent&) {
    return MS::kSuccess;
}

} // namespace vellum
