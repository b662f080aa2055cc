#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMatrix;
class MVector;

/// Rotations about the three axes, in radians, applied in the given order.
class MEulerRotation {
public:
    enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

    MEulerRotation();
    MEulerRotation(const MEulerRotation& other) = default;
    MEulerRotation(double xx, double yy, double zz, RotationOrder o = kXYZ);
    MEulerRotation(const MVector& v, RotationOrder o = kXYZ);
    ~MEulerRotation() = default;
    MEulerRotation& operator=(const MEulerRotation& other) = default;

    MMatrix asMatrix() const;
    MVector asVector() const;
    MEulerRotation reorder(RotationOrder order) const;
    static MEulerRotation decompose(const MMatrix& matrix, RotationOrder order);
    bool isEquivalent(const MEulerRotation& other, double tolerance = 1.0e-10) const;

    double x;
    double y;
    double z;
    RotationOrder order;
};
