#pragma once

#include <maya/MDagPath.h>
#include <maya/MDrawContext.h>
#include <maya/MFrameContext.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>

#include <memory>

namespace host {

/// One view at one moment: what MFrameContext answers from. Matrices act on row vectors.
struct Frame {
    MDagPath camera; ///< The camera shape.
    int width = 0;   ///< Port size in device pixels.
    int height = 0;
    MMatrix view;
    MMatrix projection;

    /// Port pixels, origin bottom left. The depth of a visible point is in [-1, 1]; w keeps its
    /// sign, so that a point behind the camera can be told.
    struct Projected {
        double x = 0, y = 0, depth = 0, w = 0;
        bool clipped() const;
        bool inside(int width, int height) const;
    };
    Projected project(const MPoint& world) const;
    /// The world point at a port position; depth -1 is the near plane, 1 the far one.
    MPoint unproject(double x, double y, double depth) const;
};

/// Makes the API's contexts, whose constructors are closed.
class FrameAccess {
public:
    static std::unique_ptr<MHWRender::MFrameContext> context(std::shared_ptr<const Frame> frame);
    static std::unique_ptr<MHWRender::MDrawContext> drawContext(std::shared_ptr<const Frame> frame);
};

} // namespace host
