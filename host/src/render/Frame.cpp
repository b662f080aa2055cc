#include "render/Frame.h"

#include <cmath>

namespace host {

bool Frame::Projected::clipped() const {
    return w <= 0 || depth < -1 || depth > 1;
}

bool Frame::Projected::inside(int portWidth, int portHeight) const {
    return !clipped() && x >= 0 && y >= 0 && x <= portWidth && y <= portHeight;
}

Frame::Projected Frame::project(const MPoint& world) const {
    const MPoint clip = MPoint(world.x, world.y, world.z, 1) * view * projection;
    // A point in the plane of the eye has no place in the picture; any huge one will do.
    const double w = std::abs(clip.w) < 1e-12 ? 1e-12 : clip.w;
    return {(clip.x / w * 0.5 + 0.5) * width, (clip.y / w * 0.5 + 0.5) * height, clip.z / w,
            clip.w};
}

MPoint Frame::unproject(double x, double y, double depth) const {
    const MPoint clip(x / width * 2 - 1, y / height * 2 - 1, depth, 1);
    MPoint world = clip * (view * projection).inverse();
    return {world.x / world.w, world.y / world.w, world.z / world.w, 1};
}

std::unique_ptr<MHWRender::MFrameContext> FrameAccess::context(std::shared_ptr<const Frame> frame) {
    return std::unique_ptr<MHWRender::MFrameContext>(
        new MHWRender::MFrameContext(std::move(frame)));
}

std::unique_ptr<MHWRender::MDrawContext>
FrameAccess::drawContext(std::shared_ptr<const Frame> frame) {
    return std::unique_ptr<MHWRender::MDrawContext>(new MHWRender::MDrawContext(std::move(frame)));
}

} // namespace host

namespace MHWRender {

MFrameContext::MFrameContext(std::shared_ptr<const host::Frame> frame) : frame_(std::move(frame)) {
}
MFrameContext::~MFrameContext() = default;

MMatrix MFrameContext::getMatrix(MatrixType mtype, MStatus* ReturnStatus) const {
    if (ReturnStatus)
        *ReturnStatus = MS::kSuccess;
    const int source = mtype / 4;
    MMatrix matrix;
    switch (source) {
    case 1:
        matrix = frame_->view;
        break;
    case 2:
        matrix = frame_->projection;
        break;
    case 3:
        matrix = frame_->view * frame_->projection;
        break;
    default:
        if (ReturnStatus)
            *ReturnStatus = MS::kInvalidParameter;
        return matrix;
    }
    // Each group lists the matrix, its transpose, its inverse, and the transposed inverse.
    const int form = mtype % 4;
    if (form >= 2)
        matrix = matrix.inverse();
    return form % 2 ? matrix.transpose() : matrix;
}

MStatus MFrameContext::getViewportDimensions(int& originX, int& originY, int& width,
                                             int& height) const {
    originX = 0;
    originY = 0;
    width = frame_->width;
    height = frame_->height;
    return MS::kSuccess;
}

MDagPath MFrameContext::getCurrentCameraPath(MStatus* ReturnStatus) const {
    if (ReturnStatus)
        *ReturnStatus = frame_->camera.isValid() ? MS::kSuccess : MS::kFailure;
    return frame_->camera;
}

bool MFrameContext::worldToViewport(const MPoint& worldPoint, double& viewportX,
                                    double& viewportY) const {
    const host::Frame::Projected point = frame_->project(worldPoint);
    viewportX = point.x;
    viewportY = point.y;
    return point.inside(frame_->width, frame_->height);
}

MStatus MFrameContext::viewportToWorld(double viewportX, double viewportY, MPoint& worldPoint,
                                       MVector& worldVector) const {
    worldPoint = frame_->unproject(viewportX, viewportY, -1);
    worldVector = (frame_->unproject(viewportX, viewportY, 1) - worldPoint).normal();
    return MS::kSuccess;
}

const char* MFrameContext::className() {
    return "MFrameContext";
}

MDrawContext::MDrawContext(std::shared_ptr<const host::Frame> frame)
    : MFrameContext(std::move(frame)) {
}
MDrawContext::~MDrawContext() = default;

const char* MDrawContext::className() {
    return "MDrawContext";
}

} // namespace MHWRender
