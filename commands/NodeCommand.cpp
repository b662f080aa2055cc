#include "commands/NodeCommand.h"

#include "commands/Arguments.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"
#include "plugin/session/ActiveNode.h"

#include <maya/MArgDatabase.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MTime.h>

namespace vellum {

namespace {

void lockChannels(const MObject& transform) {
    const MFnDependencyNode node(transform);
    for (const char* name : {"translateX", "translateY", "translateZ", "rotateX", "rotateY",
                             "rotateZ", "scaleX", "scaleY", "scaleZ"}) {
        MStatus status;
        MPlug plug = node.findPlug(name, true, &status);
        if (status != MS::kSuccess)
            continue;
        plug.setKeyable(false);
        plug.setLocked(true);
        plug.setChannelBox(false);
    }
}

MStatus refuse(const char* message, MStatus::MStatusCode code) {
    report::error(QString::fromLatin1(message));
    return code;
}

} // namespace

void* NodeCommand::creator() {
    return new NodeCommand;
}

MSyntax NodeCommand::newSyntax() {
    MSyntax syntax;
    syntax.addFlag("-ex", "-exists");
    syntax.addFlag("-r", "-refresh");
    syntax.addFlag("-rg", "-refreshGhosting");
    syntax.addFlag("-l", "-layer");
    syntax.addFlag("-c", "-camera", MSyntax::kString);
    syntax.addFlag("-ln", "-layerName", MSyntax::kString);
    syntax.addFlag("-ls", "-layerState", MSyntax::kUnsigned);
    syntax.addFlag("-f", "-frame");
    syntax.enableQuery(true);
    syntax.enableEdit(true);
    return syntax;
}

bool NodeCommand::isUndoable() const {
    return undoable_;
}

MStatus NodeCommand::doIt(const MArgList& args) {
    MStatus status;
    const MArgDatabase parsed(syntax(), args, &status);
    if (status != MS::kSuccess)
        return status;
    parse(parsed);
    status = redoIt();
    if (status == MS::kSuccess)
        doneOnce_ = true;
    return status;
}

void NodeCommand::parse(const MArgDatabase& args) {
    edit_ = args.isEdit();
    query_ = args.isQuery();
    queryCamera_ = query_ && args.isFlagSet("-camera");
    if (query_)
        return;
    exists_ = args.isFlagSet("-exists");
    refresh_ = !exists_ && args.isFlagSet("-refresh");
    refreshGhosting_ = !exists_ && !refresh_ && args.isFlagSet("-refreshGhosting");
    layer_ = args.isFlagSet("-layer");
    frame_ = args.isFlagSet("-frame");
    if (!layer_)
        return;
    MString text;
    if (args.isFlagSet("-camera") && args.getFlagArgument("-camera", 0, text) == MS::kSuccess)
        camera_ = fromMaya(text);
    if (args.isFlagSet("-layerName") && args.getFlagArgument("-layerName", 0, text) == MS::kSuccess)
        layerName_ = fromMaya(text);
    unsigned state = 0;
    if (args.isFlagSet("-layerState") &&
        args.getFlagArgument("-layerState", 0, state) == MS::kSuccess)
        layerState_ = layerStateOf(state > 2 ? 0 : static_cast<int>(state));
}

MStatus NodeCommand::redoIt() {
    if (edit_)
        return refuse("Invalid edit parameter", MS::kInvalidParameter);
    if (query_)
        return query();
    if (exists_) {
        setResult(activeNode() != nullptr);
        return MS::kSuccess;
    }
    if (refresh_)
        return refresh();
    if (refreshGhosting_)
        return refreshGhosting();
    return create();
}

MStatus NodeCommand::query() {
    if (!queryCamera_)
        return refuse("Invalid query parameter", MS::kInvalidParameter);
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    setResult(toMaya(node->layerManager()->currentCamera()));
    return MS::kSuccess;
}

MStatus NodeCommand::refresh() {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    node->layerManager()->RefreshActiveCamera();
    return MS::kSuccess;
}

MStatus NodeCommand::refreshGhosting() {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    const auto document = node->layerManager();
    document->markCameraModified(document->currentCamera());
    tell(Change::View, document.get());
    return MS::kSuccess;
}

MStatus NodeCommand::create() {
    if (activeNode())
        return refuse("Node already exists", MS::kFailure);
    if (!doneOnce_) {
        const MStatus status = buildNodes();
        if (status != MS::kSuccess)
            return status;
    }
    const MStatus status = modifier_.doIt();
    if (status != MS::kSuccess)
        return status;
    undoable_ = true;
    lockChannels(transform_);
    MGlobal::clearSelectionList();
    if (layer_) {
        const ChangeGroup group;
        tell(Change::TimelineAsked);
        if (!doneOnce_)
            addFirstLayer();
        refreshListeners();
    }
    return MS::kSuccess;
}

MStatus NodeCommand::buildNodes() {
    MGlobal::getActiveSelectionList(selectionBefore_);
    MStatus status;
    transform_ = modifier_.createNode("transform", MObject::kNullObj, &status);
    if (status != MS::kSuccess)
        return refuse("Failed to create transform", MS::kFailure);
    modifier_.renameNode(transform_, "vellum");
    const MObject shape = modifier_.createNode(BaseNode::id, transform_, &status);
    if (status != MS::kSuccess)
        return refuse("Failed to create shape", MS::kFailure);
    modifier_.renameNode(shape, "vellumShape");
    return MS::kSuccess;
}

void NodeCommand::addFirstLayer() {
    const BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    const QString camera = camera_.isEmpty() ? currentCamera() : camera_;
    if (!document || camera.isEmpty() || document->cameraLayerCount(camera) > 0)
        return;
    const int layer = document->addLayer(camera, -1, layerName_);
    if (layer < 0)
        return;
    if (layerState_)
        document->setLayerState(camera, layer, *layerState_);
    if (!frame_)
        return;
    const auto range = sliderRange();
    if (!range || !range->canBeFilled())
        return;
    for (qint64 frame = range->first; frame <= range->last; ++frame)
        document->addFrameAt(camera, static_cast<int>(frame));
}

void NodeCommand::refreshListeners() {
    script::execute(command::refreshLayerManagerDeferred());
    BaseNode* node = activeNode();
    if (!node)
        return;
    // Selecting something else and back fires Maya's selection event, which every listener hears.
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection);
    if (selection.isEmpty()) {
        MObject object = node->thisMObject();
        MGlobal::select(object, MGlobal::kReplaceList);
    } else {
        MGlobal::clearSelectionList();
    }
    MGlobal::setActiveSelectionList(selection);
}

MStatus NodeCommand::undoIt() {
    const MStatus status = modifier_.undoIt();
    if (status != MS::kSuccess)
        return status;
    MGlobal::setActiveSelectionList(selectionBefore_);
    drawingsChanged(Change::Drawings);
    return MS::kSuccess;
}

} // namespace vellum
