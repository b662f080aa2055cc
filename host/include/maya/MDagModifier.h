#pragma once

#include <maya/MDGModifier.h>

class MDagModifier : public MDGModifier {
public:
    MDagModifier();
    ~MDagModifier() override;

    /// Without a parent a transform goes below the root; any other type gets a transform of its
    /// own, which is returned.
    MObject createNode(const MString& type, MObject parent = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);
    MObject createNode(const MTypeId& typeId, MObject parent = MObject::kNullObj,
                       MStatus* ReturnStatus = nullptr);
    MStatus reparentNode(const MObject& node, MObject newParent = MObject::kNullObj);
};
