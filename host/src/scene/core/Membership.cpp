#include "scene/core/Membership.h"

#include <map>
#include <utility>

namespace host::membership {

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

void tell(const std::shared_ptr<Node>& node, Change change) {
    const auto all = listeners(); // one may remove itself
    for (const auto& [id, listener] : all) {
        if (listeners().count(id))
            listener(node, change);
    }
}

} // namespace host::membership
