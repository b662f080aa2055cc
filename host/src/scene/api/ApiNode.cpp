// MPxNode, MPxLocatorNode and MFnDependencyNode.
#include "scene/api/ApiStatus.h"
#include "scene/core/Scene.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MPxNode.h>

using host::Access;
using host::Attribute;
using host::AttributePtr;
using host::DagNode;
using host::Node;
using host::NodeAccess;
using host::NodePtr;
using host::PlugAccess;
using host::setStatus;

MPxNode::MPxNode() = default;
MPxNode::~MPxNode() = default;
void MPxNode::postConstructor() {
}
MStatus MPxNode::compute(const MPlug&, MDataBlock&) {
    return MS::kUnknownParameter;
}
MPxNode::Type MPxNode::type() const {
    return kDependNode;
}
MTypeId MPxNode::typeId() const {
    return node_ ? MTypeId(node_->typeId()) : MTypeId();
}
MString MPxNode::typeName() const {
    return node_ ? node_->typeName().c_str() : "";
}
MString MPxNode::name() const {
    return node_ ? node_->name.c_str() : "";
}
MObject MPxNode::thisMObject() const {
    // Null in the destructor: the node is already going.
    return node_ ? Access::make(node_->weak_from_this().lock()) : MObject();
}
MStatus MPxNode::addAttribute(const MObject& attribute) {
    return host::typeRegistry().addAttributeToCurrent(Access::as<Attribute>(attribute));
}
MStatus MPxNode::attributeAffects(const MObject& whenChanges, const MObject& isAffected) {
    return Access::as<Attribute>(whenChanges) && Access::as<Attribute>(isAffected) ? MS::kSuccess
                                                                                   : MS::kFailure;
}

MPxLocatorNode::MPxLocatorNode() = default;
MPxLocatorNode::~MPxLocatorNode() = default;
MPxNode::Type MPxLocatorNode::type() const {
    return kLocatorNode;
}
void MPxLocatorNode::draw(M3dView&, const MDagPath&, M3dView::DisplayStyle,
                          M3dView::DisplayStatus) {
}
bool MPxLocatorNode::isBounded() const {
    return false;
}
MBoundingBox MPxLocatorNode::boundingBox() const {
    return {MPoint(-1.0, -1.0, -1.0), MPoint(1.0, 1.0, 1.0)};
}
bool MPxLocatorNode::excludeAsLocator() const {
    return true;
}
bool MPxLocatorNode::isTransparent() const {
    return false;
}
bool MPxLocatorNode::drawLast() const {
    return false;
}

MFnDependencyNode::MFnDependencyNode() = default;
MFnDependencyNode::MFnDependencyNode(MObject& object, MStatus* status) {
    setStatus(status, object.hasFn(MFn::kDependencyNode) ? attach(object).statusCode()
                                                         : MS::kInvalidParameter);
}
MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* status)
    : MFnDependencyNode(const_cast<MObject&>(object), status) {
}
MFn::Type MFnDependencyNode::type() const {
    return MFn::kDependencyNode;
}

namespace {

NodePtr nodeOf(const MObject& object) {
    return Access::as<Node>(object);
}

} // namespace

MObject MFnDependencyNode::create(const MString& type, const MString& name, MStatus* status) {
    const NodePtr node = host::typeRegistry().isDag(type.asChar())
                             ? nullptr
                             : host::scene().create(type.asChar(), name.asChar());
    setStatus(status, node != nullptr);
    object_ = Access::make(node);
    return object_;
}
MObject MFnDependencyNode::create(const MString& type, MStatus* status) {
    return create(type, MString(), status);
}
MObject MFnDependencyNode::create(const MTypeId& typeId, const MString& name, MStatus* status) {
    const host::NodeType* type = host::typeRegistry().node(typeId.id());
    return create(MString(type ? type->name.c_str() : ""), name, status);
}
MObject MFnDependencyNode::create(const MTypeId& typeId, MStatus* status) {
    return create(typeId, MString(), status);
}

MTypeId MFnDependencyNode::typeId(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) ? MTypeId(node->typeId()) : MTypeId();
}
MString MFnDependencyNode::typeName(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) ? node->typeName().c_str() : "";
}
MString MFnDependencyNode::name(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) ? node->name.c_str() : "";
}
MString MFnDependencyNode::absoluteName(MStatus* status) const {
    const MString own = name(status);
    return own.length() > 0 ? MString(":") + own : own;
}
MString MFnDependencyNode::uniqueName(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    if (!setStatus(status, node != nullptr))
        return {};
    const auto* dag = dynamic_cast<const DagNode*>(node.get());
    return dag ? host::scene().partialPath(*dag).c_str() : node->name.c_str();
}
MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status) {
    const NodePtr node = nodeOf(object_);
    if (!setStatus(status, node && !node->locked && !node->isDefault && name.length() > 0))
        return {};
    return host::scene().rename(*node, name.asChar()).c_str();
}
bool MFnDependencyNode::hasUniqueName(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) && host::scene().hasUniqueName(*node);
}
bool MFnDependencyNode::isDefaultNode(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) && node->isDefault;
}
bool MFnDependencyNode::isFromReferencedFile(MStatus* status) const {
    setStatus(status, nodeOf(object_) != nullptr);
    return false;
}
bool MFnDependencyNode::isLocked(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) && node->locked;
}
MStatus MFnDependencyNode::setLocked(bool locked) {
    const NodePtr node = nodeOf(object_);
    if (!node)
        return MS::kFailure;
    node->locked = locked;
    host::scene().touch();
    return MS::kSuccess;
}
MPxNode* MFnDependencyNode::userNode(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    setStatus(status, node != nullptr);
    return node ? node->userNode() : nullptr;
}
MString MFnDependencyNode::pluginName(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) ? node->pluginName().c_str() : "";
}

unsigned int MFnDependencyNode::attributeCount(MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) ? static_cast<unsigned int>(node->attributes().size())
                                              : 0;
}
MObject MFnDependencyNode::attribute(unsigned int index, MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    const auto all = node ? node->attributes() : std::vector<AttributePtr>();
    return setStatus(status, index < all.size()) ? Access::make(all[index]) : MObject();
}
MObject MFnDependencyNode::attribute(const MString& attrName, MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    const AttributePtr found = node ? node->findAttribute(attrName.asChar()) : nullptr;
    setStatus(status, found != nullptr);
    return Access::make(found);
}
bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    return setStatus(status, node != nullptr) && node->findAttribute(name.asChar());
}
MStatus MFnDependencyNode::addAttribute(const MObject& attribute) {
    const NodePtr node = nodeOf(object_);
    const AttributePtr added = Access::as<Attribute>(attribute);
    if (!node || !added || node->findAttribute(added->name) ||
        node->findAttribute(added->shortName))
        return MS::kFailure;
    node->addAttribute(added);
    host::scene().touch();
    return MS::kSuccess;
}
MStatus MFnDependencyNode::removeAttribute(const MObject& attribute) {
    const NodePtr node = nodeOf(object_);
    const AttributePtr removed = Access::as<Attribute>(attribute);
    if (!node || !removed || !removed->dynamic)
        return MS::kFailure;
    if (const host::SlotPtr slot = node->slot(removed)) {
        for (const auto& [source, destination] : host::connectionsOf(*slot))
            host::scene().disconnect(source, destination);
    }
    if (!node->removeAttribute(removed))
        return MS::kFailure;
    host::scene().touch();
    return MS::kSuccess;
}
MPlug MFnDependencyNode::findPlug(const MString& attrName, bool, MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    const host::SlotPtr slot = node ? node->slot(std::string(attrName.asChar())) : nullptr;
    setStatus(status, slot ? MS::kSuccess : node ? MS::kInvalidParameter : MS::kFailure);
    return PlugAccess::make(slot);
}
MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool, MStatus* status) const {
    const NodePtr node = nodeOf(object_);
    const host::SlotPtr slot = node ? node->slot(Access::as<Attribute>(attribute)) : nullptr;
    setStatus(status, slot ? MS::kSuccess : node ? MS::kInvalidParameter : MS::kFailure);
    return PlugAccess::make(slot);
}
MStatus MFnDependencyNode::getConnections(MPlugArray& array) const {
    array.clear();
    const NodePtr node = nodeOf(object_);
    if (!node)
        return MS::kFailure;
    for (const AttributePtr& attribute : node->attributes()) {
        const MPlug plug = PlugAccess::make(node->slot(attribute));
        if (!plug.isNull() && plug.isConnected())
            array.append(plug);
    }
    return MS::kSuccess;
}
MString MFnDependencyNode::classification(const MString& nodeTypeName) {
    const host::NodeType* type = host::typeRegistry().node(nodeTypeName.asChar());
    return type ? type->classification.c_str() : "";
}
