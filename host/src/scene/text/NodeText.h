#pragma once
#include "scene/text/SceneRecords.h"

#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <optional>
#include <string>
#include <vector>

// What of one node belongs into a scene file.
namespace host {

// Plug-in data that write themselves when their turn comes.
struct DataRecord {
    std::string plug;
    std::string type;
    MPlug source;
};

struct NodeText {
    std::vector<AddAttrRecord> added;
    std::vector<AttrRecord> values;
    std::vector<DataRecord> data;

    bool empty() const { return added.empty() && values.empty() && data.empty(); }
};

NodeText describeNode(const MObject& node);

// addAttr of a node, from its arguments; used by files and by the command. Undo is the caller's.
// Gives the attribute made, to be added to the node, or a null object with `error`.
MObject makeAttribute(const std::vector<Token>& arguments, const MObject& node, std::string& error);

} // namespace host
