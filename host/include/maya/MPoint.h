#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MMatrix;
class MVector;

#define MPoint_kTol 1.0e-10

/// A point in homogeneous coordinates. Multiplied by a matrix from the right (row vector).
class MPoint {
public:
    MPoint() : x(0.0), y(0.0), z(0.0), w(1.0) {}
    MPoint(const MPoint& other) = default;
    MPoint(const MVector& v);
    MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}
    MPoint(const double d[4]) : x(d[0]), y(d[1]), z(d[2]), w(d[3]) {}
    MPoint(const float f[4]) : x(f[0]), y(f[1]), z(f[2]), w(f[3]) {}
    ~MPoint() = default;

    MPoint& operator=(const MPoint& other) = default;
    MPoint& operator=(const MVector& v);

    double& operator()(unsigned int i) { return (&x)[i]; }
    double operator()(unsigned int i) const { return (&x)[i]; }
    double& operator[](unsigned int i) { return (&x)[i]; }
    double operator[](unsigned int i) const { return (&x)[i]; }
    MStatus get(double d[4]) const;
    MStatus get(float f[4]) const;

    MVector operator-(const MPoint& other) const; ///< of the cartesian positions
    MPoint operator+(const MVector& v) const;
    MPoint operator-(const MVector& v) const;
    MPoint& operator+=(const MVector& v);
    MPoint& operator-=(const MVector& v);
    MPoint operator*(double s) const;
    MPoint operator/(double s) const;
    MPoint operator*(const MMatrix& m) const;
    MPoint& operator*=(const MMatrix& m);
    bool operator==(const MPoint& other) const;
    bool operator!=(const MPoint& other) const;

    MStatus cartesianize(); ///< divides by w
    MStatus rationalize();
    MStatus homogenize();
    double distanceTo(const MPoint& other) const;
    bool isEquivalent(const MPoint& other, double tolerance = MPoint_kTol) const;

    static const MPoint origin;

    double x;
    double y;
    double z;
    double w;
};

MPoint operator*(double s, const MPoint& p);
MPoint operator*(const MMatrix& m, const MPoint& p);
std::ostream& operator<<(std::ostream& out, const MPoint& p);
