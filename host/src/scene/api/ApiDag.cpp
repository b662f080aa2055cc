// MDagPath, MFnDagNode, MItDag and MItDependencyNodes.
#include "foundation/Counters.h"
#include "scene/api/ApiStatus.h"
#include "scene/core/Data.h"
#include "scene/core/Scene.h"
#include "scene/core/TimeState.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>

#include <algorithm>
#include <deque>

namespace host {
struct PathAccess {
    static MDagPath make(const DagNodePtr& node) {
        MDagPath path;
        for (DagNode* at = node.get(); at && at->parent(); at = at->parent())
            path.nodes_.insert(path.nodes_.begin(), at->selfDag());
        return path;
    }
    static DagNodePtr last(const MDagPath& path) {
        return path.nodes_.empty() ? nullptr : path.nodes_.back();
    }
};
} // namespace host

using host::Access;
using host::DagNode;
using host::DagNodePtr;
using host::NodePtr;
using host::PathAccess;
using host::setStatus;

namespace {

DagNodePtr dagOf(const MObject& object) {
    return Access::as<DagNode>(object);
}

bool shown(DagNode& node) {
    return node.number("visibility") != 0.0 && node.number("lodVisibility") != 0.0 &&
           node.number("intermediateObject") == 0.0;
}

bool isShape(const DagNode& node) {
    return node.hasFn(MFn::kShape);
}

} // namespace

MDagPath::MDagPath() = default;
MDagPath::MDagPath(const MDagPath& other) = default;
MDagPath::~MDagPath() = default;
MDagPath& MDagPath::operator=(const MDagPath& other) = default;
bool MDagPath::operator==(const MDagPath& other) const {
    return nodes_ == other.nodes_;
}

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path) {
    const DagNodePtr dag = dagOf(node);
    if (!dag || !dag->inScene())
        return MS::kFailure;
    path = PathAccess::make(dag);
    return MS::kSuccess;
}
bool MDagPath::isValid(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return !nodes_.empty() && nodes_.back()->inScene();
}
bool MDagPath::hasFn(MFn::Type type, MStatus* status) const {
    if (!setStatus(status, !nodes_.empty()))
        return false;
    if (nodes_.back()->hasFn(type))
        return true;
    // A transform answers for the shape it carries.
    if (nodes_.back()->isTransform()) {
        for (const DagNodePtr& below : nodes_.back()->children()) {
            if (isShape(*below) && below->hasFn(type))
                return true;
        }
    }
    return false;
}
MFn::Type MDagPath::apiType(MStatus* status) const {
    return setStatus(status, !nodes_.empty()) ? nodes_.back()->apiType() : MFn::kInvalid;
}
MObject MDagPath::node(MStatus* status) const {
    return setStatus(status, !nodes_.empty()) ? Access::make(nodes_.back()) : MObject();
}
MObject MDagPath::transform(MStatus* status) const {
    for (auto at = nodes_.rbegin(); at != nodes_.rend(); ++at) {
        if ((*at)->isTransform()) {
            setStatus(status, MS::kSuccess);
            return Access::make(*at);
        }
    }
    setStatus(status, MS::kFailure);
    return {};
}
unsigned int MDagPath::length(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return static_cast<unsigned int>(nodes_.size());
}
MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const {
    count = 0;
    if (nodes_.empty())
        return MS::kFailure;
    for (const DagNodePtr& below : nodes_.back()->children())
        count += isShape(*below) ? 1 : 0;
    return MS::kSuccess;
}
MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int index) {
    if (nodes_.empty())
        return MS::kFailure;
    for (const DagNodePtr& below : nodes_.back()->children()) {
        if (isShape(*below) && index-- == 0) {
            nodes_.push_back(below);
            return MS::kSuccess;
        }
    }
    return MS::kFailure;
}
MStatus MDagPath::extendToShape() {
    if (!nodes_.empty() && isShape(*nodes_.back()))
        return MS::kSuccess;
    unsigned int count = 0;
    numberOfShapesDirectlyBelow(count);
    return count == 1 ? extendToShapeDirectlyBelow(0) : MStatus(MS::kFailure);
}
MStatus MDagPath::push(const MObject& child) {
    const DagNodePtr dag = dagOf(child);
    const DagNode* above = nodes_.empty() ? host::scene().root().get() : nodes_.back().get();
    if (!dag || dag->parent() != above)
        return MS::kFailure;
    nodes_.push_back(dag);
    return MS::kSuccess;
}
MStatus MDagPath::pop(unsigned int count) {
    if (count > nodes_.size())
        return MS::kFailure;
    nodes_.resize(nodes_.size() - count);
    return MS::kSuccess;
}
unsigned int MDagPath::childCount(MStatus* status) const {
    return setStatus(status, !nodes_.empty())
               ? static_cast<unsigned int>(nodes_.back()->children().size())
               : 0;
}
MObject MDagPath::child(unsigned int index, MStatus* status) const {
    if (!setStatus(status, !nodes_.empty() && index < nodes_.back()->children().size()))
        return {};
    return Access::make(nodes_.back()->children()[index]);
}
MMatrix MDagPath::inclusiveMatrix(MStatus* status) const {
    if (!setStatus(status, !nodes_.empty()))
        return MMatrix();
    return nodes_.back()->worldMatrix(host::timeline::current());
}
MMatrix MDagPath::exclusiveMatrix(MStatus* status) const {
    if (!setStatus(status, !nodes_.empty()))
        return MMatrix();
    DagNode* above = nodes_.back()->parent();
    return above ? above->worldMatrix(host::timeline::current()) : MMatrix();
}
MMatrix MDagPath::inclusiveMatrixInverse(MStatus* s) const {
    return inclusiveMatrix(s).inverse();
}
MMatrix MDagPath::exclusiveMatrixInverse(MStatus* s) const {
    return exclusiveMatrix(s).inverse();
}
MString MDagPath::fullPathName(MStatus* status) const {
    return setStatus(status, !nodes_.empty()) ? host::scene().fullPath(*nodes_.back()).c_str() : "";
}
MString MDagPath::partialPathName(MStatus* status) const {
    return setStatus(status, !nodes_.empty()) ? host::scene().partialPath(*nodes_.back()).c_str()
                                              : "";
}
bool MDagPath::isVisible(MStatus* status) const {
    if (!setStatus(status, !nodes_.empty()))
        return false;
    return std::all_of(nodes_.begin(), nodes_.end(), [](const auto& node) { return shown(*node); });
}
bool MDagPath::isInstanced(MStatus* status) const {
    setStatus(status, !nodes_.empty());
    return false;
}
unsigned int MDagPath::instanceNumber(MStatus* status) const {
    setStatus(status, !nodes_.empty());
    return 0;
}
MStatus MDagPath::set(const MDagPath& source) {
    nodes_ = source.nodes_;
    return MS::kSuccess;
}

MFnDagNode::MFnDagNode() = default;
MFnDagNode::MFnDagNode(MObject& object, MStatus* status) {
    setStatus(status, object.hasFn(MFn::kDagNode) || object.apiType() == MFn::kWorld
                          ? (object_ = object, MS::kSuccess)
                          : MS::kInvalidParameter);
}
MFnDagNode::MFnDagNode(const MObject& object, MStatus* status)
    : MFnDagNode(const_cast<MObject&>(object), status) {
}
MFnDagNode::MFnDagNode(const MDagPath& path, MStatus* status) : MFnDagNode(path.node(), status) {
}
MFn::Type MFnDagNode::type() const {
    return MFn::kDagNode;
}
MStatus MFnDagNode::setObject(MObject& object) {
    return attach(object);
}
MStatus MFnDagNode::setObject(const MObject& object) {
    return attach(object);
}
MStatus MFnDagNode::setObject(const MDagPath& path) {
    return attach(path.node());
}

MObject MFnDagNode::create(const MString& type, const MString& name, const MObject& parent,
                           MStatus* status) {
    host::TypeRegistry& types = host::typeRegistry();
    if (!setStatus(status, types.isDag(type.asChar()) && (parent.isNull() || dagOf(parent))))
        return MObject::kNullObj;
    DagNodePtr above = dagOf(parent);
    NodePtr transform;
    if (!above && !types.inherits(type.asChar(), "transform")) {
        transform = host::scene().create("transform",
                                         name.length() ? name.asChar() : (type + "#").asChar());
        above = std::static_pointer_cast<DagNode>(transform);
    }
    const MString shapeName = transform ? MString((transform->name + "Shape").c_str()) : name;
    const NodePtr node = host::scene().create(type.asChar(), shapeName.asChar(), above);
    if (!setStatus(status, node != nullptr))
        return MObject::kNullObj;
    object_ = Access::make(transform ? transform : node);
    return object_;
}
MObject MFnDagNode::create(const MString& type, const MObject& parent, MStatus* status) {
    return create(type, MString(), parent, status);
}
MObject MFnDagNode::create(const MTypeId& id, const MString& name, const MObject& parent,
                           MStatus* status) {
    const host::NodeType* found = host::typeRegistry().node(id.id());
    return create(MString(found ? found->name.c_str() : ""), name, parent, status);
}
MObject MFnDagNode::create(const MTypeId& id, const MObject& parent, MStatus* status) {
    return create(id, MString(), parent, status);
}

unsigned int MFnDagNode::parentCount(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) && node->parent() ? 1 : 0;
}
MObject MFnDagNode::parent(unsigned int index, MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    if (!setStatus(status, node && node->parent() && index == 0))
        return {};
    return Access::make(node->parent()->selfDag());
}
unsigned int MFnDagNode::childCount(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) ? static_cast<unsigned int>(node->children().size())
                                              : 0;
}
MObject MFnDagNode::child(unsigned int index, MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    if (!setStatus(status, node && index < node->children().size()))
        return {};
    return Access::make(node->children()[index]);
}
MStatus MFnDagNode::addChild(MObject& child, unsigned int index, bool) {
    const std::size_t place =
        index == kNextPos ? static_cast<std::size_t>(-1) : static_cast<std::size_t>(index);
    return host::scene().reparent(dagOf(child), dagOf(object_), place) ? MS::kSuccess
                                                                       : MS::kFailure;
}
MObject MFnDagNode::dagRoot(MStatus* status) {
    setStatus(status, MS::kSuccess);
    return Access::make(host::scene().root());
}
bool MFnDagNode::hasParent(const MObject& node, MStatus* status) const {
    return !node.isNull() && parent(0, status) == node;
}
bool MFnDagNode::hasChild(const MObject& node, MStatus* status) const {
    const DagNodePtr child = dagOf(node);
    setStatus(status, child != nullptr);
    return child && child->parent() && child->parent() == dagOf(object_).get();
}
bool MFnDagNode::isParentOf(const MObject& node, MStatus* status) const {
    const DagNodePtr below = dagOf(node);
    const DagNodePtr self = dagOf(object_);
    return setStatus(status, below && self) && below->isBelow(*self);
}
bool MFnDagNode::isChildOf(const MObject& node, MStatus* status) const {
    const DagNodePtr above = dagOf(node);
    const DagNodePtr self = dagOf(object_);
    return setStatus(status, above && self) && self->isBelow(*above);
}
bool MFnDagNode::isIntermediateObject(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) && node->number("intermediateObject") != 0.0;
}
MStatus MFnDagNode::setIntermediateObject(bool isIntermediate) {
    return findPlug("intermediateObject", true).setBool(isIntermediate);
}
MMatrix MFnDagNode::transformationMatrix(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) ? node->localMatrix(host::timeline::current())
                                              : MMatrix();
}
MString MFnDagNode::fullPathName(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) ? host::scene().fullPath(*node).c_str() : "";
}
MString MFnDagNode::partialPathName(MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    return setStatus(status, node != nullptr) ? host::scene().partialPath(*node).c_str() : "";
}
MStatus MFnDagNode::getPath(MDagPath& path) {
    return MDagPath::getAPathTo(object_, path);
}
MDagPath MFnDagNode::dagPath(MStatus* status) const {
    MDagPath path;
    const MStatus result = MDagPath::getAPathTo(object_, path);
    setStatus(status, result.statusCode());
    return path;
}
MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) {
    paths.clear();
    MDagPath path;
    const MStatus status = getPath(path);
    if (status)
        paths.append(path);
    return status;
}

namespace {

// Values and flags of a node's places; data of plug-ins copies itself.
void copySlot(host::Slot& from, host::Slot& to) {
    to.locked = from.locked;
    to.keyable = from.keyable;
    to.channelBox = from.channelBox;
    to.value = from.value;
    // What is driven keeps the value it has now.
    if (from.attribute->isNumber() && !from.isArray() && from.attribute->writable)
        to.value = from.node.evaluate(from, host::timeline::current());
    if (const auto* object = std::get_if<host::ObjectPtr>(&from.value)) {
        const auto* plugin = dynamic_cast<const host::PluginData*>(object->get());
        const host::DataType* type = plugin && plugin->data
                                         ? host::typeRegistry().data(plugin->data->typeId().id())
                                         : nullptr;
        if (type) {
            auto copy = std::make_shared<host::PluginData>(static_cast<MPxData*>(type->creator()));
            copy->data->copy(*plugin->data);
            to.value = host::ObjectPtr(copy);
        }
    }
    for (std::size_t i = 0; i < from.children.size(); ++i)
        copySlot(*from.children[i], *to.child(i));
    for (const auto& [index, element] : from.elements)
        copySlot(*element, *to.element(index));
}

DagNodePtr duplicateBelow(const DagNodePtr& source, const DagNodePtr& parent) {
    const auto copy = std::dynamic_pointer_cast<DagNode>(
        host::scene().create(source->typeName(), source->name, parent));
    if (!copy)
        return nullptr;
    for (const host::AttributePtr& attribute : source->attributes()) {
        if (attribute->parent.lock())
            continue;
        if (attribute->dynamic)
            copy->addAttribute(attribute); // the description is shared, the value is not
        copySlot(*source->slot(attribute), *copy->slot(attribute));
        // Geometry has no value of its own: it stays connected to what makes it.
        const host::SlotPtr driver = source->slot(attribute)->source.lock();
        if (driver && attribute->data == MFnData::kMesh)
            host::scene().connect(driver, copy->slot(attribute));
    }
    const std::vector<DagNodePtr> children = source->children();
    for (const DagNodePtr& child : children)
        duplicateBelow(child, copy);
    return copy;
}

} // namespace

MObject MFnDagNode::duplicate(bool, bool, MStatus* status) const {
    const DagNodePtr node = dagOf(object_);
    DagNodePtr copy;
    if (node && node->inScene() && node->parent())
        copy = duplicateBelow(node, node->parent()->selfDag());
    setStatus(status, copy != nullptr);
    return Access::make(copy);
}

MItDag::MItDag(TraversalType traversalType, MFn::Type filter, MStatus* status)
    : type_(traversalType), filter_(filter) {
    ++host::counters().dagWalks;
    reset();
    setStatus(status, MS::kSuccess);
}
MItDag::~MItDag() = default;

void MItDag::collect(const MDagPath& start, bool atRoot) {
    entries_.clear();
    index_ = 0;
    std::deque<Entry> open;
    const auto pushChildren = [&](const std::vector<DagNodePtr>& children, unsigned int depth) {
        std::vector<Entry> added;
        for (const DagNodePtr& child : children)
            added.push_back({PathAccess::make(child), depth});
        if (type_ == kBreadthFirst)
            open.insert(open.end(), added.begin(), added.end());
        else
            open.insert(open.begin(), added.begin(), added.end());
    };
    if (atRoot)
        pushChildren(host::scene().root()->children(), 1);
    else
        open.push_back({start, 0});
    while (!open.empty()) {
        const Entry entry = open.front();
        open.pop_front();
        const DagNodePtr node = PathAccess::last(entry.path);
        if (filter_ == MFn::kInvalid || node->hasFn(filter_))
            entries_.push_back(entry);
        pushChildren(node->children(), entry.depth + 1);
    }
}

MStatus MItDag::reset() {
    start_ = MDagPath();
    atRoot_ = true;
    collect(start_, true);
    return MS::kSuccess;
}
MStatus MItDag::reset(const MDagPath& path, TraversalType traversalType, MFn::Type filter) {
    if (!path.isValid())
        return MS::kFailure;
    type_ = traversalType;
    filter_ = filter;
    start_ = path;
    atRoot_ = false;
    collect(start_, false);
    return MS::kSuccess;
}
MStatus MItDag::reset(const MObject& rootNode, TraversalType traversalType, MFn::Type filter) {
    MDagPath path;
    const MStatus status = MDagPath::getAPathTo(rootNode, path);
    return status ? reset(path, traversalType, filter) : status;
}
MItDag::TraversalType MItDag::getType(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return type_;
}
MStatus MItDag::next() {
    if (isDone())
        return MS::kFailure;
    ++index_;
    return MS::kSuccess;
}
MStatus MItDag::prune() {
    if (isDone())
        return MS::kFailure;
    const DagNodePtr here = PathAccess::last(entries_[index_].path);
    entries_.erase(std::remove_if(entries_.begin() + static_cast<std::ptrdiff_t>(index_) + 1,
                                  entries_.end(),
                                  [&](const Entry& entry) {
                                      return PathAccess::last(entry.path)->isBelow(*here);
                                  }),
                   entries_.end());
    return MS::kSuccess;
}
bool MItDag::isDone(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return index_ >= entries_.size();
}
unsigned int MItDag::depth(MStatus* status) const {
    return setStatus(status, !isDone()) ? entries_[index_].depth : 0;
}
MObject MItDag::root(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return atRoot_ ? Access::make(host::scene().root()) : start_.node();
}
MObject MItDag::currentItem(MStatus* status) const {
    return setStatus(status, !isDone()) ? entries_[index_].path.node() : MObject();
}
MObject MItDag::item(MStatus* status) const {
    return currentItem(status);
}
MStatus MItDag::getPath(MDagPath& path) const {
    if (isDone())
        return MS::kFailure;
    path = entries_[index_].path;
    return MS::kSuccess;
}
MString MItDag::fullPathName(MStatus* status) const {
    return setStatus(status, !isDone()) ? entries_[index_].path.fullPathName() : MString();
}
MString MItDag::partialPathName(MStatus* status) const {
    return setStatus(status, !isDone()) ? entries_[index_].path.partialPathName() : MString();
}

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* status) {
    const MStatus result = reset(filter);
    setStatus(status, result.statusCode());
}
MItDependencyNodes::~MItDependencyNodes() = default;
MStatus MItDependencyNodes::reset(MFn::Type filter) {
    nodes_.clear();
    index_ = 0;
    for (const NodePtr& node : host::scene().nodes()) {
        if (filter == MFn::kInvalid || node->hasFn(filter))
            nodes_.push_back(Access::make(node));
    }
    return MS::kSuccess;
}
MObject MItDependencyNodes::thisNode(MStatus* status) {
    return setStatus(status, !isDone()) ? nodes_[index_] : MObject();
}
MObject MItDependencyNodes::item(MStatus* status) {
    return thisNode(status);
}
MStatus MItDependencyNodes::next() {
    if (isDone())
        return MS::kFailure;
    ++index_;
    return MS::kSuccess;
}
bool MItDependencyNodes::isDone(MStatus* status) {
    setStatus(status, MS::kSuccess);
    return index_ >= nodes_.size();
}
