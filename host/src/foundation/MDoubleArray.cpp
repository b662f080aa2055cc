#include <maya/MDoubleArray.h>

#include <algorithm>
#include <ostream>

MDoubleArray::MDoubleArray() = default;
MDoubleArray::MDoubleArray(const MDoubleArray& other) = default;
MDoubleArray::MDoubleArray(const double source[], unsigned int count)
    : elements_(source, source + count) {
}
MDoubleArray::MDoubleArray(unsigned int initialSize, double initialValue)
    : elements_(initialSize, initialValue) {
}
MDoubleArray::~MDoubleArray() = default;
MDoubleArray& MDoubleArray::operator=(const MDoubleArray& other) = default;
double MDoubleArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
double& MDoubleArray::operator[](unsigned int index) {
    return elements_.at(index);
}

MStatus MDoubleArray::set(double element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MDoubleArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MDoubleArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MDoubleArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MDoubleArray::insert(double element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MDoubleArray::append(double element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MDoubleArray::copy(const MDoubleArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MDoubleArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}
MStatus MDoubleArray::get(double array[]) const {
    std::copy(elements_.begin(), elements_.end(), array);
    return MS::kSuccess;
}
void MDoubleArray::setSizeIncrement(unsigned int newIncrement) {
    increment_ = newIncrement;
}
unsigned int MDoubleArray::sizeIncrement() const {
    return increment_;
}
std::ostream& operator<<(std::ostream& out, const MDoubleArray& array) {
    out << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        out << (i ? ", " : "") << array[i];
    return out << ']';
}
