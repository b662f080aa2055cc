#include "scene/core/NameIndex.h"

#include "scene/core/Node.h"

#include <algorithm>
#include <cctype>

namespace host {

// A tree of paths from their end upwards. It branches only as far as needed to tell the nodes
// apart: where one node is left, the rest of its path is not spelled out.
struct NameIndex::Vertex {
    std::unordered_map<std::string, std::unique_ptr<Vertex>> above; // by the next name of the path
    std::vector<Node*> ending; // nodes whose path has no further name
    Node* only = nullptr;      // the one node, not spelled out further
    std::size_t count = 0;     // nodes here and above
};

namespace {

// The names of a path, from the node upwards.
class Climb {
public:
    explicit Climb(const Node& node) : at_(&node) {}

    bool isAtEnd() const { return !at_; }
    const std::string& name() const { return at_->name; }
    void up() {
        const auto* dag = dynamic_cast<const DagNode*>(at_);
        const DagNode* parent = dag ? dag->parent() : nullptr;
        at_ = parent && parent->parent() ? parent : nullptr; // the root has no name
    }

private:
    const Node* at_;
};

const DagNode* levelOf(const Node& node) {
    const auto* dag = dynamic_cast<const DagNode*>(&node);
    return dag ? dag->parent() : nullptr;
}

std::string stemOf(const std::string& name) {
    std::size_t digits = name.size();
    while (digits > 0 && std::isdigit(static_cast<unsigned char>(name[digits - 1])))
        --digits;
    return name.substr(0, digits);
}

// Whether the path of a node goes on with the parts, from `part` down to the first.
bool goesOn(Climb climb, const std::vector<std::string>& parts, std::size_t part) {
    for (; part > 0; --part, climb.up()) {
        if (parts[part - 1].empty())
            return climb.isAtEnd();
        if (climb.isAtEnd() || climb.name() != parts[part - 1])
            return false;
    }
    return true;
}

} // namespace

NameIndex::NameIndex() : root_(std::make_unique<Vertex>()) {
}

NameIndex::~NameIndex() = default;

void NameIndex::clear() {
    root_ = std::make_unique<Vertex>();
    levels_.clear();
}

void NameIndex::add(Node& node) {
    ++levels_[levelOf(node)].names[node.name];
    Climb climb(node);
    Vertex* at = root_.get();
    for (std::size_t depth = 0;; ++depth) {
        if (++at->count == 1) {
            at->only = &node;
            return;
        }
        if (Node* const resident = std::exchange(at->only, nullptr)) {
            Climb other(*resident);
            for (std::size_t i = 0; i < depth; ++i)
                other.up();
            // Both go up together as long as they have the same names.
            while (!climb.isAtEnd() && !other.isAtEnd() && climb.name() == other.name()) {
                at = (at->above[climb.name()] = std::make_unique<Vertex>()).get();
                at->count = 2;
                climb.up();
                other.up();
            }
            for (const auto& [path, which] :
                 {std::pair(climb, &node), std::pair(other, resident)}) {
                if (path.isAtEnd()) {
                    at->ending.push_back(which);
                    continue;
                }
                auto leaf = std::make_unique<Vertex>();
                leaf->only = which;
                leaf->count = 1;
                at->above[path.name()] = std::move(leaf);
            }
            return;
        }
        if (climb.isAtEnd()) {
            at->ending.push_back(&node);
            return;
        }
        std::unique_ptr<Vertex>& next = at->above[climb.name()];
        if (!next)
            next = std::make_unique<Vertex>();
        at = next.get();
        climb.up();
    }
}

void NameIndex::remove(Node& node) {
    Climb climb(node);
    for (Vertex* at = root_.get();;) {
        --at->count;
        if (at->only == &node) {
            at->only = nullptr;
            break;
        }
        if (climb.isAtEnd()) {
            at->ending.erase(std::find(at->ending.begin(), at->ending.end(), &node));
            break;
        }
        const auto next = at->above.find(climb.name());
        if (next->second->count == 1) {
            at->above.erase(next);
            break;
        }
        at = next->second.get();
        climb.up();
    }
    const DagNode* const parent = levelOf(node);
    const auto level = levels_.find(parent);
    const auto name = level->second.names.find(node.name);
    if (--name->second == 0)
        level->second.names.erase(name);
    nameFreed(node.name, parent);
    if (level->second.names.empty())
        levels_.erase(level);
}

// What is known of numbers in use holds no longer where this name counted.
void NameIndex::nameFreed(const std::string& name, const DagNode* parent) {
    const std::string stem = stemOf(name);
    if (!parent) {
        for (auto& [each, level] : levels_)
            level.taken.erase(stem);
        return;
    }
    for (const DagNode* each : {parent, static_cast<const DagNode*>(nullptr)}) {
        const auto level = levels_.find(each);
        if (level != levels_.end())
            level->second.taken.erase(stem);
    }
}

std::vector<Node*> NameIndex::find(const std::vector<std::string>& parts) const {
    std::vector<Node*> found;
    const Vertex* at = root_.get();
    std::size_t part = parts.size();
    for (; part > 0 && !at->only; --part) {
        if (parts[part - 1].empty())
            return at->ending; // only paths that end here
        const auto next = at->above.find(parts[part - 1]);
        if (next == at->above.end())
            return found;
        at = next->second.get();
    }
    if (at->only) {
        Climb climb(*at->only);
        for (std::size_t i = part; i < parts.size(); ++i)
            climb.up();
        if (goesOn(climb, parts, part))
            found.push_back(at->only);
        return found;
    }
    std::vector<const Vertex*> open = {at};
    while (!open.empty()) {
        const Vertex* const each = open.back();
        open.pop_back();
        if (each->only)
            found.push_back(each->only);
        found.insert(found.end(), each->ending.begin(), each->ending.end());
        for (const auto& [name, above] : each->above)
            open.push_back(above.get());
    }
    return found;
}

std::size_t NameIndex::partsNeeded(const Node& node) const {
    Climb climb(node);
    const Vertex* at = root_.get();
    for (std::size_t parts = 0;; ++parts, climb.up()) {
        if (at->count == 1)
            return std::max<std::size_t>(parts, 1);
        if (climb.isAtEnd())
            return 0;
        at = at->above.find(climb.name())->second.get();
    }
}

bool NameIndex::isTaken(const std::string& name, const Node& node, const DagNode* parent) const {
    const auto own = [&](const DagNode* level) {
        return node.inScene() && node.name == name && levelOf(node) == level ? 1 : 0;
    };
    const auto others = [&](const DagNode* level) {
        const auto found = levels_.find(level);
        if (found == levels_.end())
            return 0;
        const auto count = found->second.names.find(name);
        return count == found->second.names.end() ? 0 : count->second - own(level);
    };
    if (others(nullptr) > 0)
        return true;
    if (parent)
        return others(parent) > 0;
    const std::vector<Node*> all = find({name});
    return std::any_of(all.begin(), all.end(), [&](const Node* each) { return each != &node; });
}

unsigned long NameIndex::nextFree(const std::string& stem, unsigned long number, const Node& node,
                                  const DagNode* parent) {
    auto& taken = levels_[parent].taken;
    const auto known = taken.find(stem);
    const unsigned long first = number + 1;
    const bool helps =
        known != taken.end() && first >= known->second.first && first <= known->second.second;
    unsigned long candidate = helps ? known->second.second : first;
    while (isTaken(stem + std::to_string(candidate), node, parent))
        ++candidate;
    // A name of its own must not count as one in use later.
    if (!node.inScene())
        taken[stem] = {helps ? known->second.first : first, candidate};
    return candidate;
}

} // namespace host
