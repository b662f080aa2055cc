#include "commands/LayerCommand.h"

#include "commands/FlagTable.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "document/edits/Edit.h"
#include "document/edits/LayerEdits.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/SceneNodes.h"

#include <maya/MStringArray.h>

#include <optional>

namespace vellum {

namespace {

constexpr const char* kName = "-n";
constexpr const char* kNewCamera = "-nc";
constexpr const char* kLayerState = "-ls";

constexpr const char* kCannotAdd = "Failed to add layer. Node does not exist.";
constexpr const char* kCannotInsert = "Failed to insert layer. Node does not exist.";

/// A call of which the camera and the drawing are known.
struct LayerCall {
    const MArgDatabase& args;
    const char* flag;
    const QString& camera;
    LayerManager& document;
    std::unique_ptr<Edit>& edit; ///< left empty by what changes nothing
};

using LayerHandler = MStatus (*)(const LayerCall& call);

/// What a flag does in a call without a mode, and in one with -edit or -query.
struct LayerAction {
    LayerHandler create = nullptr;
    LayerHandler edit = nullptr;
    LayerHandler query = nullptr;
    const char* withoutNode = kNodeNotFound;
};

MStatus activate(const LayerCall& call) {
    call.edit = layer_edit::activate(call.camera, indexArgument(call.args, call.flag, 0));
    return MS::kSuccess;
}

MStatus tellActive(const LayerCall& call) {
    MPxCommand::setResult(call.document.activeLayerIndex(call.camera));
    return MS::kSuccess;
}

MStatus count(const LayerCall& call) {
    MPxCommand::setResult(call.document.cameraLayerCount(call.camera));
    return MS::kSuccess;
}

MStatus add(const LayerCall& call) {
    call.edit = layer_edit::add(call.camera, stringArgument(call.args, kName, 0),
                                newStateArgument(call.args, kLayerState));
    return MS::kSuccess;
}

MStatus insert(const LayerCall& call) {
    call.edit = layer_edit::insert(call.camera, intArgument(call.args, call.flag, 0),
                                   stringArgument(call.args, kName, 0),
                                   newStateArgument(call.args, kLayerState));
    return MS::kSuccess;
}

MStatus remove(const LayerCall& call) {
    call.edit = layer_edit::remove(call.camera, indexArgument(call.args, call.flag, 0));
    return MS::kSuccess;
}

MStatus removeAll(const LayerCall& call) {
    call.edit = layer_edit::removeAll(call.camera);
    return MS::kSuccess;
}

MStatus move(const LayerCall& call) {
    const int from = indexArgument(call.args, call.flag, 0);
    const int to = intArgument(call.args, call.flag, 1);
    call.edit = isSet(call.args, kNewCamera)
                    ? layer_edit::moveToCamera(call.camera, from,
                                               stringArgument(call.args, kNewCamera, 0), to)
                    : layer_edit::move(call.camera, from, to);
    return MS::kSuccess;
}

MStatus moveAll(const LayerCall& call) {
    call.edit = layer_edit::moveAll(call.camera, stringArgument(call.args, call.flag, 0));
    return MS::kSuccess;
}

/// Index of the layer that an argument names; empty, after a report, when there is none.
std::optional<int> layerArgument(const LayerCall& call, unsigned position) {
    const unsigned number = unsignedArgument(call.args, call.flag, position);
    const int index = static_cast<int>(number);
    if (call.document.isValidLayer(call.camera, index))
        return index;
    report::error(QStringLiteral("Layer does not exist for camera (index): %1 (%2)")
                      .arg(call.camera, QString::number(number)));
    return std::nullopt;
}

/// The flag's first argument, of the kind that the property holds.
class ReadValue {
public:
    explicit ReadValue(const LayerCall& call) : call_(call) {}

    void operator()(QString& value) const { value = stringArgument(call_.args, call_.flag, 0); }
    void operator()(bool& value) const { value = boolArgument(call_.args, call_.flag, 0); }
    void operator()(float& value) const {
        value = static_cast<float>(doubleArgument(call_.args, call_.flag, 0));
    }
    void operator()(unsigned& value) const { value = unsignedArgument(call_.args, call_.flag, 0); }

private:
    const LayerCall& call_;
};

class ReturnValue {
public:
    void operator()(const QString& value) const { MPxCommand::setResult(toMaya(value)); }
    void operator()(bool value) const { MPxCommand::setResult(value); }
    void operator()(float value) const { MPxCommand::setResult(static_cast<double>(value)); }
    void operator()(unsigned value) const { MPxCommand::setResult(static_cast<int>(value)); }
};

/// The value stands before the layer.
template <const LayerProperty& property> MStatus editLayer(const LayerCall& call) {
    const auto index = layerArgument(call, 1);
    if (!index)
        return MS::kFailure;
    LayerValue value = property.get(*call.document.layer(call.camera, *index));
    std::visit(ReadValue(call), value);
    const auto* number = std::get_if<unsigned>(&value);
    if (number && *number > property.largest)
        return refuse(QString::fromLatin1(property.refusal).arg(*number));
    // A script that shows what is shown already leaves nothing to save or to undo.
    if (&property == &layer_property::kVisible &&
        value == property.get(*call.document.layer(call.camera, *index)))
        return MS::kSuccess;
    call.edit = layer_edit::setProperty(call.camera, *index, property, value);
    return MS::kSuccess;
}

template <const LayerProperty& property> MStatus tellOfLayer(const LayerCall& call) {
    const auto index = layerArgument(call, 0);
    if (!index)
        return MS::kFailure;
    std::visit(ReturnValue(), property.get(*call.document.layer(call.camera, *index)));
    return MS::kSuccess;
}

MStatus accept(const LayerCall&) {
    return MS::kSuccess;
}

const FlagTable<LayerAction>& flags() {
    constexpr auto U = MSyntax::kUnsigned;
    constexpr auto L = MSyntax::kLong;
    constexpr auto S = MSyntax::kString;
    constexpr auto B = MSyntax::kBoolean;
    constexpr auto D = MSyntax::kDouble;
    static const FlagTable<LayerAction> table{
        {"-act", "-active", {U}, {nullptr, activate, tellActive}},
        {"-cnt", "-count", {}, {count}},
        {"-add", "-addLayer", {}, {add, nullptr, nullptr, kCannotAdd}},
        {"-ins", "-insert", {L}, {insert, nullptr, nullptr, kCannotInsert}},
        {"-del", "-delete", {U}, {remove}},
        {"-da", "-deleteAll", {}, {removeAll}},
        {"-mv", "-move", {U, L}, {move}},
        {"-mva", "-moveAll", {S}, {moveAll}},
        {kName, "-name", {S}, {}},
        {kNewCamera, "-newCamera", {S}, {}},
        // The long names without a dash are as scripts know them.
        {"-en", "editName", {S, U}, {editLayer<layer_property::kName>}},
        {"-qn", "queryName", {U}, {tellOfLayer<layer_property::kName>}},
        {"-ev", "editVis", {B, U}, {editLayer<layer_property::kVisible>}},
        {"-qv", "queryVis", {U}, {tellOfLayer<layer_property::kVisible>}},
        {"-eo", "editOpacity", {D, U}, {editLayer<layer_property::kOpacity>}},
        {"-qo", "queryOpacity", {U}, {tellOfLayer<layer_property::kOpacity>}},
        {"-es", "editState", {U, U}, {editLayer<layer_property::kState>}},
        {"-qs", "queryState", {U}, {tellOfLayer<layer_property::kState>}},
        {kLayerState, "layerState", {U}, {}},
        {"-irp", "importReelviewPro", {S, S}, {accept}},
    };
    return table;
}

} // namespace

LayerCommand::LayerCommand() = default;
LayerCommand::~LayerCommand() = default;

void* LayerCommand::creator() {
    return new LayerCommand;
}

MSyntax LayerCommand::newSyntax() {
    MSyntax syntax;
    addFlags(syntax, flags());
    syntax.setObjectType(MSyntax::kStringObjects, 1, 1);
    syntax.enableQuery(true);
    syntax.enableEdit(true);
    return syntax;
}

bool LayerCommand::isUndoable() const {
    return edit_ != nullptr;
}

MStatus LayerCommand::doIt(const MArgList& args) {
    MStatus status;
    const MArgDatabase parsed(syntax(), args, &status);
    if (status != MS::kSuccess)
        return status;
    MStringArray objects;
    parsed.getObjects(objects);
    camera_ = objects.length() > 0 ? fromMaya(objects[0]) : QString();
    if (!requireSceneCamera(camera_))
        return MS::kFailure;
    status = parse(parsed);
    if (status != MS::kSuccess || !edit_)
        return status;
    status = run(&Edit::execute);
    if (status == MS::kSuccess && edit_->result() >= 0)
        setResult(edit_->result());
    return status;
}

MStatus LayerCommand::parse(const MArgDatabase& args) {
    const BaseNode* node = activeNode();
    if (node)
        document_ = node->layerManager();
    LayerHandler LayerAction::*mode = &LayerAction::create;
    QString wrong = QStringLiteral("Invalid command parameters");
    if (args.isEdit()) {
        mode = &LayerAction::edit;
        wrong = QStringLiteral("Invalid edit parameter");
    } else if (args.isQuery()) {
        mode = &LayerAction::query;
        wrong = QStringLiteral("Invalid query parameter");
    }
    const auto* row = firstFlag(flags(), args, mode);
    // In a query flags have no arguments, so that nothing can be edited with them.
    if (!row || (args.isEdit() && args.isQuery()))
        return refuse(wrong);
    if (!node)
        return refuse(QString::fromLatin1(row->action.withoutNode));
    return (row->action.*mode)({args, row->shortName, camera_, *node->layerManager(), edit_});
}

MStatus LayerCommand::run(bool (Edit::*verb)(LayerManager&)) {
    const bool there = requireNode(document_.lock().get(), camera_) != nullptr;
    return there && (*edit_.*verb)(*document_.lock()) ? MS::kSuccess : MS::kFailure;
}

MStatus LayerCommand::redoIt() {
    return run(&Edit::redo);
}

MStatus LayerCommand::undoIt() {
    return run(&Edit::undo);
}

} // namespace vellum
