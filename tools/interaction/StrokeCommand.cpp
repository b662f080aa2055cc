#include "tools/interaction/StrokeCommand.h"

#include "document/Frame.h"
#include "document/Layer.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/SceneNodes.h"
#include "plugin/session/Timeline.h"

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MArgDatabase.h>
#include <maya/MStringArray.h>

namespace vellum {

namespace {

constexpr char kLayerAdded[] = "-la";
constexpr char kFrameAdded[] = "-fa";

void showChange(BaseNode& node) {
    node.drawingChanged();
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status == MS::kSuccess)
        view.refresh();
}

} // namespace

StrokeCommand::StrokeCommand() = default;
StrokeCommand::~StrokeCommand() = default;

void* StrokeCommand::creator() {
    return new StrokeCommand;
}

MSyntax StrokeCommand::newSyntax() {
    MSyntax syntax;
    syntax.addFlag(kLayerAdded, "-layerAdded", MSyntax::kLong);
    syntax.addFlag(kFrameAdded, "-frameAdded");
    // A missing camera gets this command's own message.
    syntax.setObjectType(MSyntax::kStringObjects, 0, 1);
    syntax.enableQuery(false);
    syntax.enableEdit(false);
    return syntax;
}

bool StrokeCommand::isUndoable() const {
    return true;
}

MStatus StrokeCommand::parse(const MArgList& args) {
    MStatus status;
    const MArgDatabase parsed(syntax(), args, &status);
    if (status != MS::kSuccess)
        return status;
    MStringArray objects;
    parsed.getObjects(objects);
    if (objects.length() == 0) {
        report::error(QStringLiteral("Camera not specified"));
        return MS::kFailure;
    }
    camera_ = fromMaya(objects[0]);
    if (!requireSceneCamera(camera_))
        return MS::kFailure;
    if (parsed.isFlagSet(kLayerAdded))
        parsed.getFlagArgument(kLayerAdded, 0, addedLayer_);
    frameAdded_ = parsed.isFlagSet(kFrameAdded);
    return MS::kSuccess;
}

// The frame that was added is the one now drawn on; its time also holds when the scene's time has
// moved since the press.
bool StrokeCommand::recordFrameTime(const LayerManager& document) {
    const Layer* layer = document.activeLayer(camera_);
    if (!layer)
        return false;
    if (layer->state() == layer_state::kStatic) {
        frameTime_ = MTime(static_cast<double>(settings().defaultStaticFrameTime), MTime::uiUnit());
        return true;
    }
    const Frame* frame = document.currentFrame(camera_);
    frameTime_ = frame ? frame->time() : MAnimControl::currentTime();
    return true;
}

MStatus StrokeCommand::doIt(const MArgList& args) {
    const MStatus status = parse(args);
    if (status != MS::kSuccess)
        return status;
    BaseNode* node = activeNode();
    const auto drawing = node ? node->layerManager() : nullptr;
    if (!drawing)
        return MS::kFailure;
    document_ = drawing;
    LayerManager& document = *drawing;
    if (addedLayer_ >= 0 && document.cameraLayerCount(camera_) == 1) {
        const QString previous = document.previousCamera();
        if (!previous.isEmpty() && previous != camera_) {
            previousCamera_ = previous;
            previousLayerIndex_ = document.activeLayerIndex(previous);
        }
    }
    if (frameAdded_ && !recordFrameTime(document))
        return MS::kFailure;
    if (!document.commitStroke(camera_, png_))
        return MS::kFailure;
    showChange(*node);
    return MS::kSuccess;
}

bool StrokeCommand::swap(LayerManager& document) {
    return document.replaceActiveImage(camera_, png_);
}

MStatus StrokeCommand::undoIt() {
    BaseNode* node = nodeForUndo(document_.lock().get(), camera_);
    const auto drawing = document_.lock();
    if (!node || !swap(*drawing))
        return MS::kFailure;
    takeAdditionsBack(*drawing, frameAdded_);
    showChange(*node);
    return MS::kSuccess;
}

void StrokeCommand::takeAdditionsBack(LayerManager& document, bool frame) {
    if (frame) {
        document.takeFrameAt(camera_, frameTime_);
        refreshTimeline();
    }
    if (addedLayer_ < 0)
        return;
    const LayerManager::ChangeGroup group(document);
    layer_ = document.takeLayer(camera_, addedLayer_);
    if (previousLayerIndex_ >= 0)
        document.setActiveLayer(previousCamera_, previousLayerIndex_, true);
}

// The very layer that undo took: later steps of the queue look for it.
bool StrokeCommand::putLayerBack(LayerManager& document) {
    if (!layer_)
        return false;
    const LayerManager::ChangeGroup group(document);
    layer_->setName(document.uniqueLayerName(layer_->name()));
    const int index = document.insertLayer(camera_, addedLayer_, std::move(layer_));
    return document.setActiveLayer(camera_, index, true);
}

MStatus StrokeCommand::redoIt() {
    BaseNode* node = nodeForUndo(document_.lock().get(), camera_);
    if (!node)
        return MS::kFailure;
    const auto drawing = document_.lock();
    LayerManager& document = *drawing;
    if (addedLayer_ >= 0 && !putLayerBack(document))
        return MS::kFailure;
    const bool framePut = frameAdded_ && document.addFrameAt(camera_, frameTime_) >= 0;
    if (framePut != frameAdded_ || png_.isEmpty() || !swap(document)) {
        takeAdditionsBack(document, framePut); // else a second redo would find them in its way
        return MS::kFailure;
    }
    if (frameAdded_)
        refreshTimeline();
    showChange(*node);
    return MS::kSuccess;
}

} // namespace vellum
