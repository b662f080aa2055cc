// MObjectArray, MPlugArray and MDagPathArray.
#include <maya/MDagPathArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>

MObjectArray::MObjectArray() = default;
MObjectArray::MObjectArray(const MObjectArray& other) = default;
MObjectArray::~MObjectArray() = default;
MObjectArray& MObjectArray::operator=(const MObjectArray& other) = default;
const MObject& MObjectArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
MObject& MObjectArray::operator[](unsigned int index) {
    return elements_.at(index);
}
MStatus MObjectArray::set(const MObject& element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MObjectArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MObjectArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MObjectArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MObjectArray::insert(const MObject& element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MObjectArray::append(const MObject& element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MObjectArray::copy(const MObjectArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MObjectArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}

MPlugArray::MPlugArray() = default;
MPlugArray::MPlugArray(const MPlugArray& other) = default;
MPlugArray::~MPlugArray() = default;
MPlugArray& MPlugArray::operator=(const MPlugArray& other) = default;
const MPlug& MPlugArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
MPlug& MPlugArray::operator[](unsigned int index) {
    return elements_.at(index);
}
MStatus MPlugArray::set(const MPlug& element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MPlugArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MPlugArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MPlugArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MPlugArray::insert(const MPlug& element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MPlugArray::append(const MPlug& element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MPlugArray::copy(const MPlugArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MPlugArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}

MDagPathArray::MDagPathArray() = default;
MDagPathArray::MDagPathArray(const MDagPathArray& other) = default;
MDagPathArray::~MDagPathArray() = default;
MDagPathArray& MDagPathArray::operator=(const MDagPathArray& other) = default;
const MDagPath& MDagPathArray::operator[](unsigned int index) const {
    return elements_.at(index);
}
MDagPath& MDagPathArray::operator[](unsigned int index) {
    return elements_.at(index);
}
MStatus MDagPathArray::set(const MDagPath& element, unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_[index] = element;
    return MS::kSuccess;
}
MStatus MDagPathArray::setLength(unsigned int length) {
    elements_.resize(length);
    return MS::kSuccess;
}
unsigned int MDagPathArray::length() const {
    return static_cast<unsigned int>(elements_.size());
}
MStatus MDagPathArray::remove(unsigned int index) {
    if (index >= elements_.size())
        return MS::kInvalidParameter;
    elements_.erase(elements_.begin() + index);
    return MS::kSuccess;
}
MStatus MDagPathArray::insert(const MDagPath& element, unsigned int index) {
    if (index > elements_.size())
        return MS::kInvalidParameter;
    elements_.insert(elements_.begin() + index, element);
    return MS::kSuccess;
}
MStatus MDagPathArray::append(const MDagPath& element) {
    elements_.push_back(element);
    return MS::kSuccess;
}
MStatus MDagPathArray::copy(const MDagPathArray& source) {
    elements_ = source.elements_;
    return MS::kSuccess;
}
MStatus MDagPathArray::clear() {
    elements_.clear();
    return MS::kSuccess;
}
