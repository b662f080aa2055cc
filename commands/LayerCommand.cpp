#include "commands/LayerCommand.h"

#include "commands/Arguments.h"
#include "document/LayerManager.h"
#include "document/edits/Edit.h"
#include "document/edits/LayerEdits.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/ActiveNode.h"

#include <maya/MArgDatabase.h>
#include <maya/MStringArray.h>

namespace vellum {

namespace {

/// State of a new layer, as far as one was given.
std::optional<LayerState> stateArgument(const MArgDatabase& args) {
    if (!args.isFlagSet("-ls"))
        return std::nullopt;
    return layerStateOf(indexArgument(args, "-ls", 0)).value_or(LayerState::Animated);
}

/// The flags of a property; both take the layer's index, the first one the value before it.
struct PropertyFlags {
    const char* edit;
    const char* query;
    const LayerProperty& property;
};

constexpr PropertyFlags kProperties[] = {
    {"-en", "-qn", layer_property::kName},
    {"-ev", "-qv", layer_property::kVisible},
    {"-eo", "-qo", layer_property::kOpacity},
    {"-es", "-qs", layer_property::kState},
};

/// Null when the flag is none of a property.
const LayerProperty* propertyOf(const char* flag) {
    for (const PropertyFlags& row : kProperties) {
        if (is(flag, row.edit) || is(flag, row.query))
            return &row.property;
    }
    return nullptr;
}

/// The flag's first argument, of the kind that the property holds.
class ReadValue {
public:
    ReadValue(const MArgDatabase& args, const char* flag) : args_(args), flag_(flag) {}

    void operator()(QString& value) const { value = textArgument(args_, flag_); }
    void operator()(bool& value) const { value = args_.flagArgumentBool(flag_, 0); }
    void operator()(float& value) const {
        value = static_cast<float>(args_.flagArgumentDouble(flag_, 0));
    }
    void operator()(unsigned& value) const { args_.getFlagArgument(flag_, 0, value); }

private:
    const MArgDatabase& args_;
    const char* flag_;
};

class ReturnValue {
public:
    void operator()(const QString& value) const { MPxCommand::setResult(toMaya(value)); }
    void operator()(bool value) const { MPxCommand::setResult(value); }
    void operator()(float value) const { MPxCommand::setResult(static_cast<double>(value)); }
    void operator()(unsigned value) const { MPxCommand::setResult(static_cast<int>(value)); }
};

} // namespace

LayerCommand::LayerCommand() = default;
LayerCommand::~LayerCommand() = default;

void* LayerCommand::creator() {
    return new LayerCommand;
}

MSyntax LayerCommand::newSyntax() {
    constexpr auto U = MSyntax::kUnsigned;
    MSyntax syntax;
    syntax.addFlag("-act", "-active", U);
    syntax.addFlag("-cnt", "-count");
    syntax.addFlag("-add", "-addLayer");
    syntax.addFlag("-ins", "-insert", MSyntax::kLong);
    syntax.addFlag("-del", "-delete", U);
    syntax.addFlag("-da", "-deleteAll");
    syntax.addFlag("-mv", "-move", U, MSyntax::kLong);
    syntax.addFlag("-mva", "-moveAll", MSyntax::kString);
    syntax.addFlag("-n", "-name", MSyntax::kString);
    syntax.addFlag("-nc", "-newCamera", MSyntax::kString);
    // The long names without a dash are as scripts know them.
    syntax.addFlag("-en", "editName", MSyntax::kString, U);
    syntax.addFlag("-qn", "queryName", U);
    syntax.addFlag("-ev", "editVis", MSyntax::kBoolean, U);
    syntax.addFlag("-qv", "queryVis", U);
    syntax.addFlag("-eo", "editOpacity", MSyntax::kDouble, U);
    syntax.addFlag("-qo", "queryOpacity", U);
    syntax.addFlag("-es", "editState", U, U);
    syntax.addFlag("-qs", "queryState", U);
    syntax.addFlag("-ls", "layerState", U);
    syntax.addFlag("-irp", "importReelviewPro", MSyntax::kString, MSyntax::kString);
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
    if (!cameraExists(camera_))
        return refuse(QStringLiteral("Camera does not exist: %1").arg(camera_));
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
    if (args.isEdit() || args.isQuery())
        return runInMode(args, node);
    if (args.isFlagSet("-add") && !args.isFlagSet("-cnt") && !node)
        return refuse(QStringLiteral("Failed to add layer. Node does not exist."));
    if (args.isFlagSet("-ins") && !args.isFlagSet("-cnt") && !node)
        return refuse(QStringLiteral("Failed to insert layer. Node does not exist."));
    // The first flag in this order decides.
    for (const char* flag : {"-cnt", "-add", "-ins", "-del", "-da", "-mv", "-mva", "-en", "-qn",
                             "-ev", "-qv", "-eo", "-qo", "-es", "-qs", "-irp"}) {
        if (!args.isFlagSet(flag))
            continue;
        if (!node)
            return refuse(QStringLiteral("Node not found"));
        if (is(flag, "-irp"))
            return MS::kSuccess;
        if (is(flag, "-cnt") || flag[1] == 'q')
            return query(args, flag, *node);
        if (propertyOf(flag))
            return makePropertyEdit(args, flag, *node);
        return makeStructureEdit(args, flag);
    }
    return refuse(QStringLiteral("Invalid command parameters"));
}

MStatus LayerCommand::runInMode(const MArgDatabase& args, const BaseNode* node) {
    // In a query the flag has no argument, so that nothing can be edited with it.
    if (!args.isFlagSet("-act") || (args.isEdit() && args.isQuery()))
        return refuse(args.isEdit() ? QStringLiteral("Invalid edit parameter")
                                    : QStringLiteral("Invalid query parameter"));
    if (!node)
        return refuse(QStringLiteral("Node not found"));
    if (args.isEdit())
        edit_ = layer_edit::activate(camera_, indexArgument(args, "-act", 0));
    else
        setResult(node->layerManager()->activeLayerIndex(camera_));
    return MS::kSuccess;
}

MStatus LayerCommand::makeStructureEdit(const MArgDatabase& args, const char* flag) {
    if (is(flag, "-add"))
        edit_ = layer_edit::add(camera_, textArgument(args, "-n"), stateArgument(args));
    else if (is(flag, "-ins"))
        edit_ = layer_edit::insert(camera_, signedArgument(args, flag, 0), textArgument(args, "-n"),
                                   stateArgument(args));
    else if (is(flag, "-del"))
        edit_ = layer_edit::remove(camera_, indexArgument(args, flag, 0));
    else if (is(flag, "-da"))
        edit_ = layer_edit::removeAll(camera_);
    else if (is(flag, "-mv") && args.isFlagSet("-nc"))
        edit_ = layer_edit::moveToCamera(camera_, indexArgument(args, flag, 0),
                                         textArgument(args, "-nc"), signedArgument(args, flag, 1));
    else if (is(flag, "-mv"))
        edit_ =
            layer_edit::move(camera_, indexArgument(args, flag, 0), signedArgument(args, flag, 1));
    else
        edit_ = layer_edit::moveAll(camera_, textArgument(args, flag));
    return MS::kSuccess;
}

bool LayerCommand::requireLayer(const BaseNode& node, unsigned index) const {
    if (node.layerManager()->isValidLayer(camera_, static_cast<int>(index)))
        return true;
    report::error(QStringLiteral("Layer does not exist for camera (index): %1 (%2)")
                      .arg(camera_, QString::number(index)));
    return false;
}

MStatus LayerCommand::makePropertyEdit(const MArgDatabase& args, const char* flag,
                                       const BaseNode& node) {
    unsigned layer = 0;
    args.getFlagArgument(flag, 1, layer);
    if (!requireLayer(node, layer))
        return MS::kFailure;
    const int index = static_cast<int>(layer);
    const LayerProperty& property = *propertyOf(flag);
    LayerValue value = property.get(*node.layerManager()->layer(camera_, index));
    std::visit(ReadValue(args, flag), value);
    const auto* number = std::get_if<unsigned>(&value);
    if (number && *number > property.largest)
        return refuse(QString::fromLatin1(property.refusal).arg(*number));
    edit_ = layer_edit::setProperty(camera_, index, property, value);
    return MS::kSuccess;
}

MStatus LayerCommand::query(const MArgDatabase& args, const char* flag, const BaseNode& node) {
    const auto document = node.layerManager();
    if (is(flag, "-cnt")) {
        setResult(document->cameraLayerCount(camera_));
        return MS::kSuccess;
    }
    unsigned number = 0;
    args.getFlagArgument(flag, 0, number);
    if (!requireLayer(node, number))
        return MS::kFailure;
    const Layer& layer = *document->layer(camera_, static_cast<int>(number));
    std::visit(ReturnValue(), propertyOf(flag)->get(layer));
    return MS::kSuccess;
}

MStatus LayerCommand::run(bool (Edit::*verb)(LayerManager&)) {
    const bool there = nodeForUndo(document_.lock().get(), camera_) != nullptr;
    return there && (*edit_.*verb)(*document_.lock()) ? MS::kSuccess : MS::kFailure;
}

MStatus LayerCommand::redoIt() {
    return run(&Edit::redo);
}

MStatus LayerCommand::undoIt() {
    return run(&Edit::undo);
}

} // namespace vellum
