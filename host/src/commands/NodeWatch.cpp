#include "commands/NodeWatch.h"

#include "scene/text/PlugText.h"
#include "script/Value.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>

#include <algorithm>

namespace host::script {

namespace {

bool speaksOfNode(NodeWatch::Kind kind) {
    return kind == NodeWatch::Kind::NodeNameChanged || kind == NodeWatch::Kind::NodeDeleted;
}

/// A null plug when the node has no such attribute (any more).
MPlug plugOf(const MObject& node, const std::string& attribute) {
    const MFnDependencyNode function(node);
    const std::string name = node.hasFn(MFn::kDagNode) ? MFnDagNode(node).fullPathName().asChar()
                                                       : std::string(function.name().asChar());
    MSelectionList list;
    MPlug plug;
    if (list.add((name + "." + attribute).c_str()))
        list.getPlug(0, plug);
    return plug;
}

void addValue(const MPlug& plug, std::string& text, std::vector<MObject>& data) {
    if (plug.isArray()) {
        for (unsigned i = 0; i < plug.numElements(); ++i) {
            const MPlug element = plug.elementByPhysicalIndex(i);
            text += "[" + std::to_string(element.logicalIndex()) + "]";
            addValue(element, text, data);
        }
        return;
    }
    if (plug.isCompound()) {
        for (unsigned i = 0; i < plug.numChildren(); ++i)
            addValue(plug.child(i), text, data);
        return;
    }
    AttrRecord record;
    if (valueToText(plug, record)) {
        for (const Token& word : record.values)
            text += word.text + '\0';
        return;
    }
    MObject object;
    if (plugKind(plug) == PlugKind::Plugin && plug.getValue(object))
        data.push_back(object);
}

void addConnections(const MPlug& plug, std::string& text) {
    MPlugArray others;
    plug.connectedTo(others, true, true);
    for (unsigned i = 0; i < others.length(); ++i)
        text += std::string(others[i].name().asChar()) + " ";
    text += ";";
    const unsigned below = plug.isArray() ? plug.numElements() : plug.numChildren();
    for (unsigned i = 0; i < below && (plug.isArray() || plug.isCompound()); ++i)
        addConnections(plug.isArray() ? plug.elementByPhysicalIndex(i) : plug.child(i), text);
}

} // namespace

NodeWatch::NodeWatch(Kind kind, const std::string& name) : kind_(kind) {
    const std::size_t dot = name.find('.', name.rfind('|') + 1);
    const std::string nodeName = name.substr(0, dot);
    if (dot != std::string::npos)
        attribute_ = name.substr(dot + 1);
    if (attribute_.empty() && !speaksOfNode(kind))
        throw ScriptError("No attribute was specified.");
    MSelectionList list;
    MObject node;
    if (nodeName.empty() || !list.add(nodeName.c_str()) || !list.getDependNode(0, node))
        throw ScriptError("No object matches name: " + name);
    node_ = MObjectHandle(node);
    last_ = look();
    if (!speaksOfNode(kind) && kind != Kind::AttributeAdded && !last_.attributeExists)
        throw ScriptError("No object matches name: " + name);
}

bool NodeWatch::nodeExists() const {
    return node_.isValid();
}

NodeWatch::Look NodeWatch::look() const {
    Look now;
    if (!node_.isValid())
        return now;
    const MObject node = node_.object();
    if (speaksOfNode(kind_)) {
        now.text = MFnDependencyNode(node).name().asChar();
        return now;
    }
    const MPlug plug = plugOf(node, attribute_);
    now.attributeExists = !plug.isNull();
    if (now.attributeExists && kind_ == Kind::AttributeChange)
        addValue(plug, now.text, now.data);
    if (now.attributeExists && kind_ == Kind::ConnectionChange)
        addConnections(plug, now.text);
    return now;
}

bool NodeWatch::happened() {
    const bool exists = nodeExists();
    const bool vanished = existed_ && !exists;
    existed_ = exists;
    if (!exists)
        return vanished && kind_ == Kind::NodeDeleted;
    Look before = look();
    std::swap(before, last_);
    switch (kind_) {
    case Kind::AttributeAdded:
        return last_.attributeExists && !before.attributeExists;
    case Kind::AttributeDeleted:
        return before.attributeExists && !last_.attributeExists;
    case Kind::NodeDeleted:
        return false;
    default:
        return before.attributeExists == last_.attributeExists &&
               (before.text != last_.text || before.data != last_.data);
    }
}

} // namespace host::script
