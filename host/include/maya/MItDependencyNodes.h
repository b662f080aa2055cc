#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

class MItDependencyNodes {
public:
    MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* ReturnStatus = nullptr);
    ~MItDependencyNodes();

    MStatus reset(MFn::Type filter = MFn::kInvalid);
    MObject item(MStatus* ReturnStatus = nullptr);
    MObject thisNode(MStatus* ReturnStatus = nullptr);
    MStatus next();
    bool isDone(MStatus* ReturnStatus = nullptr);

private:
    std::vector<MObject> nodes_;
    std::size_t index_ = 0;
};
