#include "node/BaseNode.h"

#include "document/BaseNodeLayerData.h"
#include "document/Changes.h"
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "node/CameraFit.h"
#include "node/LegacyDraw.h"
#include "node/NodeSearch.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Report.h"
#include "plugin/base/Script.h"

#include <maya/M3dView.h>
#include <maya/MBoundingBox.h>
#include <maya/MDagPath.h>
#include <maya/MFileIO.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPluginData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>

#include <utility>

namespace vellum {

const MTypeId BaseNode::id(kNodeTypeId);
MObject BaseNode::layerDataAttribute;
MObject BaseNode::opacityAttribute;

BaseNode::BaseNode() = default;
BaseNode::~BaseNode() = default;

void* BaseNode::creator() {
    return new BaseNode;
}

MStatus BaseNode::initialize() {
    MFnTypedAttribute typed;
    layerDataAttribute = typed.create("layerData", "ld", BaseNodeLayerData::id);
    typed.setReadable(true);
    typed.setWritable(true);
    typed.setStorable(true);
    typed.setConnectable(false);
    typed.setHidden(true);
    MStatus status = addAttribute(layerDataAttribute);
    if (status != MS::kSuccess)
        return status;

    MFnNumericAttribute numeric;
    opacityAttribute = numeric.create("opacity", "op", MFnNumericData::kFloat, 1.0);
    numeric.setKeyable(true);
    numeric.setStorable(true);
    numeric.setReadable(true);
    numeric.setWritable(true);
    numeric.setHidden(false);
    numeric.setMin(0.0);
    numeric.setMax(1.0);
    return addAttribute(opacityAttribute);
}

BaseNode* BaseNode::fromObject(const MObject& object) {
    MStatus status;
    const MFnDependencyNode node(object, &status);
    if (status != MS::kSuccess || node.typeId() != id)
        return nullptr;
    return static_cast<BaseNode*>(node.userNode());
}

void BaseNode::postConstructor() {
    // A node of a scene being read keeps the document that follows it in the file.
    if (!MFileIO::isOpeningFile() && !MFileIO::isImportingFile()) {
        initializeLayerManager();
        const auto document = layerManager();
        if (document && !hasActiveNode())
            document->setMaster(true);
    }
    lockLocalChannels();
}

void BaseNode::lockLocalChannels() {
    const MFnDependencyNode node(thisMObject());
    for (const char* name : {"localPositionX", "localPositionY", "localPositionZ", "localScaleX",
                             "localScaleY", "localScaleZ"}) {
        MStatus status;
        MPlug plug = node.findPlug(name, true, &status);
        if (status != MS::kSuccess)
            continue;
        plug.setKeyable(false);
        plug.setLocked(true);
        plug.setChannelBox(false);
    }
    // Shown, but not to be selected in the viewport.
    MStatus status;
    MPlug templated = node.findPlug("template", true, &status);
    if (status == MS::kSuccess)
        templated.setBool(true);
}

bool BaseNode::isBounded() const {
    return false;
}

MBoundingBox BaseNode::boundingBox() const {
    return MBoundingBox(MPoint::origin, MPoint::origin);
}

bool BaseNode::excludeAsLocator() const {
    return false;
}

bool BaseNode::isTransparent() const {
    return true;
}

bool BaseNode::drawLast() const {
    return true;
}

void BaseNode::initializeLayerManager() {
    MStatus status;
    MPlug plug(thisMObject(), layerDataAttribute);
    if (plug.isNull(&status)) {
        report::error(QStringLiteral("Failed to get layer data plug"));
        report::error(QStringLiteral("Failed to initialize layer manager"));
        return;
    }
    // The plug takes the data over.
    auto* data = static_cast<BaseNodeLayerData*>(BaseNodeLayerData::creator());
    data->createLayerManager();
    if (plug.setMPxData(data) != MS::kSuccess) {
        report::error(QStringLiteral("Failed to set layer data"));
        report::error(QStringLiteral("Failed to initialize layer manager"));
    }
}

std::shared_ptr<LayerManager> BaseNode::layerManager() const {
    const MPlug plug(thisMObject(), layerDataAttribute);
    if (plug.isNull()) {
        report::error(QStringLiteral("Failed to get layer data plug"));
        return {};
    }
    MObject object;
    if (plug.getValue(object) != MS::kSuccess) {
        // Every view asks at every refresh.
        if (!std::exchange(missingDataReported_, true))
            report::error(QStringLiteral("Failed to get layer data plug as object"));
        return {};
    }
    missingDataReported_ = false;
    MStatus status;
    const MFnPluginData holder(object, &status);
    if (status != MS::kSuccess)
        return {};
    const auto* data = dynamic_cast<const BaseNodeLayerData*>(holder.constData());
    auto document = data ? data->layerManager() : nullptr;
    // A copy of the node may share the document: the first one keeps it as long as it is there.
    if (document && !document->holder().isValid())
        document->setHolder(MObjectHandle(thisMObject()));
    return document;
}

float BaseNode::opacity() const {
    return MPlug(thisMObject(), opacityAttribute).asFloat();
}

const QImage* BaseNode::frameImageForCamera(const QString& camera) const {
    const auto document = layerManager();
    return document ? document->compositeCamera(camera) : nullptr;
}

void BaseNode::forceRedraw() {
    if (const auto document = layerManager())
        tell(Change::View, document.get());
}

void BaseNode::redraw() {
    const MFnDagNode shape(thisMObject());
    if (shape.parentCount() == 0)
        return;
    MStatus status;
    MPlug visibility = MFnDependencyNode(shape.parent(0)).findPlug("visibility", true, &status);
    if (status != MS::kSuccess)
        return;
    // Setting a plug makes Maya ask to save, even to the value it had: looking must not.
    const bool wasModified = script::executeInt(command::isSceneModified()).value_or(1) != 0;
    if (visibility.setBool(visibility.asBool()) != MS::kSuccess)
        M3dView::scheduleRefreshAllViews(); // it is locked or driven
    if (!wasModified)
        script::execute(command::markSceneModified(false));
}

void BaseNode::clearTransformDisplay() {
    if (!transformDisplay_)
        return;
    transformDisplay_.reset();
    forceRedraw();
}

void BaseNode::draw(M3dView& view, const MDagPath&, M3dView::DisplayStyle, M3dView::DisplayStatus) {
    MDagPath camera;
    if (view.getCamera(camera) != MS::kSuccess)
        return;
    const QImage* image = frameImageForCamera(cameraNameOfPath(camera));
    if (!image || !fitForView(view, fit_))
        return;
    LegacyDraw::Outline outline;
    const bool outlined =
        transformDisplay_ && transformDisplay_->isShown(cameraNameOfPath(camera), currentIntTime());
    if (outlined)
        outline = transformDisplay_->cornersIn(fit_);
    legacy_.draw(view, fit_, *image, opacity(), outlined ? &outline : nullptr);
}

} // namespace vellum
