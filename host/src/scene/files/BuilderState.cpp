#include "scene/files/BuilderState.h"

#include <maya/MSelectionList.h>

namespace host {

MObject nodeInScene(const std::string& path) {
    MSelectionList list;
    MObject node;
    if (!path.empty() && list.add(path.c_str()) && list.length() == 1)
        list.getDependNode(0, node);
    return node;
}

namespace {

std::string lastPart(const std::string& path) {
    const std::size_t bar = path.rfind('|');
    return bar == std::string::npos ? path : path.substr(bar + 1);
}

// Whether a path, whole (from the first "|") or in part, means the node of that whole path.
bool means(const std::string& path, const std::string& full) {
    if (path.compare(0, 1, "|") == 0)
        return path == full;
    const std::string tail = "|" + path;
    return full.size() >= tail.size() &&
           full.compare(full.size() - tail.size(), tail.size(), tail) == 0;
}

} // namespace

// A path of the file. What the file made comes first: on import it may be called otherwise now.
MObject SceneBuilder::State::resolve(const std::string& path) const {
    if (path.compare(0, 1, ":") == 0)
        return nodeInScene(path.substr(1));
    const auto [first, last] = made.equal_range(lastPart(path));
    for (auto each = first; each != last; ++each)
        if (means(path, each->second.first) && each->second.second.isValid())
            return each->second.second.object();
    return nodeInScene(path);
}

// Whole path in the file of a node that `path` means there; the scene's own for one it did not
// make.
std::string SceneBuilder::State::pathInFile(const MObject& node, const std::string& path) const {
    const auto [first, last] = made.equal_range(lastPart(path));
    for (auto each = first; each != last; ++each)
        if (each->second.second.isValid() && each->second.second.object() == node)
            return each->second.first;
    const std::string own = nodePath(node);
    return own.compare(0, 1, "|") == 0 ? own : "|" + own;
}

} // namespace host
