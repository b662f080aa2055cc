#include "scene/core/Scene.h"

#include "foundation/Events.h"
#include "foundation/UndoQueue.h"
#include "scene/core/Data.h"
#include "scene/core/Membership.h"
#include "scene/core/Selection.h"
#include "scene/core/TimeState.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <unordered_set>
#include <utility>

namespace host {
namespace {

DagNode* asDag(const NodePtr& node) {
    return dynamic_cast<DagNode*>(node.get());
}

// The last part of a name that may hold namespaces.
bool isNameCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == ':' ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::string legalName(const std::string& wanted) {
    std::string name;
    for (char c : wanted)
        name += isNameCharacter(c) ? c : '_';
    if (!name.empty() && std::isdigit(static_cast<unsigned char>(name[0])))
        name.insert(name.begin(), '_');
    return name;
}

// `*` stands for any run of characters within a namespace, `?` for one.
bool matches(const char* pattern, const char* text) {
    const char* star = nullptr;
    const char* retry = nullptr;
    while (*text) {
        if (*pattern == *text || *pattern == '?') {
            ++pattern;
            ++text;
        } else if (*pattern == '*') {
            star = pattern++;
            retry = text;
        } else if (star && *retry != ':') {
            pattern = star + 1;
            text = ++retry;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return *pattern == '\0';
}

std::vector<std::string> pathParts(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= path.size(); ++i) {
        if (i == path.size() || path[i] == '|') {
            parts.push_back(path.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    return parts;
}

// Whether the lowest names of the node's path are the parts; a first empty part anchors at the top.
bool pathMatches(const DagNode& node, std::vector<std::string> parts) {
    const bool anchored = parts.size() > 1 && parts.front().empty();
    if (anchored)
        parts.erase(parts.begin());
    const DagNode* at = &node;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (!at || !at->parent() || !matches(part->c_str(), at->name.c_str()))
            return false;
        at = at->parent();
    }
    return !anchored || (at && !at->parent());
}

// The end of a path with so many names, or all there are.
std::string lowestNames(const DagNode& node, std::size_t count) {
    std::vector<const std::string*> names;
    for (const DagNode* at = &node; at->parent() && names.size() < count; at = at->parent())
        names.push_back(&at->name);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path += (path.empty() ? "" : "|") + **name;
    return path;
}

bool isHistory(const Node& node) {
    return !node.isDefault && !node.locked &&
           (node.hasFn(MFn::kAnimCurve) || node.hasFn(MFn::kPolyCreator));
}

bool isAmong(const std::vector<Removal::Item>& items, const Node& node) {
    return std::any_of(items.begin(), items.end(),
                       [&](const Removal::Item& item) { return item.node.get() == &node; });
}

} // namespace

Scene& scene() {
    static Scene only;
    return only;
}

bool sceneModified() {
    return scene().isModified();
}
void setSceneModified(bool modified) {
    scene().setModified(modified);
}

void resetScene() {
    scene().reset();
    MDistance::setUIUnit(MDistance::kCentimeters);
    MAngle::setUIUnit(MAngle::kDegrees);
    timeline::setUnit(MTime::kFilm);
}

Scene::Scene() {
    makeDefaults();
}

void Scene::makeDefaults() {
    NodeType world;
    world.name = "dagRoot";
    world.apiType = MFn::kWorld;
    root_ = std::make_shared<DagNode>(world);
    root_->inScene_ = true;
    root_->isDefault = true;

    const auto addDefault = [this](const char* type, const char* name,
                                   const DagNodePtr& parent = nullptr) {
        NodePtr node = create(type, name, parent);
        node->isDefault = true;
        return node;
    };
    addDefault("time", "time1");
    addDefault("resolution", "defaultResolution");
    static const struct {
        const char* name;
        double translate[3], rotate[3];
        bool ortho;
    } cameras[] = {
        {"persp", {28.0, 21.0, 28.0}, {-27.938, 45.0, 0.0}, false},
        {"top", {0.0, 1000.1, 0.0}, {-90.0, 0.0, 0.0}, true},
        {"front", {0.0, 0.0, 1000.1}, {0.0, 0.0, 0.0}, true},
        {"side", {1000.1, 0.0, 0.0}, {0.0, 90.0, 0.0}, true},
    };
    const double degrees = std::acos(-1.0) / 180.0;
    for (const auto& camera : cameras) {
        const NodePtr transform = addDefault("transform", camera.name);
        const NodePtr shape = addDefault("camera", (camera.name + std::string("Shape")).c_str(),
                                         std::static_pointer_cast<DagNode>(transform));
        for (std::size_t i = 0; i < 3; ++i) {
            transform->slot("translate")->child(i)->value = camera.translate[i];
            transform->slot("rotate")->child(i)->value = camera.rotate[i] * degrees;
        }
        transform->slot("visibility")->value = 0.0;
        shape->slot("centerOfInterest")->value = camera.ortho ? 1000.1 : 44.82186966202994;
        shape->slot("renderable")->value = camera.ortho ? 0.0 : 1.0;
        if (camera.ortho) {
            shape->slot("orthographic")->value = 1.0;
            shape->slot("orthographicWidth")->value = 30.0;
        }
    }
    modified_ = false;
}

void Scene::reset() {
    setActiveSelection(MSelectionList());
    undoQueue().flush();
    for (const NodePtr& node : nodes_) {
        node->inScene_ = false;
        // Nodes hold each other through connections; let go so that each can end.
        for (auto& [attribute, slot] : node->slots_) {
            slot->destinations.clear();
            slot->source.reset();
        }
        if (DagNode* dag = asDag(node)) {
            dag->children_.clear();
            dag->parent_ = nullptr;
        }
    }
    root_->children_.clear();
    root_->inScene_ = false;
    // The old nodes end last: what plug-ins do in their destructors finds the new scene.
    const std::vector<NodePtr> old = std::move(nodes_);
    nodes_.clear();
    names_.clear();
    timeline::reset();
    makeDefaults();
    changes::notify();
}

void Scene::touch() {
    modified_ = true;
    changes::notify();
}

namespace renames {

namespace {

std::map<int, Listener>& listeners() {
    static std::map<int, Listener> all;
    return all;
}

} // namespace

int listen(Listener listener) {
    static int last = 0;
    listeners().emplace(++last, std::move(listener));
    return last;
}
void removeListener(int id) {
    listeners().erase(id);
}

} // namespace renames

namespace {

void tellName(const NodePtr& node, const std::string& before) {
    const auto all = renames::listeners(); // one may remove itself
    for (const auto& [id, listener] : all) {
        if (renames::listeners().count(id))
            listener(node, before);
    }
}

} // namespace

void Scene::unindex(Node& node) {
    names_.remove(node);
    if (const auto* dag = dynamic_cast<const DagNode*>(&node))
        for (const DagNodePtr& child : dag->children_)
            unindex(*child);
}

void Scene::index(Node& node) {
    names_.add(node);
    if (const auto* dag = dynamic_cast<const DagNode*>(&node))
        for (const DagNodePtr& child : dag->children_)
            index(*child);
}

std::string Scene::uniqueName(const std::string& wanted, const Node& node,
                              const DagNode* parent) const {
    std::string name = legalName(wanted);
    if (name.empty())
        name = node.typeName();
    // A trailing '#' asks for the first free number.
    const bool numbered = !wanted.empty() && wanted.back() == '#';
    if (numbered)
        name.pop_back();
    if (!numbered && !names_.isTaken(name, node, parent))
        return name;
    std::size_t digits = name.size();
    while (digits > 0 && std::isdigit(static_cast<unsigned char>(name[digits - 1])))
        --digits;
    const std::string stem = name.substr(0, digits);
    const std::string tail = name.substr(digits);
    const unsigned long number = tail.empty() || tail.size() > 9 ? 0 : std::stoul(tail);
    return stem + std::to_string(names_.nextFree(stem, number, node, parent));
}

std::size_t Scene::position(const NodePtr& node) const {
    return static_cast<std::size_t>(std::find(nodes_.begin(), nodes_.end(), node) - nodes_.begin());
}

void Scene::join(const NodePtr& node, const std::string& name, const DagNodePtr& parent) {
    DagNode* dag = asDag(node);
    DagNode* above = dag ? (parent ? parent.get() : root_.get()) : nullptr;
    // Without a name the type's own with a number, as in "transform1".
    node->name = uniqueName(name.empty() ? node->typeName() + "#" : name, *node, above);
    if (dag) {
        dag->parent_ = above;
        above->children_.push_back(dag->selfDag());
    }
    node->inScene_ = true;
    nodes_.push_back(node);
    names_.add(*node);
    touch();
    tellName(node, {});
}

void Scene::insert(const NodePtr& node, const std::string& name, const DagNodePtr& parent) {
    join(node, name, parent);
    membership::tell(node, membership::Change::Joined);
}

NodePtr Scene::create(const std::string& type, const std::string& name, const DagNodePtr& parent) {
    const NodePtr node = typeRegistry().make(type);
    if (!node)
        return nullptr;
    join(node, name, parent);
    NodeAccess::construct(*node);
    membership::tell(node, membership::Change::Joined);
    return node;
}

SlotPtr heldSlot(const SlotPtr& slot) {
    return slot ? SlotPtr(slot->node.self(), slot.get()) : nullptr;
}

std::vector<std::pair<SlotPtr, SlotPtr>> connectionsOf(const Slot& slot) {
    std::vector<std::pair<SlotPtr, SlotPtr>> found;
    const auto add = [&found](const Slot& at, const auto& addBelow) -> void {
        const SlotPtr here = heldSlot(std::const_pointer_cast<Slot>(at.shared_from_this()));
        if (const SlotPtr source = at.source.lock())
            found.emplace_back(heldSlot(source), here);
        for (const std::weak_ptr<Slot>& weak : at.destinations) {
            if (const SlotPtr destination = weak.lock())
                found.emplace_back(here, heldSlot(destination));
        }
        for (const SlotPtr& child : at.children)
            addBelow(*child, addBelow);
        for (const auto& [index, element] : at.elements)
            addBelow(*element, addBelow);
    };
    add(slot, add);
    return found;
}

bool Scene::feedsOnly(const Node& feeder, const std::vector<Removal::Item>& items) {
    for (const auto& [attribute, slot] : feeder.slots_) {
        for (const auto& [source, destination] : connectionsOf(*slot)) {
            if (&source->node == &feeder && !isAmong(items, destination->node))
                return false;
        }
    }
    return true;
}

Removal Scene::remove(const NodePtr& node) {
    Removal removal;
    if (!node || !node->inScene_ || node->isDefault || node == root_)
        return removal;
    const auto collect = [&](const NodePtr& at, const auto& collectBelow) -> void {
        Removal::Item item;
        item.node = at;
        item.order = position(at);
        if (DagNode* dag = asDag(at)) {
            const auto& siblings = dag->parent_->children_;
            item.parent = dag->parent_->selfDag();
            item.position = static_cast<std::size_t>(
                std::find(siblings.begin(), siblings.end(), dag->selfDag()) - siblings.begin());
            removal.items.push_back(item);
            for (const DagNodePtr& child : dag->children_)
                collectBelow(child, collectBelow);
        } else {
            removal.items.push_back(item);
        }
    };
    collect(node, collect);

    // History that fed only what goes, curves and creators of primitives, goes with it; the list
    // grows meanwhile.
    for (std::size_t i = 0; i < removal.items.size(); ++i) {
        const NodePtr going = removal.items[i].node;
        for (const auto& [attribute, slot] : going->slots_) {
            for (const auto& connection : connectionsOf(*slot)) {
                const NodePtr feeder = connection.first->node.self();
                if (isHistory(*feeder) && !isAmong(removal.items, *feeder) &&
                    feedsOnly(*feeder, removal.items))
                    collect(feeder, collect);
            }
        }
    }
    for (const Removal::Item& item : removal.items) {
        for (const auto& [attribute, slot] : item.node->slots_) {
            const auto some = connectionsOf(*slot);
            removal.connections.insert(removal.connections.end(), some.begin(), some.end());
        }
    }
    std::sort(removal.connections.begin(), removal.connections.end());
    removal.connections.erase(std::unique(removal.connections.begin(), removal.connections.end()),
                              removal.connections.end());
    for (const auto& [source, destination] : removal.connections)
        disconnect(source, destination);

    for (const Removal::Item& item : removal.items)
        names_.remove(*item.node);
    for (auto item = removal.items.rbegin(); item != removal.items.rend(); ++item) {
        if (DagNode* dag = asDag(item->node)) {
            auto& siblings = dag->parent_->children_;
            siblings.erase(std::find(siblings.begin(), siblings.end(), dag->selfDag()));
            dag->parent_ = nullptr;
        }
        item->node->inScene_ = false;
        nodes_.erase(std::find(nodes_.begin(), nodes_.end(), item->node));
    }
    touch();
    // What is selected and gone is no longer selected.
    setActiveSelection(activeSelection());
    for (const Removal::Item& item : removal.items)
        membership::tell(item.node, membership::Change::Left);
    return removal;
}

void Scene::restore(const Removal& removal) {
    std::vector<std::pair<NodePtr, std::string>> renamed;
    std::vector<NodePtr> joined;
    for (const Removal::Item& item : removal.items) {
        if (item.node->inScene_)
            continue;
        joined.push_back(item.node);
        const std::string before = item.node->name;
        if (DagNode* dag = asDag(item.node)) {
            DagNode* above = item.parent->inScene_ ? item.parent.get() : root_.get();
            auto& siblings = above->children_;
            dag->parent_ = above;
            siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(
                                                   std::min(item.position, siblings.size())),
                            dag->selfDag());
            item.node->name = uniqueName(item.node->name, *item.node, above);
        } else {
            item.node->name = uniqueName(item.node->name, *item.node, nullptr);
        }
        if (item.node->name != before)
            renamed.emplace_back(item.node, before);
        item.node->inScene_ = true;
        names_.add(*item.node);
    }
    // Places among all nodes, lowest first so that each stands where it was.
    std::vector<Removal::Item> ordered = removal.items;
    std::sort(ordered.begin(), ordered.end(),
              [](const auto& a, const auto& b) { return a.order < b.order; });
    for (const Removal::Item& item : ordered) {
        if (std::find(nodes_.begin(), nodes_.end(), item.node) == nodes_.end())
            nodes_.insert(nodes_.begin() +
                              static_cast<std::ptrdiff_t>(std::min(item.order, nodes_.size())),
                          item.node);
    }
    for (const auto& [source, destination] : removal.connections)
        connect(source, destination);
    touch();
    for (const auto& [node, before] : renamed)
        tellName(node, before);
    for (const NodePtr& node : joined)
        membership::tell(node, membership::Change::Joined);
}

bool Scene::reparent(const DagNodePtr& node, const DagNodePtr& newParent, std::size_t position) {
    const DagNodePtr above = newParent ? newParent : root_;
    if (!node || node == root_ || !node->inScene_ || node == above || above->isBelow(*node))
        return false;
    const std::string name = uniqueName(node->name, *node, above.get());
    unindex(*node);
    auto& old = node->parent_->children_;
    old.erase(std::find(old.begin(), old.end(), node));
    node->parent_ = above.get();
    auto& siblings = above->children_;
    siblings.insert(
        siblings.begin() + static_cast<std::ptrdiff_t>(std::min(position, siblings.size())), node);
    const std::string before = std::exchange(node->name, name);
    index(*node);
    touch();
    if (node->name != before)
        tellName(node, before);
    return true;
}

std::string Scene::rename(Node& node, const std::string& wanted) {
    const DagNode* dag = dynamic_cast<const DagNode*>(&node);
    const std::string before = node.name;
    const std::string after = uniqueName(wanted, node, dag ? dag->parent_ : nullptr);
    if (node.inScene_)
        unindex(node);
    node.name = after;
    if (node.inScene_) {
        index(node);
        touch();
        if (after != before)
            tellName(node.self(), before);
        events::emit("NameChanged");
    }
    return after;
}

std::vector<NodePtr> Scene::find(const std::string& pattern) const {
    std::vector<NodePtr> found;
    if (pattern.empty())
        return found;
    const std::vector<std::string> parts = pathParts(pattern);
    const auto keepIf = [&](const auto& isMeant) {
        for (const NodePtr& node : nodes_)
            if (isMeant(*node))
                found.push_back(node);
    };
    if (pattern.find_first_of("*?") != std::string::npos) {
        keepIf([&](const Node& node) {
            const auto* dag = dynamic_cast<const DagNode*>(&node);
            return dag ? pathMatches(*dag, parts)
                       : parts.size() == 1 && matches(pattern.c_str(), node.name.c_str());
        });
        return found;
    }
    std::vector<Node*> meant = names_.find(parts);
    if (parts.size() > 1)
        meant.erase(
            std::remove_if(meant.begin(), meant.end(),
                           [](const Node* node) { return !dynamic_cast<const DagNode*>(node); }),
            meant.end());
    if (meant.size() == 1)
        found.push_back(meant.front()->self());
    else if (!meant.empty()) {
        const std::unordered_set<const Node*> all(meant.begin(), meant.end());
        keepIf([&](const Node& node) { return all.count(&node) > 0; });
    }
    return found;
}

bool Scene::hasUniqueName(const Node& node) const {
    return names_.find({node.name}).size() <= 1;
}

std::string Scene::fullPath(const DagNode& node) const {
    return node.parent_ ? "|" + lowestNames(node, static_cast<std::size_t>(-1)) : node.name;
}

std::string Scene::partialPath(const DagNode& node) const {
    if (!node.parent_ || !node.inScene_)
        return node.name;
    const std::size_t parts = names_.partsNeeded(node);
    return parts > 0 ? lowestNames(node, parts) : fullPath(node);
}

bool Scene::connect(const SlotPtr& source, const SlotPtr& destination) {
    if (!source || !destination || source == destination)
        return false;
    if (const SlotPtr old = destination->source.lock()) {
        if (old == source)
            return true;
        disconnect(old, destination);
    }
    destination->source = source;
    source->destinations.push_back(destination);
    touch();
    return true;
}

bool Scene::disconnect(const SlotPtr& source, const SlotPtr& destination) {
    if (!source || !destination || destination->source.lock() != source)
        return false;
    // The value that came through the connection stays.
    const PlugValue value = source->node.evaluate(*source, timeline::current());
    if (destination->attribute->isNumber() && std::holds_alternative<double>(value))
        destination->value = value;
    destination->source.reset();
    auto& list = source->destinations;
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](const std::weak_ptr<Slot>& weak) {
                                  const SlotPtr slot = weak.lock();
                                  return !slot || slot == destination;
                              }),
               list.end());
    touch();
    return true;
}

} // namespace host
