// MVector, MPoint, MMatrix, MColor and MBoundingBox.
#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

const MVector MVector::zero(0.0, 0.0, 0.0);
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);
const MPoint MPoint::origin(0.0, 0.0, 0.0, 1.0);
const MMatrix MMatrix::identity;
const MColor MColor::kOpaqueBlack(0.0f, 0.0f, 0.0f, 1.0f);

MVector::MVector(const MPoint& point) : x(point.x), y(point.y), z(point.z) {
}
MVector& MVector::operator+=(const MVector& v) {
    return *this = *this + v;
}
MVector& MVector::operator-=(const MVector& v) {
    return *this = *this - v;
}
MVector& MVector::operator*=(double s) {
    return *this = *this * s;
}
MVector& MVector::operator/=(double s) {
    return *this = *this / s;
}
MVector MVector::operator^(const MVector& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
}
MVector MVector::operator*(const MMatrix& m) const {
    return {x * m(0, 0) + y * m(1, 0) + z * m(2, 0), x * m(0, 1) + y * m(1, 1) + z * m(2, 1),
            x * m(0, 2) + y * m(1, 2) + z * m(2, 2)};
}
MVector& MVector::operator*=(const MMatrix& m) {
    return *this = *this * m;
}
double MVector::length() const {
    return std::sqrt(*this * *this);
}
MVector MVector::normal() const {
    MVector copy(*this);
    copy.normalize();
    return copy;
}
MStatus MVector::normalize() {
    const double l = length();
    if (l <= MVector_kTol)
        return MS::kFailure;
    *this /= l;
    return MS::kSuccess;
}
double MVector::angle(const MVector& other) const {
    const double lengths = length() * other.length();
    return lengths > 0.0 ? std::acos(std::clamp(*this * other / lengths, -1.0, 1.0)) : 0.0;
}
bool MVector::isEquivalent(const MVector& other, double tolerance) const {
    return (*this - other).length() <= tolerance;
}
bool MVector::isParallel(const MVector& other, double tolerance) const {
    return std::abs(std::abs(normal() * other.normal()) - 1.0) <= tolerance;
}
MStatus MVector::get(double d[3]) const {
    d[0] = x;
    d[1] = y;
    d[2] = z;
    return MS::kSuccess;
}
MStatus MVector::get(float f[3]) const {
    f[0] = static_cast<float>(x);
    f[1] = static_cast<float>(y);
    f[2] = static_cast<float>(z);
    return MS::kSuccess;
}
MVector operator*(double s, const MVector& v) {
    return v * s;
}
MVector operator*(const MMatrix& m, const MVector& v) {
    return v * m.transpose();
}
std::ostream& operator<<(std::ostream& out, const MVector& v) {
    return out << '[' << v.x << ", " << v.y << ", " << v.z << ']';
}

MPoint::MPoint(const MVector& v) : x(v.x), y(v.y), z(v.z), w(1.0) {
}
MPoint& MPoint::operator=(const MVector& v) {
    return *this = MPoint(v);
}
MStatus MPoint::get(double d[4]) const {
    for (unsigned int i = 0; i < 4; ++i)
        d[i] = (*this)[i];
    return MS::kSuccess;
}
MStatus MPoint::get(float f[4]) const {
    for (unsigned int i = 0; i < 4; ++i)
        f[i] = static_cast<float>((*this)[i]);
    return MS::kSuccess;
}
MVector MPoint::operator-(const MPoint& other) const {
    MPoint a(*this);
    MPoint b(other);
    a.cartesianize();
    b.cartesianize();
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
MPoint MPoint::operator+(const MVector& v) const {
    return {x + v.x * w, y + v.y * w, z + v.z * w, w};
}
MPoint MPoint::operator-(const MVector& v) const {
    return *this + -v;
}
MPoint& MPoint::operator+=(const MVector& v) {
    return *this = *this + v;
}
MPoint& MPoint::operator-=(const MVector& v) {
    return *this = *this - v;
}
MPoint MPoint::operator*(double s) const {
    return {x * s, y * s, z * s, w};
}
MPoint MPoint::operator/(double s) const {
    return {x / s, y / s, z / s, w};
}
MPoint MPoint::operator*(const MMatrix& m) const {
    MPoint out(0.0, 0.0, 0.0, 0.0);
    for (unsigned int c = 0; c < 4; ++c)
        out[c] = x * m(0, c) + y * m(1, c) + z * m(2, c) + w * m(3, c);
    return out;
}
MPoint& MPoint::operator*=(const MMatrix& m) {
    return *this = *this * m;
}
bool MPoint::operator==(const MPoint& o) const {
    return x == o.x && y == o.y && z == o.z && w == o.w;
}
bool MPoint::operator!=(const MPoint& other) const {
    return !(*this == other);
}
MStatus MPoint::cartesianize() {
    if (w != 0.0 && w != 1.0) {
        x /= w;
        y /= w;
        z /= w;
        w = 1.0;
    }
    return MS::kSuccess;
}
MStatus MPoint::rationalize() {
    if (w != 0.0) {
        x /= w;
        y /= w;
        z /= w;
    }
    return MS::kSuccess;
}
MStatus MPoint::homogenize() {
    x *= w;
    y *= w;
    z *= w;
    return MS::kSuccess;
}
double MPoint::distanceTo(const MPoint& other) const {
    return (*this - other).length();
}
bool MPoint::isEquivalent(const MPoint& other, double tolerance) const {
    return distanceTo(other) <= tolerance;
}
MPoint operator*(double s, const MPoint& p) {
    return p * s;
}
MPoint operator*(const MMatrix& m, const MPoint& p) {
    return p * m.transpose();
}
std::ostream& operator<<(std::ostream& out, const MPoint& p) {
    return out << '[' << p.x << ", " << p.y << ", " << p.z << ", " << p.w << ']';
}

MMatrix::MMatrix() {
    setToIdentity();
}
MMatrix::MMatrix(const double m[4][4]) {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = m[i / 4][i % 4];
}
MMatrix::MMatrix(const float m[4][4]) {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = m[i / 4][i % 4];
}
MStatus MMatrix::setToIdentity() {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = i / 4 == i % 4 ? 1.0 : 0.0;
    return MS::kSuccess;
}
MStatus MMatrix::setToProduct(const MMatrix& left, const MMatrix& right) {
    *this = left * right;
    return MS::kSuccess;
}
MStatus MMatrix::get(double dest[4][4]) const {
    for (int i = 0; i < 16; ++i)
        dest[i / 4][i % 4] = matrix[i / 4][i % 4];
    return MS::kSuccess;
}
MStatus MMatrix::get(float dest[4][4]) const {
    for (int i = 0; i < 16; ++i)
        dest[i / 4][i % 4] = static_cast<float>(matrix[i / 4][i % 4]);
    return MS::kSuccess;
}
MMatrix MMatrix::transpose() const {
    MMatrix out;
    for (int i = 0; i < 16; ++i)
        out.matrix[i / 4][i % 4] = matrix[i % 4][i / 4];
    return out;
}

namespace {

// The determinant of the 3 x 3 matrix left when a row and a column are struck out.
double minorOf(const MMatrix& m, int row, int column) {
    double v[9];
    int n = 0;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (r != row && c != column)
                v[n++] = m.matrix[r][c];
        }
    }
    return v[0] * (v[4] * v[8] - v[5] * v[7]) - v[1] * (v[3] * v[8] - v[5] * v[6]) +
           v[2] * (v[3] * v[7] - v[4] * v[6]);
}

} // namespace

double MMatrix::det3x3() const {
    return minorOf(*this, 3, 3);
}
double MMatrix::det4x4() const {
    double sum = 0.0;
    for (int c = 0; c < 4; ++c)
        sum += (c % 2 ? -1.0 : 1.0) * matrix[0][c] * minorOf(*this, 0, c);
    return sum;
}
MMatrix MMatrix::adjoint() const {
    MMatrix out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c)
            out.matrix[c][r] = ((r + c) % 2 ? -1.0 : 1.0) * minorOf(*this, r, c);
    }
    return out;
}
bool MMatrix::isSingular() const {
    return std::abs(det4x4()) < 1.0e-30;
}
MMatrix MMatrix::inverse() const {
    return isSingular() ? MMatrix() : adjoint() * (1.0 / det4x4());
}
MMatrix MMatrix::homogenize() const {
    return matrix[3][3] != 0.0 ? *this * (1.0 / matrix[3][3]) : *this;
}
bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const {
    for (int i = 0; i < 16; ++i) {
        if (!(std::abs(matrix[i / 4][i % 4] - other.matrix[i / 4][i % 4]) <= tolerance))
            return false;
    }
    return true;
}
MMatrix MMatrix::operator+(const MMatrix& right) const {
    return MMatrix(*this) += right;
}
MMatrix& MMatrix::operator+=(const MMatrix& right) {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] += right.matrix[i / 4][i % 4];
    return *this;
}
MMatrix MMatrix::operator-(const MMatrix& right) const {
    return MMatrix(*this) -= right;
}
MMatrix& MMatrix::operator-=(const MMatrix& right) {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] -= right.matrix[i / 4][i % 4];
    return *this;
}
MMatrix MMatrix::operator*(const MMatrix& right) const {
    MMatrix out;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += matrix[r][k] * right.matrix[k][c];
            out.matrix[r][c] = sum;
        }
    }
    return out;
}
MMatrix& MMatrix::operator*=(const MMatrix& right) {
    return *this = *this * right;
}
MMatrix MMatrix::operator*(double s) const {
    return MMatrix(*this) *= s;
}
MMatrix& MMatrix::operator*=(double s) {
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] *= s;
    return *this;
}
bool MMatrix::operator==(const MMatrix& other) const {
    return isEquivalent(other, 0.0);
}
bool MMatrix::operator!=(const MMatrix& other) const {
    return !(*this == other);
}
MMatrix operator*(double s, const MMatrix& m) {
    return m * s;
}
std::ostream& operator<<(std::ostream& out, const MMatrix& m) {
    for (int i = 0; i < 16; ++i)
        out << (i % 4 ? ", " : i ? "], [" : "[[") << m.matrix[i / 4][i % 4];
    return out << "]]";
}

MColor::MColor() : r(0.0f), g(0.0f), b(0.0f), a(1.0f) {
}
MColor::MColor(float rr, float gg, float bb, float aa) : r(rr), g(gg), b(bb), a(aa) {
}
MColor::MColor(const float c[4]) : r(c[0]), g(c[1]), b(c[2]), a(c[3]) {
}
MColor::MColor(const double c[4])
    : r(static_cast<float>(c[0])), g(static_cast<float>(c[1])), b(static_cast<float>(c[2])),
      a(static_cast<float>(c[3])) {
}
MColor::MColor(MColorType model, float c1, float c2, float c3, float alpha)
    : r(c1), g(c2), b(c3), a(alpha) {
    if (model == kCMY || model == kCMYK) {
        r = 1.0f - c1;
        g = 1.0f - c2;
        b = 1.0f - c3;
    } else if (model == kHSV) {
        // Hue in degrees; each channel is the value less saturation times its distance in hue.
        const auto channel = [&](float n) {
            const float k = std::fmod(n + c1 / 60.0f, 6.0f);
            return c3 - c3 * c2 * std::max(0.0f, std::min({k, 4.0f - k, 1.0f}));
        };
        r = channel(5.0f);
        g = channel(3.0f);
        b = channel(1.0f);
    }
}
MStatus MColor::get(float c[4]) const {
    for (unsigned int i = 0; i < 4; ++i)
        c[i] = (*this)[i];
    return MS::kSuccess;
}
bool MColor::operator==(const MColor& o) const {
    return r == o.r && g == o.g && b == o.b && a == o.a;
}
bool MColor::operator!=(const MColor& other) const {
    return !(*this == other);
}
std::ostream& operator<<(std::ostream& out, const MColor& c) {
    return out << '[' << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ']';
}

MBoundingBox::MBoundingBox() : empty_(true) {
}
MBoundingBox::MBoundingBox(const MPoint& corner1, const MPoint& corner2) : empty_(true) {
    expand(corner1);
    expand(corner2);
}
void MBoundingBox::clear() {
    *this = MBoundingBox();
}
void MBoundingBox::expand(const MPoint& point) {
    if (empty_) {
        min_ = max_ = point;
        empty_ = false;
        return;
    }
    for (unsigned int i = 0; i < 3; ++i) {
        min_[i] = std::min(min_[i], point[i]);
        max_[i] = std::max(max_[i], point[i]);
    }
}
void MBoundingBox::expand(const MBoundingBox& box) {
    if (!box.empty_) {
        expand(box.min_);
        expand(box.max_);
    }
}
void MBoundingBox::transformUsing(const MMatrix& matrix) {
    if (empty_)
        return;
    const MBoundingBox old(*this);
    clear();
    for (int corner = 0; corner < 8; ++corner) {
        MPoint p(corner & 1 ? old.max_.x : old.min_.x, corner & 2 ? old.max_.y : old.min_.y,
                 corner & 4 ? old.max_.z : old.min_.z);
        p *= matrix;
        p.cartesianize();
        expand(p);
    }
}
bool MBoundingBox::contains(const MPoint& p) const {
    return !empty_ && p.x >= min_.x && p.x <= max_.x && p.y >= min_.y && p.y <= max_.y &&
           p.z >= min_.z && p.z <= max_.z;
}
bool MBoundingBox::intersects(const MBoundingBox& box, double tolerance) const {
    if (empty_ || box.empty_)
        return false;
    for (unsigned int i = 0; i < 3; ++i) {
        if (min_[i] > box.max_[i] + tolerance || box.min_[i] > max_[i] + tolerance)
            return false;
    }
    return true;
}
double MBoundingBox::width() const {
    return max_.x - min_.x;
}
double MBoundingBox::height() const {
    return max_.y - min_.y;
}
double MBoundingBox::depth() const {
    return max_.z - min_.z;
}
MPoint MBoundingBox::center() const {
    return {(min_.x + max_.x) * 0.5, (min_.y + max_.y) * 0.5, (min_.z + max_.z) * 0.5};
}
MPoint MBoundingBox::min() const {
    return min_;
}
MPoint MBoundingBox::max() const {
    return max_;
}
