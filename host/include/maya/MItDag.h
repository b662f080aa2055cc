#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

/// Goes through the hierarchy below the root, or below a given start, which is visited first.
class MItDag {
public:
    enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };

    MItDag(TraversalType traversalType = kDepthFirst, MFn::Type filter = MFn::kInvalid,
           MStatus* ReturnStatus = nullptr);
    ~MItDag();

    MStatus reset();
    MStatus reset(const MObject& rootNode, TraversalType traversalType = kDepthFirst,
                  MFn::Type filter = MFn::kInvalid);
    MStatus reset(const MDagPath& path, TraversalType traversalType = kDepthFirst,
                  MFn::Type filter = MFn::kInvalid);
    TraversalType getType(MStatus* ReturnStatus = nullptr) const;
    MStatus next();
    MStatus prune(); ///< what is below the current item is not visited
    bool isDone(MStatus* ReturnStatus = nullptr) const;
    unsigned int depth(MStatus* ReturnStatus = nullptr) const;
    MObject root(MStatus* ReturnStatus = nullptr) const;
    MObject currentItem(MStatus* ReturnStatus = nullptr) const;
    MObject item(MStatus* ReturnStatus = nullptr) const;
    MStatus getPath(MDagPath& path) const;
    MString fullPathName(MStatus* ReturnStatus = nullptr) const;
    MString partialPathName(MStatus* ReturnStatus = nullptr) const;

private:
    struct Entry {
        MDagPath path;
        unsigned int depth;
    };
    void collect(const MDagPath& start, bool atRoot);

    std::vector<Entry> entries_;
    std::size_t index_ = 0;
    TraversalType type_;
    MFn::Type filter_;
    MDagPath start_;
    bool atRoot_ = true;
};
