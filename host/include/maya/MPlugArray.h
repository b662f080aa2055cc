#pragma once

#include <maya/MPlug.h>

#include <vector>

class MPlugArray {
public:
    MPlugArray();
    MPlugArray(const MPlugArray& other);
    ~MPlugArray();

    const MPlug& operator[](unsigned int index) const;
    MPlug& operator[](unsigned int index);
    MPlugArray& operator=(const MPlugArray& other);
    MStatus set(const MPlug& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MPlug& element, unsigned int index);
    MStatus append(const MPlug& element);
    MStatus copy(const MPlugArray& source);
    MStatus clear();

private:
    std::vector<MPlug> elements_;
};
