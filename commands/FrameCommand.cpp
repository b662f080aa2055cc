#include "commands/FrameCommand.h"

#include "commands/FlagTable.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "document/edits/Edit.h"
#include "document/edits/FrameEdits.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"

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
    const BaseNode& node;
};

using Operation = std::unique_ptr<Edit>;

struct FrameAction {
    Operation (*make)(const FrameCall& call) = nullptr; ///< null, after a report, when refused
    const char* withoutNode = kNodeNotFound;
};

template <auto make> Operation overRange(const FrameCall& call) {
    const auto range = sliderRange();
    return range ? make(call.camera, *range) : nullptr;
}

Operation duplicate(const FrameCall& call) {
    return frame_edit::duplicate(call.camera);
}

template <auto make> Operation withClipboard(const FrameCall& call) {
    const auto range = sliderRange();
    return range ? make(call.camera, *range, call.node.clipboard()) : nullptr;
}

Operation paste(const FrameCall& call) {
    const auto range = sliderRange();
    return range ? frame_edit::paste(call.camera, range->first, call.node.clipboard()) : nullptr;
}

Operation stepForward(const FrameCall&) {
    return frame_edit::stepForward();
}

Operation stepBack(const FrameCall&) {
    return frame_edit::stepBack();
}

Operation retime(const FrameCall& call) {
    const auto range = sliderRange();
    if (!range)
        return nullptr;
    return frame_edit::retime(*range, intArgument(call.args, call.flag, 0),
                              isSet(call.args, kRelative), isSet(call.args, kMoveToNext));
}

Operation move(const FrameCall& call) {
    // Unnamed: what the time slider marks, whatever camera the view looks through.
    return frame_edit::move(call.named ? call.camera : call.node.layerManager()->currentCamera(),
                            intArgument(call.args, call.flag, 0),
                            intArgument(call.args, call.flag, 1),
                            intArgument(call.args, call.flag, 2));
}

const FlagTable<FrameAction>& flags() {
    constexpr auto L = MSyntax::kLong;
    static const FlagTable<FrameAction> table{
        {"-ins", "-insert", {}, {overRange<frame_edit::insert>, kCannotInsert}},
        {"-dup", "-duplicate", {}, {duplicate}},
        {"-del", "-delete", {}, {overRange<frame_edit::remove>}},
        {"-cut", "-cutFrame", {}, {withClipboard<frame_edit::cut>}},
        {"-cp", "-copy", {}, {withClipboard<frame_edit::copy>}},
        {"-pst", "-paste", {}, {paste}},
        {"-clr", "-clear", {}, {overRange<frame_edit::clear>}},
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

FrameCommand::FrameCommand() = default;
FrameCommand::~FrameCommand() = default;

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
    const auto* row = firstFlag(flags(), parsed, &FrameAction::make);
    if (!document)
        return refuse(QString::fromLatin1(row ? row->action.withoutNode : kNodeNotFound));
    if (!row)
        return refuse(QStringLiteral("Invalid command parameters"));
    document_ = document;
    edit_ = row->action.make({parsed, row->shortName, camera_, named_, *active});
    return edit_ ? run(&Edit::execute) : MS::kFailure;
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
