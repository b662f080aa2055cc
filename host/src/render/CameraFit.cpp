#include "render/CameraFit.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

namespace host {

namespace {

constexpr double kMillimetresPerInch = 25.4;

class Reader {
public:
    explicit Reader(const MObject& node) : node_(node) {}

    void read(const char* name, double& value) const {
        const MPlug plug = find(name);
        if (!plug.isNull())
            value = plug.asDouble();
    }
    void read(const char* name, bool& value) const {
        const MPlug plug = find(name);
        if (!plug.isNull())
            value = plug.asBool();
    }
    void read(const char* name, int& value) const {
        const MPlug plug = find(name);
        if (!plug.isNull())
            value = plug.asInt();
    }

private:
    MPlug find(const char* name) const {
        MStatus status;
        const MPlug plug = node_.findPlug(name, true, &status);
        return status ? plug : MPlug();
    }
    MFnDependencyNode node_;
};

} // namespace

CameraLens readLens(const MDagPath& camera) {
    CameraLens lens;
    MDagPath path(camera);
    if (!path.isValid())
        return lens;
    if (path.apiType() != MFn::kCamera)
        path.extendToShape();
    if (path.apiType() != MFn::kCamera)
        return lens;

    const Reader reader(path.node());
    reader.read("orthographic", lens.orthographic);
    reader.read("orthographicWidth", lens.orthographicWidth);
    reader.read("focalLength", lens.focalLength);
    reader.read("horizontalFilmAperture", lens.apertureWidth);
    reader.read("verticalFilmAperture", lens.apertureHeight);
    reader.read("lensSqueezeRatio", lens.squeeze);
    reader.read("cameraScale", lens.scale);
    reader.read("nearClipPlane", lens.nearClip);
    reader.read("farClipPlane", lens.farClip);
    reader.read("filmFit", lens.filmFit);
    reader.read("overscan", lens.overscan);
    reader.read("horizontalFilmOffset", lens.filmOffsetX);
    reader.read("verticalFilmOffset", lens.filmOffsetY);
    reader.read("panZoomEnabled", lens.panZoom);
    reader.read("horizontalPan", lens.panX);
    reader.read("verticalPan", lens.panY);
    reader.read("zoom", lens.zoom);
    return lens;
}

double unitsPerFilmInch(const CameraLens& lens) {
    return (lens.orthographic ? lens.orthographicWidth / (lens.apertureWidth * lens.squeeze)
                              : lens.nearClip * kMillimetresPerInch / lens.focalLength) *
           lens.scale;
}

Frustum viewFrustum(const CameraLens& lens, double aspect) {
    const double filmAspect = lens.apertureWidth * lens.squeeze / lens.apertureHeight;
    // Whether the film's width or its height fills the view.
    bool widthFills = true;
    switch (lens.filmFit) {
    case 0: // Fill. An orthographic picture always keeps its width.
        widthFills = lens.orthographic || filmAspect <= aspect;
        break;
    case 2: // Vertical
        widthFills = false;
        break;
    case 3: // Overscan
        widthFills = !lens.orthographic && filmAspect > aspect;
        break;
    default: // Horizontal
        break;
    }

    const double filmWidth = lens.apertureWidth * lens.squeeze;
    const double unit = unitsPerFilmInch(lens);
    double halfWidth = filmWidth / 2 * lens.overscan;
    double halfHeight = lens.apertureHeight / 2 * lens.overscan;
    if (widthFills)
        halfHeight = halfWidth / aspect;
    else
        halfWidth = halfHeight * aspect;

    double centreX = lens.filmOffsetX;
    double centreY = lens.filmOffsetY;
    if (lens.panZoom) {
        const double zoom = lens.zoom > 0 ? lens.zoom : 0.001;
        halfWidth *= zoom;
        halfHeight *= zoom;
        centreX += lens.panX;
        centreY += lens.panY;
    }
    return {(centreX - halfWidth) * unit, (centreX + halfWidth) * unit,
            (centreY - halfHeight) * unit, (centreY + halfHeight) * unit};
}

MMatrix projectionMatrix(const CameraLens& lens, double aspect) {
    const Frustum f = viewFrustum(lens, aspect);
    const double n = lens.nearClip;
    const double z = lens.farClip;
    MMatrix m;
    m(0, 0) = 2 / (f.right - f.left);
    m(1, 1) = 2 / (f.top - f.bottom);
    if (lens.orthographic) {
        m(3, 0) = -(f.right + f.left) / (f.right - f.left);
        m(3, 1) = -(f.top + f.bottom) / (f.top - f.bottom);
        m(2, 2) = -2 / (z - n);
        m(3, 2) = -(z + n) / (z - n);
        return m;
    }
    m(0, 0) *= n;
    m(1, 1) *= n;
    m(2, 0) = (f.right + f.left) / (f.right - f.left);
    m(2, 1) = (f.top + f.bottom) / (f.top - f.bottom);
    m(2, 2) = -(z + n) / (z - n);
    m(2, 3) = -1;
    m(3, 2) = -2 * z * n / (z - n);
    m(3, 3) = 0;
    return m;
}

MMatrix viewMatrix(const MDagPath& camera) {
    const MMatrix world = camera.inclusiveMatrix();
    const auto row = [&world](unsigned int r) {
        return MVector(world(r, 0), world(r, 1), world(r, 2));
    };
    // A scaled camera looks where its axes point, without making the scene larger or smaller.
    const MVector z = row(2).normal();
    const MVector x = (row(0) - z * (row(0) * z)).normal();
    const MVector y = z ^ x;
    const MVector eye(world(3, 0), world(3, 1), world(3, 2));

    MMatrix view;
    const MVector axes[3] = {x, row(1) * y < 0 ? -y : y, z};
    for (unsigned int column = 0; column < 3; ++column) {
        view(0, column) = axes[column].x;
        view(1, column) = axes[column].y;
        view(2, column) = axes[column].z;
        view(3, column) = -(eye * axes[column]);
    }
    return view;
}

} // namespace host
