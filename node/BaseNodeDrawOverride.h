// Draws the picture of the view's camera over Viewport 2.0. Main thread only.
#pragma once

#include "node/UserDataCompat.h"

#include <QImage>
#include <QString>

#include <maya/MPoint.h>
#include <maya/MPxDrawOverride.h>
#include <maya/MString.h>
#include <maya/MTextureManager.h>

#include <array>
#include <memory>

namespace vellum {

class LayerManager;

/// What one panel shows in one refresh, carried from prepareForDraw to addUIDrawables. It may
/// outlive node and document: the image is only good while the document lives.
class BaseNodeUserData : public KeptUserData {
public:
    std::weak_ptr<LayerManager> document;
    const QImage* image = nullptr; ///< owned by the document; null: draw nothing
    QString camera;
    float opacity = 1.0F;
    bool needsRedraw = false; ///< the picture had changed since it was last shown anywhere
    MPoint centre;            ///< device pixels of the port, origin at the bottom left
    float halfSize = 0.0F;    ///< device pixels
    bool showOutline = false;
    std::array<MPoint, 4> outline;
};

class BaseNodeDrawOverride : public MHWRender::MPxDrawOverride {
public:
    static MHWRender::MPxDrawOverride* creator(const MObject& object);

    ~BaseNodeDrawOverride() override;

    MHWRender::DrawAPI supportedDrawAPIs() const override;
    bool isBounded(const MDagPath& objPath, const MDagPath& cameraPath) const override;
    bool hasUIDrawables() const override;
    MUserData* prepareForDraw(const MDagPath& objPath, const MDagPath& cameraPath,
                              const MHWRender::MFrameContext& frameContext,
                              MUserData* oldData) override;
    void addUIDrawables(const MDagPath& objPath, MHWRender::MUIDrawManager& drawManager,
                        const MHWRender::MFrameContext& frameContext,
                        const MUserData* data) override;

private:
    explicit BaseNodeDrawOverride(const MObject& object);

    bool updateTexture(MHWRender::MTextureManager& manager,
                       const std::shared_ptr<LayerManager>& document, const BaseNodeUserData& data);

    MString textureName_; ///< the texture manager caches by name: one name for each override
    MHWRender::MTexture* texture_ = nullptr;

    // What the texture holds.
    std::weak_ptr<LayerManager> uploadedDocument_;
    QString uploadedCamera_;
    quint64 uploadedVersion_ = 0;
};

} // namespace vellum
