// The renderer itself, the draw registry, the override's defaults and the render settings.

#include "foundation/Faults.h"
#include "render/DrawOverrides.h"
#include "render/GlOffscreen.h"
#include "render/TextureStore.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MRenderUtil.h>
#include <maya/MSelectionList.h>

MUserData::~MUserData() = default;
const char* MUserData::className() {
    return "MUserData";
}

namespace MHWRender {

MRenderer* MRenderer::theRenderer(bool) {
    static MRenderer renderer;
    const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return application && !QCoreApplication::closingDown() ? &renderer : nullptr;
}

DrawAPI MRenderer::drawAPI() const {
    return kOpenGL;
}
bool MRenderer::drawAPIIsOpenGL() const {
    return true;
}

MTextureManager* MRenderer::getTextureManager() const {
    return &host::TextureStore::instance().manager();
}

void MRenderer::setGeometryDrawDirty(MObject obj, bool) {
    host::DrawOverrides::instance().setDirty(obj);
}

const char* MRenderer::className() {
    return "MRenderer";
}

MStatus MDrawRegistry::registerDrawOverrideCreator(const MString& drawClassification,
                                                   const MString& registrantId,
                                                   DrawOverrideCreator creator) {
    if (host::faults::due("registerDrawOverrideCreator", registrantId.asChar()))
        return MS::kFailure;
    return host::DrawOverrides::instance().add(drawClassification.asChar(), registrantId.asChar(),
                                               creator);
}

MStatus MDrawRegistry::deregisterDrawOverrideCreator(const MString& drawClassification,
                                                     const MString& registrantId) {
    if (host::faults::due("deregisterDrawOverrideCreator", registrantId.asChar()))
        return MS::kFailure;
    return host::DrawOverrides::instance().remove(drawClassification.asChar(),
                                                  registrantId.asChar());
}

const char* MDrawRegistry::className() {
    return "MDrawRegistry";
}

MPxDrawOverride::MPxDrawOverride(const MObject&, GeometryDrawOverrideCb callback,
                                 bool isAlwaysDirty)
    : callback_(callback), isAlwaysDirty_(isAlwaysDirty) {
}

MPxDrawOverride::~MPxDrawOverride() = default;

DrawAPI MPxDrawOverride::supportedDrawAPIs() const {
    return kOpenGL;
}

MMatrix MPxDrawOverride::transform(const MDagPath& objPath, const MDagPath&) const {
    return objPath.inclusiveMatrix();
}

MBoundingBox MPxDrawOverride::boundingBox(const MDagPath&, const MDagPath&) const {
    return MBoundingBox();
}

bool MPxDrawOverride::isBounded(const MDagPath&, const MDagPath&) const {
    return true;
}
bool MPxDrawOverride::disableInternalBoundingBoxDraw() const {
    return false;
}
bool MPxDrawOverride::hasUIDrawables() const {
    return false;
}
bool MPxDrawOverride::isTransparent() const {
    return false;
}
bool MPxDrawOverride::excludedFromPostEffects() const {
    return true;
}
void MPxDrawOverride::updateSelectionGranularity(const MDagPath&, MSelectionContext&) {
}
void MPxDrawOverride::addUIDrawables(const MDagPath&, MUIDrawManager&, const MFrameContext&,
                                     const MUserData*) {
}

const char* MPxDrawOverride::className() {
    return "MPxDrawOverride";
}

} // namespace MHWRender

MCommonRenderSettingsData::MCommonRenderSettingsData()
    : width(960), height(540), pixelAspectRatio(1), deviceAspectRatio(960.0f / 540.0f),
      dotPerInch(72) {
}
MCommonRenderSettingsData::~MCommonRenderSettingsData() = default;
const char* MCommonRenderSettingsData::className() {
    return "MCommonRenderSettingsData";
}

void MRenderUtil::getCommonRenderSettings(MCommonRenderSettingsData& rgData) {
    rgData = MCommonRenderSettingsData();
    MSelectionList list;
    MObject node;
    if (!list.add("defaultResolution") || !list.getDependNode(0, node))
        return;
    const MFnDependencyNode resolution(node);
    const auto read = [&resolution](const char* name, double fallback) {
        MStatus status;
        const MPlug plug = resolution.findPlug(name, true, &status);
        return status && !plug.isNull() ? plug.asDouble() : fallback;
    };
    rgData.width = unsigned(std::max(1.0, read("width", rgData.width)));
    rgData.height = unsigned(std::max(1.0, read("height", rgData.height)));
    rgData.deviceAspectRatio =
        float(read("deviceAspectRatio", double(rgData.width) / rgData.height));
    rgData.pixelAspectRatio = rgData.deviceAspectRatio * float(rgData.height) / float(rgData.width);
    rgData.dotPerInch = float(read("dotsPerInch", rgData.dotPerInch));
}

const char* MRenderUtil::className() {
    return "MRenderUtil";
}
