#pragma once

#include <maya/MColor.h>
#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MVector.h>

class QWidget;

namespace host {
class View;
} // namespace host

/// Handle of a 3D view. It does not keep the view alive: when its panel is gone, calls fail.
/// View coordinates are device pixels with the origin at the bottom left.
class M3dView {
public:
    enum DisplayStyle { kBoundingBox, kFlatShaded, kGouraudShaded, kWireFrame, kPoints };
    enum DisplayStatus {
        kActive,
        kLive,
        kDormant,
        kInvisible,
        kHilite,
        kTemplate,
        kActiveTemplate,
        kActiveComponent,
        kLead,
        kIntermediateObject,
        kActiveAffected,
        kNoStatus
    };
    enum RendererName {
        kDefaultQualityRenderer,
        kHighQualityRenderer,
        kViewport2Renderer,
        kExternalRenderer
    };
    enum LineStipplePattern { kStippleNone, kStippleDashed };

    M3dView();
    virtual ~M3dView();

    /// The view with the focus. Fails when there is none, as in batch.
    static M3dView active3dView(MStatus* ReturnStatus = NULL);
    static unsigned int numberOf3dViews();
    static MStatus get3dView(const unsigned int index, M3dView& view);
    static MStatus getM3dViewFromModelPanel(const MString& modelPaneName, M3dView& view);
    static MStatus getM3dViewFromModelEditor(const MString& modelPaneName, M3dView& view);
    static MStatus scheduleRefreshAllViews();

    /// The Qt widget shown for the view: logical pixels, origin at the top left.
    QWidget* widget(MStatus* ReturnStatus = NULL) const;
    int portWidth(MStatus* ReturnStatus = NULL) const;
    int portHeight(MStatus* ReturnStatus = NULL) const;
    MStatus getScreenPosition(int& x, int& y) const;
    bool isVisible(MStatus* ReturnStatus = NULL) const;

    /// The path of the camera shape.
    MStatus getCamera(MDagPath& camera) const;
    MStatus setCamera(MDagPath& camera);

    RendererName getRendererName(MStatus* ReturnStatus = NULL) const;
    MString rendererString(MStatus* ReturnStatus = NULL) const;

    MStatus beginGL();
    MStatus endGL();
    MStatus beginXorDrawing(bool drawOrthographic = true, bool disableDepthTesting = true,
                            float lineWidth = 1.0f,
                            LineStipplePattern stipplePattern = kStippleNone,
                            const MColor& lineColor = MColor(1, 1, 1));
    MStatus endXorDrawing();

    /// all: every view instead of this one. force: now instead of when the program is idle.
    MStatus refresh(bool all = false, bool force = false);
    MStatus refresh(bool all, bool force, bool offscreen);
    MStatus scheduleRefresh();

    MStatus modelViewMatrix(MMatrix& modelViewMatrix) const;
    MStatus projectionMatrix(MMatrix& projectionMatrix) const;

    MStatus viewToWorld(short x_pos, short y_pos, MPoint& worldPt, MVector& worldVector) const;
    MStatus viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt, MPoint& farClipPt) const;
    /// False when the point is clipped; the coordinates are set all the same.
    bool worldToView(const MPoint& worldPt, short& x_pos, short& y_pos,
                     MStatus* ReturnStatus = NULL) const;

    static const char* className();

private:
    explicit M3dView(int id) : id_(id) {}

    int id_ = 0; ///< 0 is no view; the host never uses a number twice.
    friend class host::View;
};
