#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MVector.h>

#include <memory>

namespace host {
struct Frame;
class FrameAccess;
} // namespace host

namespace MHWRender {

/// What holds for one refresh of one view: camera, matrices, size.
class MFrameContext {
public:
    enum MatrixType {
        kWorldMtx,
        kWorldTransposeMtx,
        kWorldInverseMtx,
        kWorldTranspInverseMtx,
        kViewMtx,
        kViewTransposeMtx,
        kViewInverseMtx,
        kViewTranspInverseMtx,
        kProjectionMtx,
        kProjectionTranposeMtx,
        kProjectionInverseMtx,
        kProjectionTranspInverseMtx,
        kViewProjMtx,
        kViewProjTranposeMtx,
        kViewProjInverseMtx,
        kViewProjTranspInverseMtx,
        kWorldViewMtx,
        kWorldViewTransposeMtx,
        kWorldViewInverseMtx,
        kWorldViewTranspInverseMtx,
        kWorldViewProjMtx,
        kWorldViewProjTransposeMtx,
        kWorldViewProjInverseMtx,
        kWorldViewProjTranspInverseMtx
    };

    virtual ~MFrameContext();

    /// Row-vector matrices. Those that need an object's own matrix are not known per frame: they
    /// fail with kInvalidParameter.
    virtual MMatrix getMatrix(MatrixType mtype, MStatus* ReturnStatus = NULL) const;
    /// Pixels of the view; the origin is documented as the upper left one.
    virtual MStatus getViewportDimensions(int& originX, int& originY, int& width,
                                          int& height) const;
    MDagPath getCurrentCameraPath(MStatus* ReturnStatus = NULL) const;

    /// Port pixels, origin at the bottom left. False for a point that is clipped: behind the
    /// near plane, beyond the far one, or outside the sides of the view; the coordinates are set
    /// all the same.
    bool worldToViewport(const MPoint& worldPoint, double& viewportX, double& viewportY) const;
    /// The near plane's point under a port position and the direction into the scene.
    MStatus viewportToWorld(double viewportX, double viewportY, MPoint& worldPoint,
                            MVector& worldVector) const;

    static const char* className();

protected:
    explicit MFrameContext(std::shared_ptr<const host::Frame> frame);
    MFrameContext(const MFrameContext&) = delete;
    MFrameContext& operator=(const MFrameContext&) = delete;

    std::shared_ptr<const host::Frame> frame_;
    friend class host::FrameAccess;
};

} // namespace MHWRender
