#include "commands/FrameCommand.h"

#include "commands/FlagTable.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/Timeline.h"

#include <maya/MStringArray.h>

namespace vellum {

namespace {

constexpr const char* kRelative = "rel";
constexpr const char* kMoveToNext = "mvn";

constexpr const char* kCannotInsert = "Failed to insert key. Node does not exist.";

/// A call of which the camera and the drawing are known.
struct FrameCall {
    const MArgDatabase& args;
    const char* flag;
    const QString& camera;
    bool named; ///< the call names the camera
    const LayerManager& document;
};

using Operation = frame_operation::Operation;

struct FrameAction {
    Operation (*make)(const FrameCall& call) = nullptr; ///< null, after a report, when refused
    const char* withoutNode = kNodeNotFound;
};

template <auto make> Operation overRange(const FrameCall& call) {
    const auto range = sliderRange();
    return range ? make(call.camera, *range) : nullptr;
}

Operation duplicate(const FrameCall& call) {
    return frame_operation::duplicate(call.camera);
}

Operation paste(const QString& camera, const FrameRange& range) {
    return frame_operation::paste(camera, range.first);
}

Operation stepForward(const FrameCall&) {
    return frame_operation::stepForward();
}

Operation stepBack(const FrameCall&) {
    return frame_operation::stepBack();
}

Operation retime(const FrameCall& call) {
    const auto range = sliderRange();
    if (!range)
        return nullptr;
    return frame_operation::retime(*range, intArgument(call.args, call.flag, 0),
                                   isSet(call.args, kRelative), isSet(call.args, kMoveToNext));
}

Operation move(const FrameCall& call) {
    // Unnamed: what the time slider marks, whatever camera the view looks through.
    return frame_operation::move(call.named ? call.camera : call.document.currentCamera(),
                                 intArgument(call.args, call.flag, 0),
                                 intArgument(call.args, call.flag, 1),
                                 intArgument(call.args, call.flag, 2));
}

const FlagTable<FrameAction>& flags() {
    constexpr auto L = MSyntax::kLong;
    static const FlagTable<FrameAction> table{
        {"-ins", "-insert", {}, {overRange<frame_operation::insert>, kCannotInsert}},
        {"-dup", "-duplicate", {}, {duplicate}},
        {"-del", "-delete", {}, {overRange<frame_operation::remove>}},
        {"-cut", "-cutFrame", {}, {overRange<frame_operation::cut>}},
        {"-cp", "-copy", {}, {overRange<frame_operation::copy>}},
        {"-pst", "-paste", {}, {overRange<paste>}},
        {"-clr", "-clear", {}, {overRange<frame_operation::clear>}},
        {"-sf", "-stepForward", {}, {stepForward}},
        {"-sb", "-stepBack", {}, {stepBack}},
        // The names without a dash are as scripts know them.
        {"ret", "retime", {L}, {retime}},
        {kRelative, "relative", {}, {}},
        {kMoveToNext, "moveToNext", {}, {}},
        {"mv", "move", {L, L, L}, {move}},
    };
    return table;
}

} // namespace

void* FrameCommand::creator() {
    return new FrameCommand;
}

MSyntax FrameCommand::newSyntax() {
    MSyntax syntax;
    addFlags(syntax, flags());
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
    const auto* row = firstFlag(flags(), parsed, &FrameAction::make);
    if (!document)
        return refuse(QString::fromLatin1(row ? row->action.withoutNode : kNodeNotFound));
    if (!row)
        return refuse(QStringLiteral("Invalid command parameters"));
    document_ = document;
    operation_ = row->action.make({parsed, row->shortName, camera_, named_, *document});
    return operation_ ? redoIt() : MS::kFailure;
}

MStatus FrameCommand::findCamera(const MArgDatabase& args) {
    MStringArray objects;
    args.getObjects(objects);
    named_ = objects.length() > 0;
    if (named_) {
        camera_ = fromMaya(objects[0]);
        return requireSceneCamera(camera_) ? MS::kSuccess : MS::kFailure;
    }
    camera_ = currentCamera();
    return camera_.isEmpty() ? refuse(QStringLiteral("Camera not specified")) : MS::kSuccess;
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
