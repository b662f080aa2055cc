#include "commands/FrameCommand.h"

#include "commands/Arguments.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/Timeline.h"

#include <maya/MArgDatabase.h>
#include <maya/MStringArray.h>

namespace vellum {

namespace {

/// The first of these flags that is set decides.
constexpr const char* kOperations[] = {"-ins", "-dup", "-del", "-cut", "-cp", "-pst",
                                       "-clr", "-sf",  "-sb",  "-ret", "-mv"};

const char* chosenOperation(const MArgDatabase& args) {
    for (const char* flag : kOperations) {
        if (args.isFlagSet(flag))
            return flag;
    }
    return "";
}

} // namespace

void* FrameCommand::creator() {
    return new FrameCommand;
}

MSyntax FrameCommand::newSyntax() {
    constexpr auto L = MSyntax::kLong;
    MSyntax syntax;
    syntax.addFlag("-ins", "-insert");
    syntax.addFlag("-dup", "-duplicate");
    syntax.addFlag("-del", "-delete");
    syntax.addFlag("-cut", "-cutFrame");
    syntax.addFlag("-cp", "-copy");
    syntax.addFlag("-pst", "-paste");
    syntax.addFlag("-clr", "-clear");
    syntax.addFlag("-sf", "-stepForward");
    syntax.addFlag("-sb", "-stepBack");
    // The names without a dash are as scripts know them.
    syntax.addFlag("ret", "retime", L);
    syntax.addFlag("rel", "relative");
    syntax.addFlag("mvn", "moveToNext");
    syntax.addFlag("mv", "move", L, L, L);
    syntax.setObjectType(MSyntax::kStringObjects, 0, 1);
    syntax.enableQuery(false);
    syntax.enableEdit(false);
    return syntax;
}

bool FrameCommand::isUndoable() const {
    return operation_ && operation_->isUndoable();
}

MStatus FrameCommand::doIt(const MArgList& args) {
    MStatus status;
    const MArgDatabase parsed(syntax(), args, &status);
    if (status != MS::kSuccess)
        return status;
    status = findCamera(parsed);
    if (status != MS::kSuccess)
        return status;
    const BaseNode* active = activeNode();
    const auto document = active ? active->layerManager() : nullptr;
    if (!document) {
        return refuse(is(chosenOperation(parsed), "-ins")
                          ? QStringLiteral("Failed to insert key. Node does not exist.")
                          : QStringLiteral("Node not found"));
    }
    document_ = document;
    status = makeOperation(parsed);
    return status == MS::kSuccess ? redoIt() : status;
}

MStatus FrameCommand::findCamera(const MArgDatabase& args) {
    MStringArray objects;
    args.getObjects(objects);
    named_ = objects.length() > 0;
    if (named_) {
        camera_ = fromMaya(objects[0]);
        if (!cameraExists(camera_))
            return refuse(QStringLiteral("Camera does not exist: %1").arg(camera_));
        return MS::kSuccess;
    }
    camera_ = currentCamera();
    return camera_.isEmpty() ? refuse(QStringLiteral("Camera not specified")) : MS::kSuccess;
}

MStatus FrameCommand::makeOperation(const MArgDatabase& args) {
    const char* flag = chosenOperation(args);
    if (is(flag, ""))
        return refuse(QStringLiteral("Invalid command parameters"));
    if (is(flag, "-dup")) {
        operation_ = frame_operation::duplicate(camera_);
    } else if (is(flag, "-sf")) {
        operation_ = frame_operation::stepForward();
    } else if (is(flag, "-sb")) {
        operation_ = frame_operation::stepBack();
    } else if (is(flag, "-mv")) {
        // Unnamed: what the time slider marks, whatever camera the view looks through.
        operation_ = frame_operation::move(
            named_ ? camera_ : document_.lock()->currentCamera(), signedArgument(args, flag, 0),
            signedArgument(args, flag, 1), signedArgument(args, flag, 2));
    } else {
        const auto range = sliderRange();
        if (!range)
            return MS::kFailure;
        operation_ = is(flag, "-ret")
                         ? frame_operation::retime(*range, signedArgument(args, flag, 0),
                                                   args.isFlagSet("-rel"), args.isFlagSet("-mvn"))
                         : rangeOperation(flag, *range);
    }
    return MS::kSuccess;
}

std::unique_ptr<FrameOperation> FrameCommand::rangeOperation(const char* flag,
                                                             const FrameRange& range) const {
    if (is(flag, "-ins"))
        return frame_operation::insert(camera_, range);
    if (is(flag, "-del"))
        return frame_operation::remove(camera_, range);
    if (is(flag, "-cut"))
        return frame_operation::cut(camera_, range);
    if (is(flag, "-cp"))
        return frame_operation::copy(camera_, range);
    if (is(flag, "-pst"))
        return frame_operation::paste(camera_, range.first);
    return frame_operation::clear(camera_, range);
}

BaseNode* FrameCommand::node() const {
    BaseNode* found = nodeWith(document_.lock().get());
    if (!found)
        report::error(QStringLiteral("Node not found"));
    return found;
}

void FrameCommand::showChange(BaseNode& changed) const {
    if (!operation_->changesDrawing())
        return;
    changed.drawingChanged();
    refreshTimeline();
}

MStatus FrameCommand::redoIt() {
    BaseNode* found = node();
    if (!found || !operation_->execute(*found->layerManager(), found->clipboard()))
        return MS::kFailure;
    showChange(*found);
    return MS::kSuccess;
}

MStatus FrameCommand::undoIt() {
    BaseNode* found = node();
    if (!found || !operation_->undo(*found->layerManager()))
        return MS::kFailure;
    showChange(*found);
    return MS::kSuccess;
}

} // namespace vellum
