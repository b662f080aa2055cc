#pragma once

#include <maya/MFnDagNode.h>
#include <maya/MSpace.h>
#include <maya/MTransformationMatrix.h>

class MFnTransform : public MFnDagNode {
public:
    MFnTransform();
    MFnTransform(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnTransform(const MObject& object, MStatus* ReturnStatus = nullptr);
    MFnTransform(const MDagPath& objectPath, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MTransformationMatrix transformation(MStatus* ReturnStatus = nullptr) const;
    /// Writes translation, rotation and scale of the node.
    MStatus set(const MTransformationMatrix& transform);
    MVector getTranslation(MSpace::Space space, MStatus* ReturnStatus = nullptr) const;
    MStatus setTranslation(const MVector& vec, MSpace::Space space);
    MStatus getRotation(MEulerRotation& rotation) const;
    MStatus setRotation(const MEulerRotation& rotation);
    MStatus getScale(double scale[3]) const;
    MStatus setScale(const double scale[3]);
};
