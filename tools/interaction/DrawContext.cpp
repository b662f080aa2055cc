#include "tools/interaction/DrawContext.h"

#include "document/DocumentEnvironment.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolOptions.h"
#include "plugin/base/ToolTable.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/DrawingTarget.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneNodes.h"
#include "plugin/session/Timeline.h"
#include "tools/interaction/ThreadManager.h"
#include "tools/interaction/ViewMeasure.h"

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

// What takes ink away does so wholly.
bool hasFixedOpacity(Tool tool) {
    const ToolInfo* info = findTool(tool);
    return info && info->opacity.keep != Keep::File;
}

SampleOptions optionsOf(Tool tool) {
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
    listenTo(handler_);
}

DrawContext::~DrawContext() {
    if (pluginState().unfinished == this)
        pluginState().unfinished = nullptr;
    if (document_)
        ThreadManager::instance().stop();
}

void DrawContext::toolOnSetup(MEvent& event) {
    MPxContext::toolOnSetup(event);
    setHelpString("Draw on viewport");
    if (allNodes().empty())
        script::execute(command::createNode(), true, true);
    setDrawToolActive(true);
    pluginState().unfinished = this;
    handler_.activate(true);
}

void DrawContext::toolOffCleanup() {
    pluginState().unfinished = nullptr;
    finish();
    if (isTyping())
        discardText();
    setDrawToolActive(false);
    handler_.activate(false);
    MPxContext::toolOffCleanup();
}

// Of a pointer that is still down, what was drawn is kept.
void DrawContext::finish() {
    endStroke();
    settleText();
    forgetAdjusting();
}

void DrawContext::forget() {
    ThreadManager::instance().stop();
    handler_.setTextTarget(nullptr);
    if (document_)
        document_->discardStroke();
    forgetAdjusting();
    forgetStroke();
}

Stroke* DrawContext::strokeInProgress() const {
    return document_ ? document_->currentStroke() : nullptr;
}

bool DrawContext::isTextStroke() const {
    const Stroke* stroke = strokeInProgress();
    return stroke && kindOf(stroke->tool) == ToolKind::Text;
}

MStatus DrawContext::doPress(MEvent& event) {
    handler_.watchActiveView();
    finish(); // a stroke whose release never came
    if (isTyping())
        return MS::kSuccess; // another stroke would take its place
    added_ = {};
    const AdjustDrag::Option option = AdjustDrag::optionFor(
        handler_.sizeKeyHeld(), handler_.opacityKeyHeld(), hasFixedOpacity(settings().activeTool));
    if (option != AdjustDrag::Option::None) {
        beginAdjusting(option, event);
    } else {
        const MEvent::MouseButtonType button = event.mouseButton();
        if (button == MEvent::kLeftMouse)
            beginStroke(event);
        else if (button == MEvent::kMiddleMouse)
            makeLayersOfViewCurrent();
    }
    return MS::kSuccess;
}

void DrawContext::pointerLost() {
    endStroke();
    forgetAdjusting();
}

void DrawContext::beginStroke(const MEvent& press) {
    const Tool tool = pluginState().tabletEraser ? Tool::Eraser : settings().activeTool;
    if (!isTool(tool))
        return;
    BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    if (!document)
        return;
    document->RefreshActiveCamera();
    camera_ = currentCamera();
    DrawingTarget target = drawingTarget(*active, camera_);
    added_ = std::move(target.added);
    if (!target || !document->beginStroke(camera_, tool, settings().activeColor))
        return;
    nodeHandle_ = MObjectHandle(active->thisMObject());
    document_ = document;
    layer_ = document->activeLayer(camera_)->id();
    startSampling(tool, press);
}

void DrawContext::startSampling(Tool tool, const MEvent& press) {
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
        optionsOf(tool), samplingPosition(press));
}

// From pixels of the view to the sampling's convention.
QPoint DrawContext::samplingPosition(const MEvent& event) {
    return positionOf(event) + QPoint(1, 2);
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
    if (adjusting_.isOn())
        adjust(event);
    else if (BaseNode* drawn = node())
        drawn->forceRedraw();
    return MS::kSuccess;
}

MStatus DrawContext::doRelease(MEvent& event) {
    if (adjusting_.end()) {
        eraseSizeCursor();
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

// What cannot be merged is gone, whoever refused it has said why.
void DrawContext::commit() {
    const Stroke* stroke = strokeInProgress();
    const bool empty = !stroke || stroke->points.empty();
    if ((empty && added_.isEmpty()) || !merge())
        discardStroke();
    forgetStroke();
}

// The camera may have got another name since the press; the stroke in progress knows it.
void DrawContext::followCamera() {
    documentEnvironment().settleCameraNames();
    if (!strokeInProgress())
        return;
    camera_ = document_->strokeCamera();
    added_.setCamera(camera_);
}

// Merges the stroke through its command, into the frame that is current now. False when that fails:
// then it is still in progress.
bool DrawContext::merge() {
    followCamera();
    const auto document = document_;
    // The command works on the drawing that is active now, which may be another one.
    const bool done = requireNode(document.get(), camera_) &&
                      script::execute(command::commitStroke(camera_, added_.layerIndex(*document),
                                                            added_.hasFrame()),
                                      true, true);
    if (BaseNode* drawn = node())
        drawn->forceRedraw();
    return done;
}

// With what was made for it.
void DrawContext::discardStroke() {
    if (!document_)
        return;
    followCamera();
    document_->discardStroke();
    added_.takeBackUntouched(*document_);
    if (BaseNode* drawn = node())
        drawn->forceRedraw();
}

void DrawContext::forgetStroke() {
    letGoOfView();
    forgetTarget();
    composing_ = 0;
    refused_ = false;
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
