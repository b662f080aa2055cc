// MEulerRotation, MTransformationMatrix, MFnTransform and MFnCamera.
#include "scene/api/ApiStatus.h"
#include "scene/core/Node.h"

#include <maya/MFnCamera.h>
#include <maya/MFnTransform.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>

using host::setStatus;

namespace {

// Which axis turns first, second and third.
const int* axesOf(MEulerRotation::RotationOrder order) {
    static const int axes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1},
                                   {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};
    return axes[order < 0 || order > 5 ? 0 : order];
}

MMatrix axisRotation(int axis, double angle) {
    MMatrix matrix;
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    matrix(a, a) = matrix(b, b) = std::cos(angle);
    matrix(a, b) = std::sin(angle);
    matrix(b, a) = -std::sin(angle);
    return matrix;
}

} // namespace

MEulerRotation::MEulerRotation() : x(0.0), y(0.0), z(0.0), order(kXYZ) {
}
MEulerRotation::MEulerRotation(double xx, double yy, double zz, RotationOrder o)
    : x(xx), y(yy), z(zz), order(o) {
}
MEulerRotation::MEulerRotation(const MVector& v, RotationOrder o)
    : MEulerRotation(v.x, v.y, v.z, o) {
}

MMatrix MEulerRotation::asMatrix() const {
    const double angles[3] = {x, y, z};
    MMatrix matrix;
    for (int i = 0; i < 3; ++i) {
        const int axis = axesOf(order)[i];
        matrix *= axisRotation(axis, angles[axis]);
    }
    return matrix;
}
MVector MEulerRotation::asVector() const {
    return {x, y, z};
}
MEulerRotation MEulerRotation::reorder(RotationOrder other) const {
    return decompose(asMatrix(), other);
}
bool MEulerRotation::isEquivalent(const MEulerRotation& other, double tolerance) const {
    return asMatrix().isEquivalent(other.asMatrix(), tolerance);
}

// After K. Shoemake, "Euler Angle Conversion", Graphics Gems IV, for row vectors and turning axes
// i, j, k; `sign` is that of the permutation.
MEulerRotation MEulerRotation::decompose(const MMatrix& m, RotationOrder order) {
    const int i = axesOf(order)[0];
    const int j = axesOf(order)[1];
    const int k = axesOf(order)[2];
    const double sign = (i + 1) % 3 == j ? 1.0 : -1.0;
    double angles[3];
    const double cosine = std::hypot(m(i, i), m(i, j));
    if (cosine > 1.0e-9) {
        angles[i] = sign * std::atan2(m(j, k), m(k, k));
        angles[j] = sign * std::atan2(-m(i, k), cosine);
        angles[k] = sign * std::atan2(m(i, j), m(i, i));
    } else {
        angles[i] = sign * std::atan2(-m(k, j), m(j, j));
        angles[j] = sign * std::atan2(-m(i, k), cosine);
        angles[k] = 0.0;
    }
    return {angles[0], angles[1], angles[2], order};
}

MTransformationMatrix::MTransformationMatrix() : scale_{1.0, 1.0, 1.0}, translation_{0, 0, 0} {
}
MTransformationMatrix::MTransformationMatrix(const MMatrix& matrix) : MTransformationMatrix() {
    MMatrix pure;
    for (unsigned int row = 0; row < 3; ++row) {
        translation_[row] = matrix(3, row);
        MVector axis(matrix(row, 0), matrix(row, 1), matrix(row, 2));
        scale_[row] = axis.length();
        if (scale_[row] > 0.0)
            axis /= scale_[row];
        for (unsigned int column = 0; column < 3; ++column)
            pure(row, column) = axis[column];
    }
    if (pure.det3x3() < 0.0) { // a mirrored axis is a negative scale
        scale_[0] = -scale_[0];
        for (unsigned int column = 0; column < 3; ++column)
            pure(0, column) = -pure(0, column);
    }
    rotation_ = MEulerRotation::decompose(pure, MEulerRotation::kXYZ);
}
MMatrix MTransformationMatrix::asMatrix() const {
    MMatrix matrix;
    for (unsigned int i = 0; i < 3; ++i)
        matrix(i, i) = scale_[i];
    matrix *= rotation_.asMatrix();
    for (unsigned int i = 0; i < 3; ++i)
        matrix(3, i) = translation_[i];
    return matrix;
}
MEulerRotation MTransformationMatrix::eulerRotation() const {
    return rotation_;
}
MTransformationMatrix& MTransformationMatrix::rotateTo(const MEulerRotation& rotation) {
    rotation_ = rotation;
    return *this;
}
MVector MTransformationMatrix::getTranslation(MSpace::Space, MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return MVector(translation_);
}
MStatus MTransformationMatrix::setTranslation(const MVector& vector, MSpace::Space) {
    return vector.get(translation_);
}
MStatus MTransformationMatrix::getScale(double scale[3], MSpace::Space) const {
    std::copy(scale_, scale_ + 3, scale);
    return MS::kSuccess;
}
MStatus MTransformationMatrix::setScale(const double scale[3], MSpace::Space) {
    std::copy(scale, scale + 3, scale_);
    return MS::kSuccess;
}
MTransformationMatrix::RotationOrder MTransformationMatrix::rotationOrder() const {
    return static_cast<RotationOrder>(rotation_.order + 1);
}

#define HOST_DAG_SET(Class, kType)                                                                 \
    Class::Class() = default;                                                                      \
    Class::Class(MObject& object, MStatus* status) {                                               \
        setStatus(status,                                                                          \
                  object.hasFn(kType) ? (object_ = object, MS::kSuccess) : MS::kInvalidParameter); \
    }                                                                                              \
    Class::Class(const MObject& object, MStatus* status)                                           \
        : Class(const_cast<MObject&>(object), status) {                                            \
    }                                                                                              \
    MFn::Type Class::type() const {                                                                \
        return kType;                                                                              \
    }

HOST_DAG_SET(MFnTransform, MFn::kTransform)
HOST_DAG_SET(MFnCamera, MFn::kCamera)
#undef HOST_DAG_SET

MFnTransform::MFnTransform(const MDagPath& path, MStatus* status)
    : MFnTransform(path.node(), status) {
}

// A path to a transform stands for the camera it carries.
MFnCamera::MFnCamera(const MDagPath& path, MStatus* status) {
    MDagPath shape(path);
    if (!shape.node().hasFn(MFn::kCamera))
        shape.extendToShape();
    const MObject object = shape.isValid() ? shape.node() : MObject();
    const bool fits = object.hasFn(MFn::kCamera);
    if (fits)
        object_ = object;
    setStatus(status, fits ? MS::kSuccess : MS::kInvalidParameter);
}

namespace {

bool readTriple(const MFnDependencyNode& node, const char* name, double out[3]) {
    MStatus status;
    const MPlug plug = node.findPlug(name, true, &status);
    for (unsigned int i = 0; status && i < 3; ++i)
        out[i] = plug.child(i).asDouble(&status);
    return status;
}

MStatus writeTriple(const MFnDependencyNode& node, const char* name, const double values[3]) {
    MStatus status;
    const MPlug plug = node.findPlug(name, true, &status);
    for (unsigned int i = 0; status && i < 3; ++i) {
        MPlug child = plug.child(i);
        if (child.asDouble() != values[i])
            status = child.setDouble(values[i]);
    }
    return status;
}

MEulerRotation::RotationOrder orderOf(const MFnDependencyNode& node) {
    return static_cast<MEulerRotation::RotationOrder>(
        std::clamp(node.findPlug("rotateOrder", true).asInt(), 0, 5));
}

} // namespace

MTransformationMatrix MFnTransform::transformation(MStatus* status) const {
    MTransformationMatrix out;
    double translate[3], rotate[3], scale[3];
    const bool ok = readTriple(*this, "translate", translate) &&
                    readTriple(*this, "rotate", rotate) && readTriple(*this, "scale", scale);
    if (!setStatus(status, ok))
        return out;
    out.setTranslation(MVector(translate), MSpace::kTransform);
    out.rotateTo(MEulerRotation(rotate[0], rotate[1], rotate[2], orderOf(*this)));
    out.setScale(scale, MSpace::kTransform);
    return out;
}
MStatus MFnTransform::set(const MTransformationMatrix& transform) {
    double scale[3];
    transform.getScale(scale, MSpace::kTransform);
    MStatus status =
        setTranslation(transform.getTranslation(MSpace::kTransform), MSpace::kTransform);
    if (status)
        status = setRotation(transform.eulerRotation());
    return status ? setScale(scale) : status;
}
MVector MFnTransform::getTranslation(MSpace::Space space, MStatus* status) const {
    double translate[3] = {0.0, 0.0, 0.0};
    setStatus(status, readTriple(*this, "translate", translate));
    if (space != MSpace::kWorld)
        return MVector(translate);
    const MMatrix world = dagPath().inclusiveMatrix();
    return {world(3, 0), world(3, 1), world(3, 2)};
}
MStatus MFnTransform::setTranslation(const MVector& vec, MSpace::Space space) {
    MPoint point(vec);
    if (space == MSpace::kWorld)
        point *= dagPath().exclusiveMatrixInverse();
    const double values[3] = {point.x, point.y, point.z};
    return writeTriple(*this, "translate", values);
}
MStatus MFnTransform::getRotation(MEulerRotation& rotation) const {
    double angles[3];
    if (!readTriple(*this, "rotate", angles))
        return MS::kFailure;
    rotation = MEulerRotation(angles[0], angles[1], angles[2], orderOf(*this));
    return MS::kSuccess;
}
MStatus MFnTransform::setRotation(const MEulerRotation& rotation) {
    const MEulerRotation::RotationOrder order = orderOf(*this);
    const MEulerRotation own = rotation.order == order ? rotation : rotation.reorder(order);
    const double values[3] = {own.x, own.y, own.z};
    return writeTriple(*this, "rotate", values);
}
MStatus MFnTransform::getScale(double scale[3]) const {
    return readTriple(*this, "scale", scale) ? MS::kSuccess : MS::kFailure;
}
MStatus MFnTransform::setScale(const double scale[3]) {
    return writeTriple(*this, "scale", scale);
}

#define HOST_CAMERA_NUMBER(getter, setter, attribute)                                              \
    double MFnCamera::getter(MStatus* status) const {                                              \
        return findPlug(attribute, true).asDouble(status);                                         \
    }                                                                                              \
    MStatus MFnCamera::setter(double value) {                                                      \
        return findPlug(attribute, true).setDouble(value);                                         \
    }

HOST_CAMERA_NUMBER(horizontalFilmAperture, setHorizontalFilmAperture, "horizontalFilmAperture")
HOST_CAMERA_NUMBER(verticalFilmAperture, setVerticalFilmAperture, "verticalFilmAperture")
HOST_CAMERA_NUMBER(overscan, setOverscan, "overscan")
HOST_CAMERA_NUMBER(focalLength, setFocalLength, "focalLength")
HOST_CAMERA_NUMBER(nearClippingPlane, setNearClippingPlane, "nearClipPlane")
HOST_CAMERA_NUMBER(farClippingPlane, setFarClippingPlane, "farClipPlane")
HOST_CAMERA_NUMBER(orthoWidth, setOrthoWidth, "orthographicWidth")
HOST_CAMERA_NUMBER(centerOfInterest, setCenterOfInterest, "centerOfInterest")
HOST_CAMERA_NUMBER(horizontalPan, setHorizontalPan, "horizontalPan")
HOST_CAMERA_NUMBER(verticalPan, setVerticalPan, "verticalPan")
HOST_CAMERA_NUMBER(zoom, setZoom, "zoom")
#undef HOST_CAMERA_NUMBER

#define HOST_CAMERA_QUERY(getter, attribute)                                                       \
    double MFnCamera::getter(MStatus* status) const {                                              \
        return findPlug(attribute, true).asDouble(status);                                         \
    }

HOST_CAMERA_QUERY(filmFitOffset, "filmFitOffset")
HOST_CAMERA_QUERY(horizontalFilmOffset, "horizontalFilmOffset")
HOST_CAMERA_QUERY(verticalFilmOffset, "verticalFilmOffset")
HOST_CAMERA_QUERY(lensSqueezeRatio, "lensSqueezeRatio")
HOST_CAMERA_QUERY(cameraScale, "cameraScale")
HOST_CAMERA_QUERY(preScale, "preScale")
HOST_CAMERA_QUERY(postScale, "postScale")
#undef HOST_CAMERA_QUERY

MFnCamera::FilmFit MFnCamera::filmFit(MStatus* status) const {
    return static_cast<FilmFit>(std::clamp(findPlug("filmFit", true).asInt(status), 0, 3));
}
MStatus MFnCamera::setFilmFit(FilmFit filmFit) {
    return findPlug("filmFit", true).setInt(filmFit);
}
double MFnCamera::aspectRatio(MStatus* status) const {
    const double height = verticalFilmAperture(status);
    return height > 0.0 ? horizontalFilmAperture() / height * lensSqueezeRatio() : 1.0;
}
MStatus MFnCamera::setAspectRatio(double aspectRatio) {
    if (!(aspectRatio > 0.0))
        return MS::kInvalidParameter;
    return setVerticalFilmAperture(horizontalFilmAperture() * lensSqueezeRatio() / aspectRatio);
}
bool MFnCamera::isOrtho(MStatus* status) const {
    return findPlug("orthographic", true).asBool(status);
}
MStatus MFnCamera::setIsOrtho(bool orthoState) {
    return findPlug("orthographic", true).setBool(orthoState);
}
bool MFnCamera::panZoomEnabled(MStatus* status) const {
    return findPlug("panZoomEnabled", true).asBool(status);
}
MStatus MFnCamera::setPanZoomEnabled(bool enabled) {
    return findPlug("panZoomEnabled", true).setBool(enabled);
}

namespace {
constexpr double kMillimetresPerInch = 25.4;

double fieldOfView(double apertureInches, double focalLength) {
    return 2.0 * std::atan(0.5 * apertureInches * kMillimetresPerInch / focalLength);
}
} // namespace

double MFnCamera::horizontalFieldOfView(MStatus* status) const {
    return fieldOfView(horizontalFilmAperture(status) * lensSqueezeRatio(), focalLength());
}
double MFnCamera::verticalFieldOfView(MStatus* status) const {
    return fieldOfView(verticalFilmAperture(status), focalLength());
}
