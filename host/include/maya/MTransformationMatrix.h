#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MSpace.h>
#include <maya/MStatus.h>

class MVector;

/// A matrix taken apart into scale, rotation and translation. Shear is not kept.
class MTransformationMatrix {
public:
    enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };

    MTransformationMatrix();
    MTransformationMatrix(const MTransformationMatrix& other) = default;
    MTransformationMatrix(const MMatrix& matrix);
    ~MTransformationMatrix() = default;
    MTransformationMatrix& operator=(const MTransformationMatrix& other) = default;

    MMatrix asMatrix() const;
    MEulerRotation eulerRotation() const;
    MTransformationMatrix& rotateTo(const MEulerRotation& rotation);
    MVector getTranslation(MSpace::Space space, MStatus* ReturnStatus = nullptr) const;
    MStatus setTranslation(const MVector& vector, MSpace::Space space);
    MStatus getScale(double scale[3], MSpace::Space space) const;
    MStatus setScale(const double scale[3], MSpace::Space space);
    RotationOrder rotationOrder() const;

private:
    double scale_[3];
    double translation_[3];
    MEulerRotation rotation_;
};
