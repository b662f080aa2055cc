#pragma once

#include <maya/MDagPath.h>

#include <vector>

class MDagPathArray {
public:
    MDagPathArray();
    MDagPathArray(const MDagPathArray& other);
    ~MDagPathArray();

    const MDagPath& operator[](unsigned int index) const;
    MDagPath& operator[](unsigned int index);
    MDagPathArray& operator=(const MDagPathArray& other);
    MStatus set(const MDagPath& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MDagPath& element, unsigned int index);
    MStatus append(const MDagPath& element);
    MStatus copy(const MDagPathArray& source);
    MStatus clear();

private:
    std::vector<MDagPath> elements_;
};
