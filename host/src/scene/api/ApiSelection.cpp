// MSelectionList.
#include "scene/api/ApiStatus.h"
#include "scene/core/Scene.h"
#include "scene/core/Selection.h"

#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <charconv>

using host::Access;
using host::DagNode;
using host::NodePtr;
using host::PlugAccess;
using host::SelectionItem;
using host::setStatus;

using ItemPtr = std::shared_ptr<const SelectionItem>;

namespace {

bool sameItem(const SelectionItem& a, const SelectionItem& b) {
    return a.node == b.node && a.slot == b.slot;
}

ItemPtr itemOf(const MObject& node) {
    const NodePtr found = Access::as<host::Node>(node);
    return found ? std::make_shared<SelectionItem>(SelectionItem{found, nullptr}) : nullptr;
}

std::string nameOf(const host::Node& node) {
    const auto* dag = dynamic_cast<const DagNode*>(&node);
    return dag && dag->inScene() ? host::scene().partialPath(*dag) : node.name;
}

// A plug by a path below a node: names by dots, elements in brackets. Null when there is none.
host::SlotPtr slotAt(host::Node& node, const std::string& path) {
    host::SlotPtr at;
    std::size_t begin = 0;
    while (begin <= path.size()) {
        std::size_t end = path.find('.', begin);
        end = end == std::string::npos ? path.size() : end;
        std::string part = path.substr(begin, end - begin);
        begin = end + 1;
        int index = -1;
        const std::size_t bracket = part.find('[');
        if (bracket != std::string::npos) {
            const char* last = part.data() + part.size() - 1;
            const auto [stop, code] = std::from_chars(part.data() + bracket + 1, last, index);
            if (code != std::errc() || stop != last || *last != ']' || index < 0)
                return nullptr;
            part.resize(bracket);
        }
        if (!at) {
            at = node.slot(part);
        } else {
            host::SlotPtr next;
            for (std::size_t i = 0; i < at->attribute->children.size() && !next; ++i) {
                const host::Attribute& child = *at->attribute->children[i];
                if (child.name == part || child.shortName == part)
                    next = at->child(i);
            }
            at = next;
        }
        if (at && index >= 0)
            at = at->element(index);
        if (!at)
            return nullptr;
    }
    return at;
}

} // namespace

MSelectionList::MSelectionList() = default;
MSelectionList::MSelectionList(const MSelectionList& other) = default;
MSelectionList::~MSelectionList() = default;
MSelectionList& MSelectionList::operator=(const MSelectionList& other) = default;

MStatus MSelectionList::clear() {
    items_.clear();
    return MS::kSuccess;
}
bool MSelectionList::isEmpty(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return items_.empty();
}
unsigned int MSelectionList::length(MStatus* status) const {
    setStatus(status, MS::kSuccess);
    return static_cast<unsigned int>(items_.size());
}
MStatus MSelectionList::getDependNode(unsigned int index, MObject& node) const {
    if (index >= items_.size())
        return MS::kFailure;
    node = Access::make(items_[index]->node);
    return MS::kSuccess;
}
MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path) const {
    if (index >= items_.size())
        return MS::kFailure;
    return MDagPath::getAPathTo(Access::make(items_[index]->node), path);
}
MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path, MObject& component) const {
    component = MObject::kNullObj;
    return getDagPath(index, path);
}
MStatus MSelectionList::getPlug(unsigned int index, MPlug& plug) const {
    if (index >= items_.size() || !items_[index]->slot)
        return MS::kFailure;
    plug = PlugAccess::make(items_[index]->slot);
    return MS::kSuccess;
}
MStatus MSelectionList::getSelectionStrings(unsigned int index, MStringArray& array) const {
    array.clear();
    if (index >= items_.size())
        return MS::kFailure;
    const SelectionItem& item = *items_[index];
    array.append(item.slot ? PlugAccess::make(item.slot).name() : nameOf(*item.node).c_str());
    return MS::kSuccess;
}
MStatus MSelectionList::getSelectionStrings(MStringArray& array) const {
    array.clear();
    for (unsigned int i = 0; i < length(); ++i) {
        MStringArray one;
        getSelectionStrings(i, one);
        array.append(one[0]);
    }
    return MS::kSuccess;
}

MStatus MSelectionList::add(const MString& matchString, const bool) {
    const std::string text = matchString.asChar();
    const std::size_t dot =
        text.find('.', text.rfind('|') == std::string::npos ? 0 : text.rfind('|'));
    const std::string nodeName = text.substr(0, dot);
    const std::vector<NodePtr> found = host::scene().find(nodeName);
    if (found.empty())
        return MS::kInvalidParameter;
    const bool wild = nodeName.find_first_of("*?") != std::string::npos;
    if (found.size() > 1 && !wild)
        return MS::kFailure; // more than one object of that name
    std::vector<ItemPtr> added;
    for (const NodePtr& node : found) {
        host::SlotPtr slot;
        if (dot != std::string::npos && !(slot = slotAt(*node, text.substr(dot + 1)))) {
            if (wild)
                continue;
            return MS::kInvalidParameter;
        }
        added.push_back(std::make_shared<SelectionItem>(SelectionItem{node, slot}));
    }
    if (added.empty())
        return MS::kInvalidParameter;
    items_.insert(items_.end(), added.begin(), added.end());
    return MS::kSuccess;
}
MStatus MSelectionList::add(const MObject& node, const bool mergeWithExisting) {
    const ItemPtr item = itemOf(node);
    if (!item)
        return MS::kInvalidParameter;
    if (!mergeWithExisting || !hasItem(node))
        items_.push_back(item);
    return MS::kSuccess;
}
MStatus MSelectionList::add(const MDagPath& path, const MObject&, const bool mergeWithExisting) {
    return add(path.node(), mergeWithExisting);
}
MStatus MSelectionList::add(const MPlug& plug, const bool mergeWithExisting) {
    if (plug.isNull())
        return MS::kInvalidParameter;
    const auto item = std::make_shared<SelectionItem>(
        SelectionItem{PlugAccess::slot(plug)->node.self(), PlugAccess::slot(plug)});
    const bool there = std::any_of(items_.begin(), items_.end(),
                                   [&](const ItemPtr& other) { return sameItem(*other, *item); });
    if (!mergeWithExisting || !there)
        items_.push_back(item);
    return MS::kSuccess;
}
MStatus MSelectionList::remove(unsigned int index) {
    if (index >= items_.size())
        return MS::kFailure;
    items_.erase(items_.begin() + index);
    return MS::kSuccess;
}
MStatus MSelectionList::replace(unsigned int index, const MObject& node) {
    const ItemPtr item = itemOf(node);
    if (index >= items_.size() || !item)
        return MS::kFailure;
    items_[index] = item;
    return MS::kSuccess;
}
bool MSelectionList::hasItem(const MObject& node, MStatus* status) const {
    setStatus(status, MS::kSuccess);
    const NodePtr wanted = Access::as<host::Node>(node);
    return std::any_of(items_.begin(), items_.end(),
                       [&](const ItemPtr& item) { return item->node == wanted && !item->slot; });
}
bool MSelectionList::hasItem(const MDagPath& path, const MObject&, MStatus* status) const {
    return hasItem(path.node(), status);
}
MStatus MSelectionList::merge(const MSelectionList& other, const MergeStrategy strategy) {
    for (const ItemPtr& item : other.items_) {
        const auto found = std::find_if(items_.begin(), items_.end(),
                                        [&](const ItemPtr& own) { return sameItem(*own, *item); });
        if (strategy == kMergeNormal) {
            if (found == items_.end())
                items_.push_back(item);
        } else if (found != items_.end()) {
            items_.erase(found);
        } else if (strategy == kXORWithList) {
            items_.push_back(item);
        }
    }
    return MS::kSuccess;
}
