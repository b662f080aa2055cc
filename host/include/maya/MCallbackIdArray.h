#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <vector>

/// Identifies an installed callback.
typedef MUintPtrSz MCallbackId;

class MCallbackIdArray {
public:
    MCallbackIdArray();
    MCallbackIdArray(const MCallbackIdArray& other);
    MCallbackIdArray(const MCallbackId source[], unsigned int count);
    MCallbackIdArray(unsigned int initialSize, MCallbackId initialValue = 0);
    ~MCallbackIdArray();

    MCallbackId& operator[](unsigned int index);
    MCallbackId operator[](unsigned int index) const;
    MCallbackIdArray& operator=(const MCallbackIdArray& other);

    MStatus set(MCallbackId element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(MCallbackId element, unsigned int index);
    MStatus append(MCallbackId element);
    MStatus copy(const MCallbackIdArray& source);
    MStatus clear();

private:
    std::vector<MCallbackId> elements_;
};
