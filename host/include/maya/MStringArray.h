#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <vector>

class MStringArray {
public:
    MStringArray();
    MStringArray(const MStringArray& other);
    MStringArray(const MString source[], unsigned int count);
    MStringArray(unsigned int initialSize, const MString& initialValue = MString());
    ~MStringArray();

    const MString& operator[](unsigned int index) const;
    MString& operator[](unsigned int index);
    MStringArray& operator=(const MStringArray& other);

    MStatus set(const MString& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MString& element, unsigned int index);
    MStatus append(const MString& element);
    MStatus copy(const MStringArray& source);
    MStatus clear();
    MStatus get(MString array[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    friend std::ostream& operator<<(std::ostream& out, const MStringArray& array);

private:
    std::vector<MString> elements_;
    unsigned int increment_ = 64;
};
