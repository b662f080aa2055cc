#include "commands/FrameCommand.h"

#include "commands/Arguments.h"
#include "document/LayerManager.h"
#include "document/edits/Edit.h"
#include "document/edits/FrameEdits.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/ActiveNode.h"

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

FrameCommand::FrameCommand() = default;
FrameCommand::~FrameCommand() = default;

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
    return edit_ && edit_->isUndoable();
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
    status = makeEdit(parsed, *active);
    return status == MS::kSuccess ? run(&Edit::execute) : status;
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

MStatus FrameCommand::makeEdit(const MArgDatabase& args, const BaseNode& node) {
    const char* flag = chosenOperation(args);
    if (is(flag, ""))
        return refuse(QStringLiteral("Invalid command parameters"));
    if (is(flag, "-dup")) {
        edit_ = frame_edit::duplicate(camera_);
    } else if (is(flag, "-sf")) {
        edit_ = frame_edit::stepForward();
    } else if (is(flag, "-sb")) {
        edit_ = frame_edit::stepBack();
    } else if (is(flag, "-mv")) {
        // Unnamed: what the time slider marks, whatever camera the view looks through.
        edit_ = frame_edit::move(named_ ? camera_ : document_.lock()->currentCamera(),
                                 signedArgument(args, flag, 0), signedArgument(args, flag, 1),
                                 signedArgument(args, flag, 2));
    } else {
        const auto range = sliderRange();
        if (!range)
            return MS::kFailure;
        edit_ = is(flag, "-ret")
                    ? frame_edit::retime(*range, signedArgument(args, flag, 0),
                                         args.isFlagSet("-rel"), args.isFlagSet("-mvn"))
                    : rangeEdit(flag, *range, node);
    }
    return MS::kSuccess;
}

std::unique_ptr<Edit> FrameCommand::rangeEdit(const char* flag, const FrameRange& range,
                                              const BaseNode& node) const {
    if (is(flag, "-ins"))
        return frame_edit::insert(camera_, range);
    if (is(flag, "-del"))
        return frame_edit::remove(camera_, range);
    if (is(flag, "-cut"))
        return frame_edit::cut(camera_, range, node.clipboard());
    if (is(flag, "-cp"))
        return frame_edit::copy(camera_, range, node.clipboard());
    if (is(flag, "-pst"))
        return frame_edit::paste(camera_, range.first, node.clipboard());
    return frame_edit::clear(camera_, range);
}

MStatus FrameCommand::run(bool (Edit::*verb)(LayerManager&)) {
    if (!nodeWith(document_.lock().get()))
        return refuse(QStringLiteral("Node not found"));
    return (*edit_.*verb)(*document_.lock()) ? MS::kSuccess : MS::kFailure;
}

MStatus FrameCommand::redoIt() {
    return run(&Edit::redo);
}

MStatus FrameCommand::undoIt() {
    return run(&Edit::undo);
}

} // namespace vellum
