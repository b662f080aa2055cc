#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MMatrix;
class MPoint;

#define kMVector_Tol 1.0e-10
#define MVector_kTol 1.0e-10

/// A direction in three dimensions. Multiplied by a matrix it is not translated.
class MVector {
public:
    enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };

    MVector() : x(0.0), y(0.0), z(0.0) {}
    MVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}
    MVector(const double d[3]) : x(d[0]), y(d[1]), z(d[2]) {}
    MVector(const float f[3]) : x(f[0]), y(f[1]), z(f[2]) {}
    MVector(const MPoint& point);
    MVector(const MVector& other) = default;
    ~MVector() = default;
    MVector& operator=(const MVector& other) = default;

    double& operator()(unsigned int i) { return (&x)[i]; }
    double operator()(unsigned int i) const { return (&x)[i]; }
    double& operator[](unsigned int i) { return (&x)[i]; }
    double operator[](unsigned int i) const { return (&x)[i]; }

    MVector operator+(const MVector& v) const { return {x + v.x, y + v.y, z + v.z}; }
    MVector& operator+=(const MVector& v);
    MVector operator-() const { return {-x, -y, -z}; }
    MVector operator-(const MVector& v) const { return {x - v.x, y - v.y, z - v.z}; }
    MVector& operator-=(const MVector& v);
    MVector operator*(double s) const { return {x * s, y * s, z * s}; }
    MVector& operator*=(double s);
    MVector operator/(double s) const { return {x / s, y / s, z / s}; }
    MVector& operator/=(double s);
    double operator*(const MVector& v) const {
        return x * v.x + y * v.y + z * v.z;
    }                                          ///< dot product
    MVector operator^(const MVector& v) const; ///< cross product
    MVector operator*(const MMatrix& m) const;
    MVector& operator*=(const MMatrix& m);
    bool operator==(const MVector& v) const { return x == v.x && y == v.y && z == v.z; }
    bool operator!=(const MVector& v) const { return !(*this == v); }

    double length() const;
    MVector normal() const;
    MStatus normalize();
    double angle(const MVector& other) const;
    bool isEquivalent(const MVector& other, double tolerance = MVector_kTol) const;
    bool isParallel(const MVector& other, double tolerance = MVector_kTol) const;
    MStatus get(double d[3]) const;
    MStatus get(float f[3]) const;

    static const MVector zero;
    static const MVector one;
    static const MVector xAxis;
    static const MVector yAxis;
    static const MVector zAxis;

    double x;
    double y;
    double z;
};

MVector operator*(double s, const MVector& v);
MVector operator*(const MMatrix& m, const MVector& v);
std::ostream& operator<<(std::ostream& out, const MVector& v);
