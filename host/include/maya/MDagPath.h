#pragma once

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>
#include <vector>

namespace host {
class DagNode;
struct PathAccess;
} // namespace host

/// A way from the root of the hierarchy down to a node.
class MDagPath {
public:
    MDagPath();
    MDagPath(const MDagPath& other);
    ~MDagPath();
    MDagPath& operator=(const MDagPath& other);
    bool operator==(const MDagPath& other) const;

    static MStatus getAPathTo(const MObject& node, MDagPath& path);

    bool hasFn(MFn::Type type, MStatus* ReturnStatus = nullptr) const;
    MFn::Type apiType(MStatus* ReturnStatus = nullptr) const;
    bool isValid(MStatus* ReturnStatus = nullptr) const;
    MObject node(MStatus* ReturnStatus = nullptr) const;
    MObject transform(MStatus* ReturnStatus = nullptr) const; ///< the lowest transform of the path
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MStatus extendToShape();
    MStatus extendToShapeDirectlyBelow(unsigned int index);
    MStatus numberOfShapesDirectlyBelow(unsigned int& count) const;
    MStatus push(const MObject& child);
    MStatus pop(unsigned int count = 1);
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    MMatrix inclusiveMatrix(MStatus* ReturnStatus = nullptr) const; ///< to world space
    MMatrix exclusiveMatrix(MStatus* ReturnStatus = nullptr) const; ///< of the parent
    MMatrix inclusiveMatrixInverse(MStatus* ReturnStatus = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* ReturnStatus = nullptr) const;

    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;
    bool isVisible(MStatus* ReturnStatus = nullptr) const;
    bool isInstanced(MStatus* ReturnStatus = nullptr) const;
    unsigned int instanceNumber(MStatus* ReturnStatus = nullptr) const;
    MStatus set(const MDagPath& source);

private:
    friend struct host::PathAccess;
    std::vector<std::shared_ptr<host::DagNode>> nodes_; ///< below the root, top first
};
