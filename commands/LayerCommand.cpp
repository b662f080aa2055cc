#include "commands/LayerCommand.h"

#include "commands/FlagTable.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
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
    std::unique_ptr<LayerEdit>& edit; ///< left empty by what changes nothing
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

/// The value stands before the layer.
template <auto make> MStatus editLayer(const LayerCall& call) {
    const auto index = layerArgument(call, 1);
    if (index)
        call.edit = make(call, *index);
    return call.edit ? MS::kSuccess : MS::kFailure;
}

using Edit = std::unique_ptr<LayerEdit>;

Edit renamed(const LayerCall& call, int index) {
    return layer_edit::rename(call.camera, index, stringArgument(call.args, call.flag, 0));
}

Edit shown(const LayerCall& call, int index) {
    return layer_edit::setVisible(call.camera, index, boolArgument(call.args, call.flag, 0));
}

Edit faded(const LayerCall& call, int index) {
    const auto opacity = static_cast<float>(doubleArgument(call.args, call.flag, 0));
    return layer_edit::setOpacity(call.camera, index, opacity);
}

Edit inState(const LayerCall& call, int index) {
    const unsigned state = unsignedArgument(call.args, call.flag, 0);
    if (state <= 2)
        return layer_edit::setState(call.camera, index, static_cast<int>(state));
    report::error(QStringLiteral("Invalid state value: %1").arg(state));
    return nullptr;
}

MString asResult(const QString& value) {
    return toMaya(value);
}

bool asResult(bool value) {
    return value;
}

double asResult(float value) {
    return static_cast<double>(value);
}

int asResult(int value) {
    return value;
}

template <auto value> MStatus tellOfLayer(const LayerCall& call) {
    const auto index = layerArgument(call, 0);
    if (!index)
        return MS::kFailure;
    MPxCommand::setResult(asResult((call.document.*value)(call.camera, *index)));
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
    using Layers = LayerManager;
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
        {"-en", "editName", {S, U}, {editLayer<renamed>}},
        {"-qn", "queryName", {U}, {tellOfLayer<&Layers::layerName>}},
        {"-ev", "editVis", {B, U}, {editLayer<shown>}},
        {"-qv", "queryVis", {U}, {tellOfLayer<&Layers::layerVisible>}},
        {"-eo", "editOpacity", {D, U}, {editLayer<faded>}},
        {"-qo", "queryOpacity", {U}, {tellOfLayer<&Layers::layerOpacity>}},
        {"-es", "editState", {U, U}, {editLayer<inState>}},
        {"-qs", "queryState", {U}, {tellOfLayer<&Layers::layerState>}},
        {kLayerState, "layerState", {U}, {}},
        {"-irp", "importReelviewPro", {S, S}, {accept}},
    };
    return table;
}

} // namespace

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
    status = run(parsed);
    if (status != MS::kSuccess || !edit_)
        return status;
    status = redoIt();
    if (status == MS::kSuccess && edit_->result() >= 0)
        setResult(edit_->result());
    return status;
}

MStatus LayerCommand::run(const MArgDatabase& args) {
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

MStatus LayerCommand::redoIt() {
    BaseNode* node = nodeForUndo(document_.lock().get(), camera_);
    if (!node || !edit_->apply(*node->layerManager()))
        return MS::kFailure;
    node->drawingChanged();
    return MS::kSuccess;
}

MStatus LayerCommand::undoIt() {
    BaseNode* node = nodeForUndo(document_.lock().get(), camera_);
    if (!node || !edit_->revert(*node->layerManager()))
        return MS::kFailure;
    node->drawingChanged();
    return MS::kSuccess;
}

} // namespace vellum
