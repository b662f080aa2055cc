#include "scene/core/Selection.h"

#include "foundation/Events.h"

#include <maya/MPlug.h>

namespace host {
namespace {

MSelectionList& current() {
    static MSelectionList list;
    return list;
}

} // namespace

MSelectionList activeSelection() {
    MSelectionList alive;
    for (unsigned int i = 0; i < current().length(); ++i) {
        MPlug plug;
        MObject node;
        if (current().getPlug(i, plug)) {
            if (Access::object(plug.node())->inScene())
                alive.add(plug);
        } else if (current().getDependNode(i, node) && Access::object(node)->inScene()) {
            alive.add(node);
        }
    }
    return alive;
}

void setActiveSelection(const MSelectionList& list) {
    const MSelectionList old = current();
    current() = list;
    current() = activeSelection();
    bool same = old.length() == current().length();
    for (unsigned int i = 0; same && i < old.length(); ++i) {
        MObject a, b;
        MPlug pa, pb;
        old.getDependNode(i, a);
        current().getDependNode(i, b);
        old.getPlug(i, pa);
        current().getPlug(i, pb);
        same = a == b && pa == pb;
    }
    if (!same)
        events::emit("SelectionChanged");
}

} // namespace host
