// MDGModifier and MDagModifier.
#include "scene/api/ApiStatus.h"
#include "scene/api/ModifierSteps.h"
#include "scene/core/Scene.h"

#include <maya/MDagModifier.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <vector>

using host::Access;
using host::DagNode;
using host::DagNodePtr;
using host::NodePtr;
using host::PlugAccess;
using host::Removal;
using host::setStatus;

namespace {

// A made node joins the scene when the step is done and leaves it when undone; what was done to it
// meanwhile stays with it.
host::ModifierSteps::Step insertion(const NodePtr& node, const DagNodePtr& parent) {
    auto removal = std::make_shared<Removal>();
    return {[=] {
                if (!removal->items.empty())
                    host::scene().restore(*removal);
                else
                    host::scene().insert(node, "", parent);
                return true;
            },
            [=] { *removal = host::scene().remove(node); }};
}

NodePtr makeNode(const std::string& type) {
    const NodePtr node = host::typeRegistry().make(type);
    if (node) {
        node->name = type + "1"; // until it joins the scene
        host::NodeAccess::construct(*node);
    }
    return node;
}

// The place of a plug; keeps its node alive.
host::SlotPtr held(const MPlug& plug) {
    return host::heldSlot(PlugAccess::slot(plug));
}

// Whether values of one place can stand in the other: numbers of any kind among each other, data
// of one type, compounds part by part.
bool carries(const host::Slot& from, const host::Slot& to) {
    const host::Attribute& a = *from.attribute;
    const host::Attribute& b = *to.attribute;
    if (from.isArray() != to.isArray())
        return false;
    if (a.isNumber() || b.isNumber())
        return a.isNumber() && b.isNumber();
    return a.kind == b.kind && a.data == b.data && a.dataTypeId == b.dataTypeId &&
           a.children.size() == b.children.size();
}

std::string typeNameOf(const MTypeId& id) {
    const host::NodeType* type = host::typeRegistry().node(id.id());
    return type ? type->name : "";
}

} // namespace

MDGModifier::MDGModifier() : steps_(std::make_unique<host::ModifierSteps>()) {
}
MDGModifier::~MDGModifier() = default;

MObject MDGModifier::createNode(const MString& type, MStatus* status) {
    const bool fits =
        host::typeRegistry().node(type.asChar()) && !host::typeRegistry().isDag(type.asChar());
    const NodePtr node = fits ? makeNode(type.asChar()) : nullptr;
    setStatus(status, node ? MS::kSuccess : MS::kInvalidParameter);
    if (node)
        steps_->add(insertion(node, nullptr));
    return Access::make(node);
}
MObject MDGModifier::createNode(const MTypeId& typeId, MStatus* status) {
    return createNode(MString(typeNameOf(typeId).c_str()), status);
}
MStatus MDGModifier::deleteNode(const MObject& object) {
    const NodePtr node = Access::as<host::Node>(object);
    if (!node || node->isDefault)
        return MS::kInvalidParameter;
    if (node->locked)
        return MS::kFailure;
    auto removal = std::make_shared<Removal>();
    host::ModifierSteps* steps = steps_.get(); // it runs the step, so it is there
    steps_->add({[=] {
                     *removal = Removal();
                     if (!node->inScene() && steps->hasRemoved(*node))
                         return true;
                     *removal = host::scene().remove(node);
                     steps->noteRemoved(*removal);
                     return !removal->items.empty();
                 },
                 [=] { host::scene().restore(*removal); }});
    return MS::kSuccess;
}
MStatus MDGModifier::renameNode(const MObject& object, const MString& newName) {
    const NodePtr node = Access::as<host::Node>(object);
    if (!node || newName.length() == 0 || node->isDefault)
        return MS::kInvalidParameter;
    if (node->locked)
        return MS::kFailure;
    auto before = std::make_shared<std::string>();
    const std::string wanted = newName.asChar();
    steps_->add({[=] {
                     *before = node->name;
                     host::scene().rename(*node, wanted);
                     return true;
                 },
                 [=] { host::scene().rename(*node, *before); }});
    return MS::kSuccess;
}
MStatus MDGModifier::connect(const MPlug& source, const MPlug& dest) {
    if (source.isNull() || dest.isNull())
        return MS::kInvalidParameter;
    const host::SlotPtr from = held(source);
    const host::SlotPtr to = held(dest);
    if (!from->attribute->connectable || !to->attribute->connectable || !to->attribute->writable ||
        !carries(*from, *to))
        return MS::kFailure;
    auto value = std::make_shared<host::PlugValue>();
    auto old = std::make_shared<host::SlotPtr>();
    steps_->add({[=] {
                     *value = to->value;
                     *old = to->source.lock();
                     return host::scene().connect(from, to);
                 },
                 [=] {
                     host::scene().disconnect(from, to);
                     to->value = *value;
                     if (*old)
                         host::scene().connect(*old, to);
                 }});
    return MS::kSuccess;
}
MStatus MDGModifier::connect(const MObject& sourceNode, const MObject& sourceAttr,
                             const MObject& destNode, const MObject& destAttr) {
    return connect(MPlug(sourceNode, sourceAttr), MPlug(destNode, destAttr));
}
MStatus MDGModifier::disconnect(const MPlug& source, const MPlug& dest) {
    if (source.isNull() || dest.isNull())
        return MS::kInvalidParameter;
    const host::SlotPtr from = held(source);
    const host::SlotPtr to = held(dest);
    steps_->add({[=] { return host::scene().disconnect(from, to); },
                 [=] { host::scene().connect(from, to); }});
    return MS::kSuccess;
}
MStatus MDGModifier::addAttribute(const MObject& node, const MObject& attribute) {
    if (!Access::as<host::Node>(node) || !Access::as<host::Attribute>(attribute))
        return MS::kInvalidParameter;
    steps_->add({[=] { return bool(MFnDependencyNode(node).addAttribute(attribute)); },
                 [=] { MFnDependencyNode(node).removeAttribute(attribute); }});
    return MS::kSuccess;
}
MStatus MDGModifier::removeAttribute(const MObject& node, const MObject& attribute) {
    if (!Access::as<host::Node>(node) || !Access::as<host::Attribute>(attribute))
        return MS::kInvalidParameter;
    auto connections = std::make_shared<std::vector<std::pair<host::SlotPtr, host::SlotPtr>>>();
    steps_->add({[=] {
                     const MPlug plug(node, attribute);
                     if (plug.isNull())
                         return false;
                     *connections = host::connectionsOf(*PlugAccess::slot(plug));
                     return bool(MFnDependencyNode(node).removeAttribute(attribute));
                 },
                 [=] {
                     MFnDependencyNode(node).addAttribute(attribute);
                     for (const auto& [source, destination] : *connections)
                         host::scene().connect(source, destination);
                 }});
    return MS::kSuccess;
}
MStatus MDGModifier::doIt() {
    return steps_->doAll() ? MS::kSuccess : MS::kFailure;
}
MStatus MDGModifier::undoIt() {
    steps_->undoAll();
    return MS::kSuccess;
}

MDagModifier::MDagModifier() = default;
MDagModifier::~MDagModifier() = default;

MObject MDagModifier::createNode(const MString& type, MObject parent, MStatus* status) {
    const host::TypeRegistry& types = host::typeRegistry();
    const DagNodePtr above = Access::as<DagNode>(parent);
    if (!types.isDag(type.asChar()) || (!parent.isNull() && !above)) {
        setStatus(status, MS::kInvalidParameter);
        return MObject::kNullObj;
    }
    const NodePtr node = makeNode(type.asChar());
    if (!setStatus(status, node != nullptr))
        return MObject::kNullObj;
    if (above || types.inherits(type.asChar(), "transform")) {
        steps_->add(insertion(node, above));
        return Access::make(node);
    }
    const NodePtr transform = makeNode("transform");
    steps_->add(insertion(transform, nullptr));
    steps_->add(insertion(node, std::static_pointer_cast<DagNode>(transform)));
    return Access::make(transform);
}
MObject MDagModifier::createNode(const MTypeId& typeId, MObject parent, MStatus* status) {
    return createNode(MString(typeNameOf(typeId).c_str()), parent, status);
}
MStatus MDagModifier::reparentNode(const MObject& object, MObject newParent) {
    const DagNodePtr node = Access::as<DagNode>(object);
    const DagNodePtr above = Access::as<DagNode>(newParent);
    if (!node || (!newParent.isNull() && !above))
        return MS::kInvalidParameter;
    auto old = std::make_shared<DagNodePtr>();
    auto place = std::make_shared<std::size_t>(0);
    auto name = std::make_shared<std::string>();
    steps_->add({[=] {
                     if (!node->parent())
                         return false;
                     *old = node->parent()->selfDag();
                     *name = node->name;
                     const auto& siblings = (*old)->children();
                     *place = static_cast<std::size_t>(
                         std::find(siblings.begin(), siblings.end(), node) - siblings.begin());
                     return host::scene().reparent(node, above);
                 },
                 [=] {
                     host::scene().reparent(node, *old, *place);
                     host::scene().rename(*node, *name);
                 }});
    return MS::kSuccess;
}
