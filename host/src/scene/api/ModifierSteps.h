#pragma once

#include "scene/core/Scene.h"

#include <functional>
#include <set>
#include <vector>

namespace host {

/// What a modifier does: pairs of doing and undoing, in order. Those before `done` are in effect.
class ModifierSteps {
public:
    struct Step {
        std::function<bool()> redo;
        std::function<void()> undo;
    };

    void add(Step step) { steps_.push_back(std::move(step)); }

    bool doAll() {
        const std::size_t before = done_;
        while (done_ < steps_.size()) {
            if (!steps_[done_].redo()) {
                while (done_ > before) // all or nothing
                    steps_[--done_].undo();
                return false;
            }
            ++done_;
        }
        return true;
    }

    // A node that an earlier step took out, with what it belonged to, needs no deleting any more.
    void noteRemoved(const Removal& removal) {
        for (const Removal::Item& item : removal.items)
            removed_.insert(item.node);
    }
    bool hasRemoved(Node& node) const { return removed_.count(node.self()) > 0; }

    void undoAll() {
        while (done_ > 0)
            steps_[--done_].undo();
    }

private:
    std::vector<Step> steps_;
    std::set<NodePtr> removed_;
    std::size_t done_ = 0;
};

} // namespace host
