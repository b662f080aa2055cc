#include "node/BaseNodeDrawOverride.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/CameraFit.h"
#include "node/DrawCompat.h"
#include "node/NodeSearch.h"

#include <QRect>

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MFrameContext.h>
#include <maya/MStateManager.h>
#include <maya/MUIDrawManager.h>
#include <maya/MVector.h>
#include <maya/MViewport2Renderer.h>

#include <algorithm>

namespace vellum {

namespace {

/// All drawing is done in addUIDrawables.
void drawNothing(const MHWRender::MDrawContext&, const MUserData*) {
}

MString nextTextureName() {
    static int counter = 0;
    MString name("vlpVP2Texture");
    name += counter++;
    return name;
}

MHWRender::MTextureManager* textureManager(bool initializeRenderer) {
    const MHWRender::MRenderer* renderer = MHWRender::MRenderer::theRenderer(initializeRenderer);
    return renderer ? renderer->getTextureManager() : nullptr;
}

MHWRender::MTextureUpdateRegion regionOf(const QRect& rect) {
    MHWRender::MTextureUpdateRegion region;
    region.fXRangeMin = static_cast<unsigned>(rect.left());
    region.fXRangeMax = static_cast<unsigned>(rect.right() + 1);
    region.fYRangeMin = static_cast<unsigned>(rect.top());
    region.fYRangeMax = static_cast<unsigned>(rect.bottom() + 1);
    region.fZRangeMin = 0;
    region.fZRangeMax = 1;
    return region;
}

} // namespace

MHWRender::MPxDrawOverride* BaseNodeDrawOverride::creator(const MObject& object) {
    return new BaseNodeDrawOverride(object);
}

BaseNodeDrawOverride::BaseNodeDrawOverride(const MObject& object)
    : MPxDrawOverride(object, drawNothing, true), textureName_(nextTextureName()) {
}

BaseNodeDrawOverride::~BaseNodeDrawOverride() {
    // At exit the renderer may be gone, and the texture with it.
    MHWRender::MTextureManager* manager = texture_ ? textureManager(false) : nullptr;
    if (manager)
        manager->releaseTexture(texture_);
}

MHWRender::DrawAPI BaseNodeDrawOverride::supportedDrawAPIs() const {
    return static_cast<MHWRender::DrawAPI>(MHWRender::kOpenGL | MHWRender::kDirectX11 |
                                           MHWRender::kOpenGLCoreProfile);
}

// The picture lies over the view, wherever the node is: it must never be culled.
bool BaseNodeDrawOverride::isBounded(const MDagPath&, const MDagPath&) const {
    return false;
}

bool BaseNodeDrawOverride::hasUIDrawables() const {
    return true;
}

MUserData* BaseNodeDrawOverride::prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                                                const MHWRender::MFrameContext& frameContext,
                                                MUserData* oldData) {
    auto* data = dynamic_cast<BaseNodeUserData*>(oldData);
    if (!data)
        data = new BaseNodeUserData;
    BaseNode* node = BaseNode::fromObject(objPath.node());
    if (!node)
        return data;

    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    frameContext.getViewportDimensions(x, y, width, height);
    GateFit fit = fitForCamera(cameraPath, width, height);
    if (fit.pan) {
        double panX = 0.0;
        double panY = 0.0;
        frameContext.worldToViewport(pannedCentre(cameraPath), panX, panY);
        compensatePan(fit, panX, panY);
    }
    node->setGateFit(fit);

    const auto document = node->layerManager();
    data->document = document;
    data->camera = cameraNameOfPath(cameraPath);
    data->needsRedraw = document && document->needsRedraw(data->camera);
    data->image = document ? document->compositeCamera(data->camera) : nullptr;
    data->opacity = node->opacity();
    data->centre = MPoint(fit.originX, fit.originY);
    data->halfSize = fit.halfSize;
    const auto& outline = node->transformDisplay();
    data->showOutline = outline && outline->isShown(data->camera, currentIntTime());
    if (data->showOutline) {
        const auto corners = outline->cornersIn(fit);
        std::transform(corners.begin(), corners.end(), data->outline.begin(),
                       [](const QPoint& corner) { return MPoint(corner.x(), corner.y()); });
    }
    return data;
}

void BaseNodeDrawOverride::addUIDrawables(const MDagPath&, MHWRender::MUIDrawManager& drawManager,
                                          const MHWRender::MFrameContext&, const MUserData* data) {
    const auto* shown = dynamic_cast<const BaseNodeUserData*>(data);
    const auto document = shown ? shown->document.lock() : nullptr;
    MHWRender::MTextureManager* manager = textureManager(true);
    if (!document || !shown->image || !manager || !updateTexture(*manager, document, *shown))
        return;

    drawManager.beginDrawable(MHWRender::MUIDrawManager::kAutomatic, 0);
    setUncutTexture(drawManager, texture_);
    drawManager.setTextureSampler(MHWRender::MSamplerState::kMinMagMipLinear,
                                  MHWRender::MSamplerState::kTexClamp);
    drawManager.setTextureMask(MHWRender::MBlendState::kRGBAChannels);
    drawManager.setColor(MColor(1.0F, 1.0F, 1.0F, shown->opacity));
    drawManager.rect2d(shown->centre, MVector(0.0, 1.0, 0.0), shown->halfSize, shown->halfSize,
                       true);
    if (shown->showOutline) {
        setUncutTexture(drawManager, nullptr);
        drawManager.setLineWidth(1.0F);
        drawManager.setColor(MColor(1.0F, 1.0F, 0.0F, 1.0F));
        for (std::size_t i = 0; i < 4; ++i)
            drawManager.line2d(shown->outline[i], shown->outline[(i + 1) % 4]);
    }
    drawManager.endDrawable();
}

bool BaseNodeDrawOverride::updateTexture(MHWRender::MTextureManager& manager,
                                         const std::shared_ptr<LayerManager>& document,
                                         const BaseNodeUserData& data) {
    const QImage& image = *data.image;
    const quint64 version = document->compositeVersion(data.camera);
    if (!texture_) {
        MHWRender::MTextureDescription description;
        description.setToDefault2DTexture();
        description.fWidth = static_cast<unsigned>(image.width());
        description.fHeight = static_cast<unsigned>(image.height());
        description.fDepth = 1;
        description.fArraySlices = 1;
        description.fBytesPerRow = static_cast<unsigned>(image.bytesPerLine());
        description.fBytesPerSlice = static_cast<unsigned>(image.sizeInBytes());
        description.fFormat = MHWRender::kR8G8B8A8_UNORM;
        description.fTextureType = MHWRender::kImage2D;
        texture_ = manager.acquireTexture(textureName_, description, image.constBits(), true);
        if (!texture_)
            return false;
    } else {
        // Panels with different cameras share the texture: it is filled anew for each.
        const bool samePicture =
            uploadedDocument_.lock() == document && uploadedCamera_ == data.camera;
        const QRect changed = samePicture
                                  ? document->compositeChangedSince(data.camera, uploadedVersion_)
                                  : image.rect();
        if (changed.isEmpty())
            return true;
        const MHWRender::MTextureUpdateRegion region = regionOf(changed);
        const uchar* first = image.constScanLine(changed.top()) + changed.left() * 4;
        const auto pitch = static_cast<unsigned>(image.bytesPerLine());
        // A renderer that takes no part of a texture may still take the whole.
        if (texture_->update(first, true, pitch, &region) != MS::kSuccess &&
            texture_->update(image.constBits(), true, pitch) != MS::kSuccess)
            return false;
    }
    uploadedDocument_ = document;
    uploadedCamera_ = data.camera;
    uploadedVersion_ = version;
    return true;
}

} // namespace vellum
