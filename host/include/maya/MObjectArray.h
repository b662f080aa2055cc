#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <vector>

class MObjectArray {
public:
    MObjectArray();
    MObjectArray(const MObjectArray& other);
    ~MObjectArray();

    const MObject& operator[](unsigned int index) const;
    MObject& operator[](unsigned int index);
    MObjectArray& operator=(const MObjectArray& other);
    MStatus set(const MObject& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MObject& element, unsigned int index);
    MStatus append(const MObject& element);
    MStatus copy(const MObjectArray& source);
    MStatus clear();

private:
    std::vector<MObject> elements_;
};
