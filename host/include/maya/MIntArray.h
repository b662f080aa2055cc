#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <vector>

class MIntArray {
public:
    MIntArray();
    MIntArray(const MIntArray& other);
    MIntArray(const int source[], unsigned int count);
    MIntArray(unsigned int initialSize, int initialValue = 0);
    ~MIntArray();

    int operator[](unsigned int index) const;
    int& operator[](unsigned int index);
    MIntArray& operator=(const MIntArray& other);

    MStatus set(int element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(int element, unsigned int index);
    MStatus append(int element);
    MStatus copy(const MIntArray& source);
    MStatus clear();
    MStatus get(int array[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    friend std::ostream& operator<<(std::ostream& out, const MIntArray& array);

private:
    std::vector<int> elements_;
    unsigned int increment_ = 64;
};
