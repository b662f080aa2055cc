// MPlug: structure, flags and connections. Values are in ApiPlugValues.cpp.
#include "scene/api/ApiStatus.h"
#include "scene/core/Scene.h"

#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

using host::Access;
using host::Attribute;
using host::Node;
using host::PlugAccess;
using host::setStatus;
using host::Slot;
using host::SlotPtr;

namespace {

std::string pathOf(const Slot& slot, bool longNames, bool fullPath) {
    std::string text;
    for (const Slot* at = &slot; at; at = at->parent) {
        std::string part = longNames ? at->attribute->name : at->attribute->shortName;
        if (at->isElement()) {
            part += "[" + std::to_string(at->index) + "]";
            at = at->parent; // the array names the same attribute
        }
        text = text.empty() ? part : part + "." + text;
        if (!fullPath && !at->parent)
            break;
        // Outside arrays a child's own name is enough.
        bool belowArray = false;
        for (const Slot* above = at->parent; above; above = above->parent)
            belowArray = belowArray || above->isElement();
        if (!fullPath && !belowArray)
            break;
    }
    return text;
}

std::string nodeNameOf(const Node& node) {
    const auto* dag = dynamic_cast<const host::DagNode*>(&node);
    return dag && dag->inScene() ? host::scene().partialPath(*dag) : node.name;
}

SlotPtr shared(Slot* slot) {
    return slot ? slot->shared_from_this() : nullptr;
}

bool flagOf(const Slot& slot, std::optional<bool> Slot::*own, bool Attribute::*common) {
    return (slot.*own).value_or(slot.attribute.get()->*common);
}

} // namespace

MPlug::MPlug() = default;
MPlug::MPlug(const MPlug& other) = default;
MPlug::~MPlug() = default;
MPlug& MPlug::operator=(const MPlug& other) = default;
MPlug::MPlug(const MObject& node, const MObject& attribute) {
    const auto owner = Access::as<Node>(node);
    if (owner)
        *this = PlugAccess::make(owner->slot(Access::as<Attribute>(attribute)));
}
bool MPlug::operator==(const MPlug& other) const {
    return slot_ == other.slot_;
}
bool MPlug::operator!=(const MPlug& other) const {
    return slot_ != other.slot_;
}

bool MPlug::isNull(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return !slot_;
}
MObject MPlug::node(MStatus* status) const {
    setStatus(status, slot_ != nullptr);
    return Access::make(node_);
}
MObject MPlug::attribute(MStatus* status) const {
    setStatus(status, slot_ != nullptr);
    return slot_ ? Access::make(slot_->attribute) : MObject();
}
MString MPlug::name(MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr))
        return {};
    return (nodeNameOf(*node_) + "." + pathOf(*slot_, true, false)).c_str();
}
MString MPlug::info(MStatus* status) const {
    return name(status);
}
MString MPlug::partialName(bool includeNodeName, bool, bool, bool, bool useFullAttributePath,
                           bool useLongNames, MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr))
        return {};
    const std::string path = pathOf(*slot_, useLongNames, useFullAttributePath);
    return (includeNodeName ? nodeNameOf(*node_) + "." + path : path).c_str();
}

bool MPlug::isArray(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && slot_->isArray();
}
bool MPlug::isElement(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && slot_->isElement();
}
bool MPlug::isCompound(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && !slot_->attribute->children.empty();
}
bool MPlug::isChild(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && slot_->parent && !slot_->isElement();
}
bool MPlug::isDynamic(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && slot_->attribute->dynamic;
}
MPlug MPlug::parent(MStatus* status) const {
    const bool child = isChild();
    setStatus(status, child);
    return child ? PlugAccess::make(shared(slot_->parent)) : MPlug();
}
MPlug MPlug::array(MStatus* status) const {
    const bool element = isElement();
    setStatus(status, element);
    return element ? PlugAccess::make(shared(slot_->parent)) : MPlug();
}
unsigned int MPlug::numElements(MStatus* status) const {
    const bool ok = setStatus(status, isArray());
    return ok ? static_cast<unsigned int>(slot_->elements.size()) : 0;
}
unsigned int MPlug::evaluateNumElements(MStatus* status) {
    return numElements(status);
}
unsigned int MPlug::numChildren(MStatus* status) const {
    const bool ok = setStatus(status, isCompound());
    return ok ? static_cast<unsigned int>(slot_->attribute->children.size()) : 0;
}
MPlug MPlug::child(unsigned int index, MStatus* status) const {
    const SlotPtr found = slot_ ? slot_->child(index) : nullptr;
    setStatus(status, found != nullptr);
    return PlugAccess::make(found);
}
MPlug MPlug::child(const MObject& attribute, MStatus* status) const {
    const auto wanted = Access::as<Attribute>(attribute);
    SlotPtr found;
    for (std::size_t i = 0; slot_ && wanted && i < slot_->attribute->children.size(); ++i) {
        if (slot_->attribute->children[i] == wanted)
            found = slot_->child(i);
    }
    setStatus(status, found != nullptr);
    return PlugAccess::make(found);
}
MPlug MPlug::elementByLogicalIndex(unsigned int logicalIndex, MStatus* status) const {
    const SlotPtr found = slot_ ? slot_->element(static_cast<int>(logicalIndex)) : nullptr;
    setStatus(status, found != nullptr);
    return PlugAccess::make(found);
}
MPlug MPlug::elementByPhysicalIndex(unsigned int physicalIndex, MStatus* status) const {
    if (!setStatus(status, isArray() && physicalIndex < slot_->elements.size()))
        return {};
    auto at = slot_->elements.begin();
    std::advance(at, physicalIndex);
    return PlugAccess::make(at->second);
}
MPlug MPlug::operator[](int logicalIndex) const {
    return elementByLogicalIndex(static_cast<unsigned int>(logicalIndex));
}
unsigned int MPlug::logicalIndex(MStatus* status) const {
    const bool ok = setStatus(status, isElement());
    return ok ? static_cast<unsigned int>(slot_->index) : 0;
}
unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) {
    indices.clear();
    if (!setStatus(status, isArray()))
        return 0;
    for (const auto& [index, element] : slot_->elements)
        indices.append(index);
    return indices.length();
}

bool MPlug::isKeyable(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) &&
           flagOf(*slot_, &Slot::keyable, &Attribute::keyable);
}
MStatus MPlug::setKeyable(bool keyable) {
    if (!slot_)
        return MS::kFailure;
    slot_->keyable = keyable;
    host::scene().touch();
    return MS::kSuccess;
}
bool MPlug::isLocked(MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr))
        return false;
    for (const Slot* at = slot_.get(); at; at = at->parent) {
        if (at->locked.value_or(false))
            return true;
    }
    return node_->locked;
}
MStatus MPlug::setLocked(bool locked) {
    if (!slot_)
        return MS::kFailure;
    slot_->locked = locked;
    host::scene().touch();
    return MS::kSuccess;
}
bool MPlug::isChannelBoxFlagSet(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) &&
           flagOf(*slot_, &Slot::channelBox, &Attribute::channelBox);
}
MStatus MPlug::setChannelBox(bool inChannelBox) {
    if (!slot_)
        return MS::kFailure;
    slot_->channelBox = inChannelBox;
    host::scene().touch();
    return MS::kSuccess;
}

bool MPlug::isConnected(MStatus* status) const {
    return isSource(status) || isDestination();
}
bool MPlug::isSource(MStatus* status) const {
    if (!setStatus(status, slot_ != nullptr))
        return false;
    for (const auto& weak : slot_->destinations) {
        if (!weak.expired())
            return true;
    }
    return false;
}
bool MPlug::isDestination(MStatus* status) const {
    return setStatus(status, slot_ != nullptr) && !slot_->source.expired();
}
MPlug MPlug::source(MStatus* status) const {
    setStatus(status, slot_ != nullptr);
    return slot_ ? PlugAccess::make(slot_->source.lock()) : MPlug();
}
bool MPlug::destinations(MPlugArray& array, MStatus* status) const {
    array.clear();
    if (!setStatus(status, slot_ != nullptr))
        return false;
    for (const auto& weak : slot_->destinations) {
        if (const SlotPtr slot = weak.lock())
            array.append(PlugAccess::make(slot));
    }
    return array.length() > 0;
}
bool MPlug::connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* status) const {
    array.clear();
    if (!setStatus(status, slot_ != nullptr))
        return false;
    if (asSrc)
        destinations(array);
    if (asDst && isDestination())
        array.append(source());
    return array.length() > 0;
}
