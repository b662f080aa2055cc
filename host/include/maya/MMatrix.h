#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

#define MMatrix_kTol 1.0e-10

/// 4 x 4 matrix, row-major; transformations multiply row vectors from the right, so the
/// translation is the last row. Made as the identity.
class MMatrix {
public:
    MMatrix();
    MMatrix(const MMatrix& other) = default;
    MMatrix(const double m[4][4]);
    MMatrix(const float m[4][4]);
    ~MMatrix() = default;
    MMatrix& operator=(const MMatrix& other) = default;

    MStatus setToIdentity();
    MStatus setToProduct(const MMatrix& left, const MMatrix& right);

    double operator()(unsigned int row, unsigned int column) const { return matrix[row][column]; }
    double& operator()(unsigned int row, unsigned int column) { return matrix[row][column]; }
    const double* operator[](unsigned int row) const { return matrix[row]; }
    double* operator[](unsigned int row) { return matrix[row]; }
    MStatus get(double dest[4][4]) const;
    MStatus get(float dest[4][4]) const;

    MMatrix transpose() const;
    MMatrix inverse() const; ///< the identity when singular
    MMatrix adjoint() const;
    MMatrix homogenize() const;
    double det4x4() const;
    double det3x3() const;
    bool isEquivalent(const MMatrix& other, double tolerance = MMatrix_kTol) const;
    bool isSingular() const;

    MMatrix operator+(const MMatrix& right) const;
    MMatrix& operator+=(const MMatrix& right);
    MMatrix operator-(const MMatrix& right) const;
    MMatrix& operator-=(const MMatrix& right);
    MMatrix operator*(const MMatrix& right) const;
    MMatrix& operator*=(const MMatrix& right);
    MMatrix operator*(double s) const;
    MMatrix& operator*=(double s);
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const;

    static const MMatrix identity;

    double matrix[4][4];
};

MMatrix operator*(double s, const MMatrix& m);
std::ostream& operator<<(std::ostream& out, const MMatrix& m);
