#include <maya/MStringArray.h>

#include <algorithm>
#include <ostream>

MStringArray::MStringArray() = default;
MStringArray::MStringArray(const MStringArray& other) = default;
MStringArray::MStringArray(const MString source[], unsigned int count)
    : elements_(source, source + count) {
}
MStringArray::MStringArray(unsigned int initialSize, const MString& initialValue)
    : elements_(initialSize, initialValue) {
}
MStringArray::~MStringArray() = default;
MStringArray& MStringArray::operator=(const MStringArray& other) = default;
const MString& MStringArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
MString& MStringArray::operator[](unsigned int index) {
    return elements_.at(index);
}

MStatus MStringArray::set(const MString& element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MStringArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MStringArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MStringArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MStringArray::insert(const MString& element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MStringArray::append(const MString& element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MStringArray::copy(const MStringArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MStringArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}
MStatus MStringArray::get(MString array[]) const {
    std::copy(elements_.begin(), elements_.end(), array);
    return MS::kSuccess;
}
void MStringArray::setSizeIncrement(unsigned int newIncrement) {
    increment_ = newIncrement;
}
unsigned int MStringArray::sizeIncrement() const {
    return increment_;
}
std::ostream& operator<<(std::ostream& out, const MStringArray& array) {
    out << '[';
    for (unsigned int i = 0; i < array.length(); ++i)
        out << (i ? ", " : "") << array[i];
    return out << ']';
}
