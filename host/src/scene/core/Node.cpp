#include "scene/core/Node.h"

#include "scene/core/Data.h"

#include <maya/MEulerRotation.h>
#include <maya/MPlug.h>
#include <maya/MPxNode.h>
#include <maya/MTransformationMatrix.h>

#include <algorithm>

namespace host {

Slot::Slot(Node& owner, AttributePtr description, Slot* above, int logicalIndex)
    : node(owner), attribute(std::move(description)), parent(above), index(logicalIndex) {
}

SlotPtr Slot::child(std::size_t position) {
    if (isArray() || position >= attribute->children.size())
        return nullptr;
    while (children.size() < attribute->children.size())
        children.push_back(
            std::make_shared<Slot>(node, attribute->children[children.size()], this));
    return children[position];
}

SlotPtr Slot::element(int logicalIndex) {
    if (!isArray() || logicalIndex < 0)
        return nullptr;
    SlotPtr& found = elements[logicalIndex];
    if (!found)
        found = std::make_shared<Slot>(node, attribute, this, logicalIndex);
    return found;
}

Node::Node(const NodeType& nodeType)
    : typeName_(nodeType.name), typeId_(nodeType.id), apiType_(nodeType.apiType),
      pluginName_(nodeType.plugin), typeAttributes_(nodeType.attributes) {
}

Node::~Node() = default;

MFn::Type Node::apiType() const {
    return apiType_;
}

bool Node::hasFn(MFn::Type type) const {
    if (type == apiType_ || type == MFn::kDependencyNode || type == MFn::kBase ||
        type == MFn::kNamedObject)
        return true;
    const NodeType* found = typeRegistry().node(typeName_);
    return found && std::count(found->functions.begin(), found->functions.end(), type) > 0;
}

std::vector<AttributePtr> Node::attributes() const {
    std::vector<AttributePtr> all;
    const auto add = [&all](const AttributePtr& attribute, const auto& addChildren) -> void {
        all.push_back(attribute);
        for (const AttributePtr& child : attribute->children)
            addChildren(child, addChildren);
    };
    for (const auto* list : {&typeAttributes_, &ownAttributes_}) {
        for (const AttributePtr& attribute : *list)
            add(attribute, add);
    }
    return all;
}

AttributePtr Node::findAttribute(const std::string& wanted) const {
    for (const AttributePtr& attribute : attributes()) {
        if (attribute->name == wanted || attribute->shortName == wanted)
            return attribute;
    }
    return nullptr;
}

void Node::addAttribute(AttributePtr attribute) {
    attribute->dynamic = true;
    ownAttributes_.push_back(std::move(attribute));
}

bool Node::removeAttribute(const AttributePtr& attribute) {
    const auto found = std::find(ownAttributes_.begin(), ownAttributes_.end(), attribute);
    if (found == ownAttributes_.end())
        return false;
    // Its place stays: the same attribute, put back, has its value and flags again.
    ownAttributes_.erase(found);
    return true;
}

SlotPtr Node::slot(const AttributePtr& attribute) {
    if (!attribute)
        return nullptr;
    const AttributePtr above = attribute->parent.lock();
    if (above) {
        SlotPtr holder = slot(above);
        if (holder && holder->isArray())
            holder = holder->element(0);
        if (!holder)
            return nullptr;
        for (std::size_t i = 0; i < above->children.size(); ++i) {
            if (above->children[i] == attribute)
                return holder->child(i);
        }
        return nullptr;
    }
    const auto has = [&](const std::vector<AttributePtr>& list) {
        return std::find(list.begin(), list.end(), attribute) != list.end();
    };
    if (!has(typeAttributes_) && !has(ownAttributes_))
        return nullptr;
    SlotPtr& found = slots_[attribute.get()];
    if (!found)
        found = std::make_shared<Slot>(*this, attribute, nullptr);
    return found;
}

SlotPtr Node::slot(const std::string& attributeName) {
    return slot(findAttribute(attributeName));
}

bool Node::compute(Slot&, const MTime&, PlugValue&) {
    return false;
}

namespace {

// What drives a place: its own connection, or the part of one to a compound or array above it.
SlotPtr driverOf(Slot& slot) {
    if (SlotPtr source = slot.source.lock())
        return source;
    const SlotPtr above = slot.parent ? driverOf(*slot.parent) : nullptr;
    if (!above)
        return nullptr;
    if (slot.isElement())
        return above->isArray() ? above->element(slot.index) : nullptr;
    const auto& children = slot.parent->attribute->children;
    const auto place = std::find(children.begin(), children.end(), slot.attribute);
    return above->isCompound() && place != children.end()
               ? above->child(static_cast<std::size_t>(place - children.begin()))
               : nullptr;
}

// Marks a place as being evaluated, so that a cycle of connections ends at a value.
class Evaluating {
public:
    explicit Evaluating(const Slot& slot)
        : cycle_(std::find(open().begin(), open().end(), &slot) != open().end()) {
        open().push_back(&slot);
    }
    ~Evaluating() { open().pop_back(); }
    Evaluating(const Evaluating&) = delete;
    Evaluating& operator=(const Evaluating&) = delete;
    bool isCycle() const { return cycle_; }

private:
    static std::vector<const Slot*>& open() {
        static thread_local std::vector<const Slot*> slots;
        return slots;
    }
    const bool cycle_;
};

} // namespace

PlugValue Node::evaluate(Slot& slot, const MTime& when) {
    const Evaluating evaluating(slot);
    const SlotPtr source = evaluating.isCycle() ? nullptr : driverOf(slot);
    if (source)
        return source->node.evaluate(*source, when);
    PlugValue value;
    if (compute(slot, when, value))
        return value;
    if (!std::holds_alternative<std::monostate>(slot.value))
        return slot.value;
    const Attribute& attribute = *slot.attribute;
    if (attribute.isNumber())
        return attribute.defaultNumber;
    if (attribute.kind == Attribute::Kind::Typed && attribute.data == MFnData::kString)
        return attribute.defaultText;
    return attribute.defaultData;
}

double Node::number(Slot& slot, const MTime& when) {
    const PlugValue value = evaluate(slot, when);
    const double* found = std::get_if<double>(&value);
    return found ? *found : 0.0;
}

double Node::number(const std::string& attributeName) {
    const SlotPtr found = slot(attributeName);
    return found ? number(*found, MTime(0.0, MTime::kInvalid)) : 0.0;
}

std::string Node::text(Slot& slot, const MTime& when) {
    const PlugValue value = evaluate(slot, when);
    if (const std::string* found = std::get_if<std::string>(&value))
        return *found;
    if (const ObjectPtr* object = std::get_if<ObjectPtr>(&value)) {
        if (const auto* string = dynamic_cast<const StringData*>(object->get()))
            return string->value.asChar();
    }
    return {};
}

ObjectPtr Node::data(Slot& slot, const MTime& when) {
    const PlugValue value = evaluate(slot, when);
    if (const ObjectPtr* found = std::get_if<ObjectPtr>(&value))
        return *found;
    if (const std::string* string = std::get_if<std::string>(&value))
        return std::make_shared<StringData>(string->c_str());
    return nullptr;
}

bool DagNode::isTransform() const {
    return hasFn(MFn::kTransform);
}

MMatrix DagNode::localMatrix(const MTime& when) {
    if (!isTransform())
        return MMatrix();
    const auto triple = [&](const char* attributeName, double out[3]) {
        const SlotPtr compound = slot(attributeName);
        for (std::size_t i = 0; i < 3; ++i)
            out[i] = compound ? number(*compound->child(i), when) : 0.0;
    };
    double translate[3], rotate[3], scale[3];
    triple("translate", translate);
    triple("rotate", rotate);
    triple("scale", scale);
    const SlotPtr order = slot("rotateOrder");
    MMatrix matrix;
    for (unsigned int i = 0; i < 3; ++i)
        matrix(i, i) = scale[i];
    matrix *= MEulerRotation(rotate[0], rotate[1], rotate[2],
                             static_cast<MEulerRotation::RotationOrder>(
                                 order ? static_cast<int>(number(*order, when)) : 0))
                  .asMatrix();
    for (unsigned int i = 0; i < 3; ++i)
        matrix(3, i) = translate[i];
    return matrix;
}

MMatrix DagNode::worldMatrix(const MTime& when) {
    MMatrix matrix = localMatrix(when);
    for (DagNode* above = parent_; above; above = above->parent_)
        matrix *= above->localMatrix(when);
    return matrix;
}

bool DagNode::isBelow(const DagNode& other) const {
    for (const DagNode* above = parent_; above; above = above->parent_) {
        if (above == &other)
            return true;
    }
    return false;
}

bool DagNode::compute(Slot& slot, const MTime& when, PlugValue& value) {
    if (slot.attribute->kind != Attribute::Kind::Matrix || slot.isArray())
        return false;
    const std::string& wanted = slot.attribute->name;
    MMatrix matrix;
    if (wanted == "worldMatrix")
        matrix = worldMatrix(when);
    else if (wanted == "worldInverseMatrix")
        matrix = worldMatrix(when).inverse();
    else if (wanted == "parentMatrix")
        matrix = parent_ ? parent_->worldMatrix(when) : MMatrix();
    else if (wanted == "parentInverseMatrix")
        matrix = parent_ ? parent_->worldMatrix(when).inverse() : MMatrix();
    else if (wanted == "matrix")
        matrix = localMatrix(when);
    else if (wanted == "inverseMatrix")
        matrix = localMatrix(when).inverse();
    else
        return false;
    value = ObjectPtr(std::make_shared<MatrixData>(matrix));
    return true;
}

void NodeAccess::attach(Node& node, MPxNode* user) {
    node.user_.reset(user);
    if (user)
        user->node_ = &node;
}

Node* NodeAccess::nodeOf(const MPxNode& user) {
    return user.node_;
}

void NodeAccess::construct(Node& node) {
    if (node.user_)
        node.user_->postConstructor();
}

MPlug PlugAccess::make(const SlotPtr& slot) {
    MPlug plug;
    if (slot) {
        plug.node_ = slot->node.self();
        plug.slot_ = slot;
    }
    return plug;
}

const SlotPtr& PlugAccess::slot(const MPlug& plug) {
    return plug.slot_;
}

} // namespace host
