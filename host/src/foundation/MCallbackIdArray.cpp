#include <maya/MCallbackIdArray.h>

#include <algorithm>
#include <ostream>

MCallbackIdArray::MCallbackIdArray() = default;
MCallbackIdArray::MCallbackIdArray(const MCallbackIdArray& other) = default;
MCallbackIdArray::MCallbackIdArray(const MCallbackId source[], unsigned int count)
    : elements_(source, source + count) {
}
MCallbackIdArray::MCallbackIdArray(unsigned int initialSize, MCallbackId initialValue)
    : elements_(initialSize, initialValue) {
}
MCallbackIdArray::~MCallbackIdArray() = default;
MCallbackIdArray& MCallbackIdArray::operator=(const MCallbackIdArray& other) = default;
MCallbackId MCallbackIdArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
MCallbackId& MCallbackIdArray::operator[](unsigned int index) {
    return elements_.at(index);
}

MStatus MCallbackIdArray::set(MCallbackId element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MCallbackIdArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MCallbackIdArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MCallbackIdArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MCallbackIdArray::insert(MCallbackId element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MCallbackIdArray::append(MCallbackId element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MCallbackIdArray::copy(const MCallbackIdArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MCallbackIdArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}
