// Nodes, and the places on them that hold values.
#pragma once

#include "scene/core/Attribute.h"
#include "scene/core/TypeRegistry.h"

#include <maya/MMatrix.h>
#include <maya/MTime.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

class MPlug;
class MPxNode;

namespace host {

class Node;

/// A number, a text, or data; nothing means the attribute's default.
using PlugValue = std::variant<std::monostate, double, std::string, ObjectPtr>;

/// One place for a value on a node: an attribute, an element of an array attribute, or a child of
/// either. Lives as long as its node.
class Slot : public std::enable_shared_from_this<Slot> {
public:
    Slot(Node& owner, AttributePtr description, Slot* above, int logicalIndex = -1);

    bool isElement() const { return index >= 0; }
    bool isArray() const { return attribute->array && !isElement(); }
    bool isCompound() const { return !isArray() && !attribute->children.empty(); }
    std::shared_ptr<Slot> child(std::size_t position);
    std::shared_ptr<Slot> element(int logicalIndex); ///< made when missing

    Node& node;
    const AttributePtr attribute;
    Slot* const parent; ///< array of an element, compound of a child, else null
    const int index;

    PlugValue value;
    std::optional<bool> locked, keyable, channelBox; ///< where they differ from the attribute
    std::map<int, std::shared_ptr<Slot>> elements;
    std::vector<std::shared_ptr<Slot>> children;
    std::weak_ptr<Slot> source;
    std::vector<std::weak_ptr<Slot>> destinations;
};

using SlotPtr = std::shared_ptr<Slot>;

class Node : public Object {
public:
    explicit Node(const NodeType& nodeType);
    ~Node() override;

    MFn::Type apiType() const override;
    bool hasFn(MFn::Type type) const override;
    bool inScene() const override { return inScene_; }

    const std::string& typeName() const { return typeName_; }
    unsigned typeId() const { return typeId_; }
    const std::string& pluginName() const { return pluginName_; }
    MPxNode* userNode() const { return user_.get(); }
    std::shared_ptr<Node> self() { return std::static_pointer_cast<Node>(shared_from_this()); }

    /// Attributes of the type first, then the node's own, in the order they were added; children
    /// after their parents.
    std::vector<AttributePtr> attributes() const;
    AttributePtr findAttribute(const std::string& longOrShortName) const;
    void addAttribute(AttributePtr attribute);
    bool removeAttribute(const AttributePtr& attribute);

    /// The place of an attribute of this node; null when it has no such one. Below arrays the
    /// element 0 is meant.
    SlotPtr slot(const AttributePtr& attribute);
    SlotPtr slot(const std::string& name);

    /// The value after connections and computation.
    PlugValue evaluate(Slot& slot, const MTime& when);
    double number(Slot& slot, const MTime& when);
    double number(const std::string& attribute); ///< now; 0 without such an attribute
    std::string text(Slot& slot, const MTime& when);
    ObjectPtr data(Slot& slot, const MTime& when);

    std::string name;
    bool locked = false;
    bool isDefault = false; ///< part of every scene: not saved, not deletable

protected:
    /// Values that are computed rather than set. False: the slot's own value holds.
    virtual bool compute(Slot& slot, const MTime& when, PlugValue& value);

private:
    friend class Scene;
    friend struct NodeAccess;

    std::string typeName_;
    unsigned typeId_;
    MFn::Type apiType_;
    std::string pluginName_;
    std::vector<AttributePtr> typeAttributes_;
    std::vector<AttributePtr> ownAttributes_;
    std::map<const Attribute*, SlotPtr> slots_; ///< of attributes without parent
    std::unique_ptr<MPxNode> user_;
    bool inScene_ = false;
};

using NodePtr = std::shared_ptr<Node>;

class DagNode : public Node {
public:
    using Node::Node;

    bool isTransform() const;
    MMatrix localMatrix(const MTime& when);
    MMatrix worldMatrix(const MTime& when);
    DagNode* parent() const { return parent_; }
    std::shared_ptr<DagNode> selfDag() {
        return std::static_pointer_cast<DagNode>(shared_from_this());
    }
    const std::vector<std::shared_ptr<DagNode>>& children() const { return children_; }
    bool isBelow(const DagNode& other) const;

protected:
    bool compute(Slot& slot, const MTime& when, PlugValue& value) override;

private:
    friend class Scene;

    DagNode* parent_ = nullptr; ///< null for the root and for nodes outside the scene
    std::vector<std::shared_ptr<DagNode>> children_;
};

using DagNodePtr = std::shared_ptr<DagNode>;

/// Makes the connection between an MPxNode and its node.
struct NodeAccess {
    static void attach(Node& node, MPxNode* user);
    static Node* nodeOf(const MPxNode& user);
    static void construct(Node& node); ///< runs postConstructor
};

/// The way from plugs to slots and back.
struct PlugAccess {
    static MPlug make(const SlotPtr& slot);
    static const SlotPtr& slot(const MPlug& plug);
};

} // namespace host
