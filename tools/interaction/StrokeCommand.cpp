#include "tools/interaction/StrokeCommand.h"

#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "document/edits/StrokeEdit.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/DrawingTarget.h"
#include "plugin/session/SceneNodes.h"

#include <maya/MArgDatabase.h>
#include <maya/MStringArray.h>

namespace vellum {

namespace {

constexpr char kLayerAdded[] = "-la";
constexpr char kFrameAdded[] = "-fa";

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
    int addedLayer = -1;
    if (parsed.isFlagSet(kLayerAdded))
        parsed.getFlagArgument(kLayerAdded, 0, addedLayer);
    edit_ = std::make_unique<StrokeEdit>(camera_, addedLayer, parsed.isFlagSet(kFrameAdded));
    return MS::kSuccess;
}

MStatus StrokeCommand::doIt(const MArgList& args) {
    const MStatus status = parse(args);
    if (status != MS::kSuccess)
        return status;
    const BaseNode* node = activeNode();
    const auto document = node ? node->layerManager() : nullptr;
    if (!document) {
        report::error(QStringLiteral("Node not found"));
        return MS::kFailure;
    }
    if (!edit_->execute(*document)) {
        reportUnfinished(*document, camera_);
        return MS::kFailure;
    }
    document_ = document;
    return MS::kSuccess;
}

MStatus StrokeCommand::run(bool (Edit::*verb)(LayerManager&)) {
    const bool there = requireNode(document_.lock().get(), camera_) != nullptr;
    return there && (*edit_.*verb)(*document_.lock()) ? MS::kSuccess : MS::kFailure;
}

MStatus StrokeCommand::undoIt() {
    return run(&Edit::undo);
}

MStatus StrokeCommand::redoIt() {
    return run(&Edit::redo);
}

} // namespace vellum
