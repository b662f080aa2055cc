// The locator that owns one drawing of the scene: its "layerData" attribute holds the document.
// A scene normally has one, "vellumShape" under the transform "vellum". Main thread only.
#pragma once

#include "document/edits/FrameClipboard.h"
#include "node/GateFit.h"
#include "node/LegacyDraw.h"
#include "node/TransformDisplay.h"

#include <QImage>
#include <QString>

#include <maya/MPxLocatorNode.h>
#include <maya/MTypeId.h>

#include <memory>
#include <optional>

namespace vellum {

class LayerManager;

class BaseNode : public MPxLocatorNode {
public:
    static const MTypeId id; ///< 0x11A886

    BaseNode();
    ~BaseNode() override;

    BaseNode(const BaseNode&) = delete;
    BaseNode& operator=(const BaseNode&) = delete;

    static void* creator();
    /// Makes the two attributes.
    static MStatus initialize();

    /// The node behind an object or a path, null when it is no BaseNode. The pointer is Maya's and
    /// only good until control returns to Maya.
    static BaseNode* fromObject(const MObject& object);

    void postConstructor() override;
    void draw(M3dView& view, const MDagPath& path, M3dView::DisplayStyle style,
              M3dView::DisplayStatus status) override;
    bool isBounded() const override;
    MBoundingBox boundingBox() const override;
    bool excludeAsLocator() const override;
    bool isTransparent() const override;
    bool drawLast() const override;

    /// The document; empty when the node has none, as after a scene file without its data, which
    /// is reported once. Callers then do nothing.
    std::shared_ptr<LayerManager> layerManager() const;

    /// Gives the node a fresh document.
    void initializeLayerManager();

    float opacity() const; ///< 0..1

    /// The picture of a camera at the current time, 1024 x 1024 RGBA8888, straight alpha; null when
    /// the document has nothing for it. Owned by the document, changes with it.
    const QImage* frameImageForCamera(const QString& camera) const;

    /// Tells that the node is to be drawn anew though its drawing is what it was.
    void forceRedraw();

    /// For who listens to changes: writes the parent transform's visibility back with its own
    /// value. Nothing visible changes, but Maya redraws the node. The scene stays as saved or
    /// unsaved as it was.
    void redraw();

    /// Drawings copied from the layers of this node.
    const std::shared_ptr<FrameClipboard>& clipboard() const { return clipboard_; }

    /// Fit of the last draw in any view. Where the square lies in one particular view is
    /// fitForView().
    const GateFit& gateFit() const { return fit_; }
    void setGateFit(const GateFit& fit) { fit_ = fit; }

    /// Outline of what the transform tool works on.
    const std::optional<TransformDisplay>& transformDisplay() const { return transformDisplay_; }
    void setTransformDisplay(const TransformDisplay& display) { transformDisplay_ = display; }
    void clearTransformDisplay();

    static MObject layerDataAttribute;
    static MObject opacityAttribute;

private:
    void lockLocalChannels();

    const std::shared_ptr<FrameClipboard> clipboard_ = std::make_shared<FrameClipboard>();
    GateFit fit_;
    std::optional<TransformDisplay> transformDisplay_;
    LegacyDraw legacy_;
    mutable bool missingDataReported_ = false;
};

} // namespace vellum
