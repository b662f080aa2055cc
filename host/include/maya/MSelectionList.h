#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>
#include <vector>

class MDagPath;
class MPlug;
class MStringArray;

namespace host {
struct SelectionItem;
} // namespace host

/// A list of nodes and plugs. Names may hold the wild cards * and ?.
class MSelectionList {
public:
    enum MergeStrategy { kMergeNormal, kXORWithList, kRemoveFromList };

    MSelectionList();
    MSelectionList(const MSelectionList& other);
    ~MSelectionList();
    MSelectionList& operator=(const MSelectionList& other);

    MStatus clear();
    bool isEmpty(MStatus* ReturnStatus = nullptr) const;
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MStatus getDependNode(unsigned int index, MObject& node) const;
    MStatus getDagPath(unsigned int index, MDagPath& path) const;
    MStatus getDagPath(unsigned int index, MDagPath& path, MObject& component) const;
    MStatus getPlug(unsigned int index, MPlug& plug) const;
    MStatus getSelectionStrings(MStringArray& array) const;
    MStatus getSelectionStrings(unsigned int index, MStringArray& array) const;

    MStatus add(const MString& matchString, const bool searchChildNamespaces = false);
    MStatus add(const MObject& node, const bool mergeWithExisting = false);
    MStatus add(const MDagPath& path, const MObject& component = MObject::kNullObj,
                const bool mergeWithExisting = false);
    MStatus add(const MPlug& plug, const bool mergeWithExisting = false);
    MStatus remove(unsigned int index);
    MStatus replace(unsigned int index, const MObject& node);
    bool hasItem(const MObject& node, MStatus* ReturnStatus = nullptr) const;
    bool hasItem(const MDagPath& path, const MObject& component = MObject::kNullObj,
                 MStatus* ReturnStatus = nullptr) const;
    MStatus merge(const MSelectionList& other, const MergeStrategy strategy = kMergeNormal);

private:
    std::vector<std::shared_ptr<const host::SelectionItem>> items_;
};
