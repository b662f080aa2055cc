// Names and paths of nodes, against a plain search through all of them.
#include "scene/core/Scene.h"
#include "support/Seed.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace host {
namespace {

DagNode* asDag(const NodePtr& node) {
    return dynamic_cast<DagNode*>(node.get());
}

std::string wholePath(const Node& node) {
    std::string path;
    for (const auto* at = dynamic_cast<const DagNode*>(&node); at && at->parent();
         at = at->parent())
        path = "|" + at->name + path;
    return path;
}

// Whether a path, whole or in part, names the node.
bool names(const std::string& path, const NodePtr& node) {
    if (!asDag(node))
        return node->name == path;
    const std::string whole = wholePath(*node);
    if (path[0] == '|')
        return whole == path;
    const std::string tail = "|" + path;
    return whole.size() >= tail.size() &&
           whole.compare(whole.size() - tail.size(), tail.size(), tail) == 0;
}

std::vector<NodePtr> plainFind(const std::string& path) {
    std::vector<NodePtr> found;
    for (const NodePtr& node : scene().nodes())
        if (names(path, node))
            found.push_back(node);
    return found;
}

// The shortest end of the path that names it alone, else the whole.
std::string plainPartial(const Node& node) {
    const std::string whole = wholePath(node);
    for (std::size_t bar = whole.rfind('|'); bar > 0; bar = whole.rfind('|', bar - 1))
        if (plainFind(whole.substr(bar + 1)).size() == 1)
            return whole.substr(bar + 1);
    return plainFind(whole.substr(1)).size() == 1 ? whole.substr(1) : whole;
}

class Names : public ::testing::Test {
protected:
    Names() { scene().reset(); }
    ~Names() override { scene().reset(); }

    NodePtr any() { return pick(scene().nodes()); }
    DagNodePtr anyDag() {
        const NodePtr node = any();
        DagNode* dag = asDag(node);
        return dag && random() % 5 != 0 ? dag->selfDag() : scene().root();
    }
    template <class List> typename List::value_type pick(const List& list) {
        return list[random() % list.size()];
    }

    std::mt19937 random{support::seed()};
};

TEST_F(Names, AreFoundAsAPlainSearchFindsThem) {
    SCOPED_TRACE("seed " + std::to_string(support::seed()));
    const std::vector<std::string> wanted = {"a", "b", "a1", "b#", "a#", "7", "", "persp", "a9"};
    std::vector<Removal> gone;
    for (int step = 0; step < 600; ++step) {
        const NodePtr node = any();
        switch (random() % 6) {
        case 0:
        case 1:
            scene().create("transform", pick(wanted), anyDag());
            break;
        case 2:
            scene().rename(*node, pick(wanted));
            break;
        case 3:
            if (DagNode* dag = asDag(node))
                scene().reparent(dag->selfDag(), anyDag());
            break;
        case 4:
            if (random() % 3 == 0)
                scene().create("script", pick(wanted));
            else if (Removal removal = scene().remove(node); !removal.items.empty())
                gone.push_back(std::move(removal));
            break;
        default:
            if (!gone.empty() && gone.back().items.front().parent &&
                gone.back().items.front().parent->inScene()) {
                scene().restore(gone.back());
                gone.pop_back();
            }
        }
        for (int look = 0; look < 3; ++look) {
            const NodePtr other = any();
            const std::string whole = wholePath(*other);
            std::vector<std::string> paths = {other->name, "|" + other->name, whole};
            if (whole.size() > 3)
                paths.push_back(whole.substr(random() % (whole.size() - 1)));
            for (const std::string& path : paths) {
                ASSERT_EQ(scene().find(path),
                          path.empty() ? std::vector<NodePtr>() : plainFind(path))
                    << path << " step " << step;
            }
            if (const DagNode* dag = asDag(other)) {
                ASSERT_EQ(scene().partialPath(*dag), plainPartial(*dag)) << "step " << step;
            }
        }
    }
    // No two names stand in each other's way.
    std::set<std::pair<const DagNode*, std::string>> taken;
    std::set<std::string> outside, inside;
    for (const NodePtr& node : scene().nodes()) {
        const DagNode* dag = asDag(node);
        (dag ? inside : outside).insert(node->name);
        EXPECT_TRUE(taken.insert({dag ? dag->parent() : nullptr, node->name}).second);
    }
    for (const std::string& name : outside)
        EXPECT_EQ(inside.count(name), 0u) << name;
}

TEST_F(Names, NumbersFillTheFirstGap) {
    const auto make = [](const DagNodePtr& parent = nullptr) {
        return scene().create("transform", "", parent);
    };
    std::vector<NodePtr> made;
    for (int i = 0; i < 30; ++i)
        made.push_back(make());
    EXPECT_EQ(made.back()->name, "transform30");
    scene().remove(made[11]);
    EXPECT_EQ(make()->name, "transform12");
    EXPECT_EQ(make()->name, "transform31");
    EXPECT_EQ(make(std::static_pointer_cast<DagNode>(made[0]))->name, "transform1");
    // A name outside the hierarchy counts everywhere, and is free again when it is given up.
    const NodePtr script = scene().create("script", "transform32");
    EXPECT_EQ(make()->name, "transform33");
    scene().rename(*script, "other");
    EXPECT_EQ(make()->name, "transform32");
    EXPECT_EQ(scene().rename(*made[3], "transform#"), "transform34");
    EXPECT_EQ(make()->name, "transform4");
}

} // namespace
} // namespace host
