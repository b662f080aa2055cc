#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <vector>

class MDoubleArray {
public:
    MDoubleArray();
    MDoubleArray(const MDoubleArray& other);
    MDoubleArray(const double source[], unsigned int count);
    MDoubleArray(unsigned int initialSize, double initialValue = 0.0);
    ~MDoubleArray();

    double operator[](unsigned int index) const;
    double& operator[](unsigned int index);
    MDoubleArray& operator=(const MDoubleArray& other);

    MStatus set(double element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(double element, unsigned int index);
    MStatus append(double element);
    MStatus copy(const MDoubleArray& source);
    MStatus clear();
    MStatus get(double array[]) const;
    void setSizeIncrement(unsigned int newIncrement);
    unsigned int sizeIncrement() const;

    friend std::ostream& operator<<(std::ostream& out, const MDoubleArray& array);

private:
    std::vector<double> elements_;
    unsigned int increment_ = 64;
};
