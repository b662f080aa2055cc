#include "ui/CameraNavigation.h"

#include "render/CameraFit.h"
#include "render/Views.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MVector.h>

#include <cmath>

namespace host {

namespace {

constexpr double kRadiansPerPixel = 0.006;
constexpr double kDollyPerPixel = 0.005;
constexpr double kDollyPerStep = 0.12;
constexpr double kZoomPerPixel = 0.005;
constexpr double kStrongestZoom = 0.001;
constexpr double kClosest = 0.01;

/// A camera's attributes as numbers: lengths in scene units, angles in radians.
class Rig {
public:
    explicit Rig(const MDagPath& camera) : shape_(camera.node()), transform_(camera.transform()) {}

    double get(const char* name) const { return plug(name).asDouble(); }

    void set(const char* name, double value) const {
        MPlug target = plug(name);
        if (!target.isNull() && !target.isLocked() && !target.isConnected())
            target.setDouble(value);
    }

    void set(const char* name, bool value) const {
        MPlug target = plug(name);
        if (!target.isNull() && !target.isLocked() && !target.isConnected())
            target.setBool(value);
    }

    MVector position() const { return {get("translateX"), get("translateY"), get("translateZ")}; }

    void setPosition(const MVector& p) const {
        set("translateX", p.x);
        set("translateY", p.y);
        set("translateZ", p.z);
    }

    /// A direction of the camera turned into the space of its transform's parent.
    MVector turned(MVector v) const {
        const double x = get("rotateX"), y = get("rotateY"), z = get("rotateZ");
        v = {v.x, v.y * std::cos(x) - v.z * std::sin(x), v.y * std::sin(x) + v.z * std::cos(x)};
        v = {v.x * std::cos(y) + v.z * std::sin(y), v.y, v.z * std::cos(y) - v.x * std::sin(y)};
        return {v.x * std::cos(z) - v.y * std::sin(z), v.x * std::sin(z) + v.y * std::cos(z), v.z};
    }

    double distance() const {
        const double value = get("centerOfInterest");
        return value > kClosest ? value : kClosest;
    }

private:
    MPlug plug(const char* name) const {
        MStatus status;
        MPlug found = MFnDependencyNode(shape_).findPlug(name, true, &status);
        return status && !found.isNull() ? found
                                         : MFnDependencyNode(transform_).findPlug(name, true);
    }

    MObject shape_, transform_;
};

// Closer for a factor below 1; the picture of an orthographic camera is enlarged instead.
void dollyBy(const MDagPath& camera, double factor) {
    const Rig rig(camera);
    if (readLens(camera).orthographic) {
        rig.set("orthographicWidth", rig.get("orthographicWidth") * factor);
        return;
    }
    const double from = rig.distance();
    const double to = std::max(kClosest, from * factor);
    rig.setPosition(rig.position() + rig.turned({0, 0, -1}) * (from - to));
    rig.set("centerOfInterest", to);
}

} // namespace

CameraNavigation::CameraNavigation(MDagPath camera, Mode mode)
    : camera_(std::move(camera)), mode_(mode) {
}

void CameraNavigation::drag(QPointF delta, QSize port) {
    if (!camera_.isValid())
        return;
    switch (mode_) {
    case Mode::Tumble:
        tumble(delta);
        break;
    case Mode::Track:
        track(delta, port);
        break;
    case Mode::Dolly:
        dollyBy(camera_, std::exp(-(delta.x() + delta.y()) * kDollyPerPixel));
        break;
    case Mode::Pan:
        pan(delta, port);
        break;
    case Mode::Zoom:
        zoom(std::exp(-(delta.x() + delta.y()) * kZoomPerPixel));
        break;
    }
    Views::instance().refreshAll();
}

void CameraNavigation::tumble(QPointF delta) {
    if (readLens(camera_).orthographic)
        return;
    const Rig rig(camera_);
    const double distance = rig.distance();
    const MVector centre = rig.position() + rig.turned({0, 0, -1}) * distance;
    rig.set("rotateX", rig.get("rotateX") + delta.y() * kRadiansPerPixel);
    rig.set("rotateY", rig.get("rotateY") - delta.x() * kRadiansPerPixel);
    rig.setPosition(centre - rig.turned({0, 0, -1}) * distance);
}

void CameraNavigation::track(QPointF delta, QSize port) {
    const Rig rig(camera_);
    const CameraLens lens = readLens(camera_);
    const Frustum frustum = viewFrustum(lens, double(port.width()) / port.height());
    double unitsPerPixel = (frustum.right - frustum.left) / port.width();
    if (!lens.orthographic)
        unitsPerPixel *= rig.distance() / lens.nearClip;
    rig.setPosition(rig.position() - rig.turned({1, 0, 0}) * (delta.x() * unitsPerPixel) -
                    rig.turned({0, 1, 0}) * (delta.y() * unitsPerPixel));
}

void CameraNavigation::pan(QPointF delta, QSize port) {
    const Rig rig(camera_);
    rig.set("panZoomEnabled", true);
    const CameraLens lens = readLens(camera_);
    const Frustum frustum = viewFrustum(lens, double(port.width()) / port.height());
    const double filmPerPixel =
        (frustum.right - frustum.left) / unitsPerFilmInch(lens) / port.width();
    rig.set("horizontalPan", lens.panX - delta.x() * filmPerPixel);
    rig.set("verticalPan", lens.panY - delta.y() * filmPerPixel);
}

void CameraNavigation::zoom(double factor) {
    const Rig rig(camera_);
    rig.set("panZoomEnabled", true);
    rig.set("zoom", std::max(kStrongestZoom, readLens(camera_).zoom * factor));
}

void CameraNavigation::switchPanZoom(MDagPath camera) {
    if (!camera.isValid())
        return;
    Rig(camera).set("panZoomEnabled", !readLens(camera).panZoom);
    Views::instance().refreshAll();
}

void CameraNavigation::dollyStep(MDagPath camera, double steps) {
    if (!camera.isValid())
        return;
    dollyBy(camera, std::exp(-steps * kDollyPerStep));
    Views::instance().refreshAll();
}

} // namespace host
