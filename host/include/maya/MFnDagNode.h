#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>

class MBoundingBox;
class MDagPathArray;

class MFnDagNode : public MFnDependencyNode {
public:
    enum { kNextPos = 0xff };

    MFnDagNode();
    MFnDagNode(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnDagNode(const MObject& object, MStatus* ReturnStatus = nullptr);
    MFnDagNode(const MDagPath& objectPath, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MStatus setObject(MObject& object) override;
    MStatus setObject(const MObject& object) override;
    MStatus setObject(const MDagPath& objectPath);

    /// Without a parent a shape gets a transform of its own, which is returned.
    MObject create(const MTypeId& typeId, const MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MTypeId& typeId, const MString& name,
                   const MObject& parent = MObject::kNullObj, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, const MObject& parent = MObject::kNullObj,
                   MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, const MString& name,
                   const MObject& parent = MObject::kNullObj, MStatus* ReturnStatus = nullptr);

    unsigned int parentCount(MStatus* ReturnStatus = nullptr) const;
    MObject parent(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    unsigned int childCount(MStatus* ReturnStatus = nullptr) const;
    MObject child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MStatus addChild(MObject& child, unsigned int index = kNextPos,
                     bool keepExistingParents = false);
    MObject dagRoot(MStatus* ReturnStatus = nullptr);
    bool hasParent(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool hasChild(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool isParentOf(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool isChildOf(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    MObject duplicate(bool instance = false, bool instanceLeaf = false,
                      MStatus* ReturnStatus = nullptr) const;
    bool isIntermediateObject(MStatus* ReturnStatus = nullptr) const;
    MStatus setIntermediateObject(bool isIntermediate);
    MMatrix transformationMatrix(MStatus* ReturnStatus = nullptr) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;
    MStatus getPath(MDagPath& path);
    MDagPath dagPath(MStatus* ReturnStatus = nullptr) const;
    MStatus getAllPaths(MDagPathArray& paths);
};
