#include "commands/NodeCommand.h"

#include "commands/FlagTable.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Script.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/SceneTime.h"

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

constexpr const char* kLayer = "-l";
constexpr const char* kCamera = "-c";
constexpr const char* kLayerName = "-ln";
constexpr const char* kLayerState = "-ls";
constexpr const char* kFrame = "-f";

MStatus tellExistence() {
    MPxCommand::setResult(activeNode() != nullptr);
    return MS::kSuccess;
}

MStatus tellCamera() {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    MPxCommand::setResult(toMaya(node->layerManager()->currentCamera()));
    return MS::kSuccess;
}

MStatus refresh() {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    node->layerManager()->RefreshActiveCamera();
    return MS::kSuccess;
}

MStatus refreshGhosting() {
    const BaseNode* node = activeNode();
    if (!node)
        return MS::kFailure;
    const auto document = node->layerManager();
    document->markCameraModified(document->currentCamera());
    tell(Change::View, document.get());
    return MS::kSuccess;
}

/// What a flag does instead of making the node, and in a query.
struct NodeAction {
    MStatus (*create)() = nullptr;
    MStatus (*query)() = nullptr;
};

const FlagTable<NodeAction>& flags() {
    constexpr auto U = MSyntax::kUnsigned;
    constexpr auto S = MSyntax::kString;
    static const FlagTable<NodeAction> table{
        {"-ex", "-exists", {}, {tellExistence}},
        {"-r", "-refresh", {}, {refresh}},
        {"-rg", "-refreshGhosting", {}, {refreshGhosting}},
        {kLayer, "-layer", {}, {}},
        {kCamera, "-camera", {S}, {nullptr, tellCamera}},
        {kLayerName, "-layerName", {S}, {}},
        {kLayerState, "-layerState", {U}, {}},
        {kFrame, "-frame", {}, {}},
    };
    return table;
}

} // namespace

void* NodeCommand::creator() {
    return new NodeCommand;
}

MSyntax NodeCommand::newSyntax() {
    MSyntax syntax;
    addFlags(syntax, flags());
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
    const auto mode = query_ ? &NodeAction::query : &NodeAction::create;
    const auto* row = firstFlag(flags(), args, mode);
    action_ = row ? row->action.*mode : nullptr;
    layer_ = isSet(args, kLayer);
    frame_ = isSet(args, kFrame);
    camera_ = stringArgument(args, kCamera, 0);
    layerName_ = stringArgument(args, kLayerName, 0);
    layerState_ = newStateArgument(args, kLayerState);
}

MStatus NodeCommand::redoIt() {
    if (edit_)
        return refuse(QStringLiteral("Invalid edit parameter"), MS::kInvalidParameter);
    if (query_ && !action_)
        return refuse(QStringLiteral("Invalid query parameter"), MS::kInvalidParameter);
    return action_ ? action_() : create();
}

MStatus NodeCommand::create() {
    if (activeNode())
        return refuse(QStringLiteral("Node already exists"));
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
        return refuse(QStringLiteral("Failed to create transform"));
    modifier_.renameNode(transform_, "vellum");
    const MObject shape = modifier_.createNode(BaseNode::id, transform_, &status);
    if (status != MS::kSuccess)
        return refuse(QStringLiteral("Failed to create shape"));
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
