#include <maya/MIntArray.h>

#include <algorithm>
#include <ostream>

MIntArray::MIntArray() = default;
MIntArray::MIntArray(const MIntArray& other) = default;
MIntArray::MIntArray(const int source[], unsigned int count) : elements_(source, source + count) {
}
MIntArray::MIntArray(unsigned int initialSize, int initialValue)
    : elements_(initialSize, initialValue) {
}
MIntArray::~MIntArray() = default;
MIntArray& MIntArray::operator=(const MIntArray& other) = default;
int MIntArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
int& MIntArray::operator[](unsigned int index) {
    return elements_.at(index);
}

MStatus MIntArray::set(int element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MIntArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MIntArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MIntArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MIntArray::insert(int element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MIntArray::append(int element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MIntArray::copy(const MIntArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MIntArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}
MStatus MIntArray::get(int array[]) const {
    std::copy(elements_.begin(), elements_.end(), array);
    return MS::kSuccess;
}
void MIntArray::setSizeIncrement(unsigned int newIncrement) {
    increment_ = newIncrement;
}
unsigned int MIntArray::sizeIncrement() const {
    return increment_;
}
std::ostream& operator<<(std::ostream& out, const MIntArray& array) {
    out << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        out << (i ? ", " : "") << array[i];
    return out << ']';
}
