#pragma once

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <string>
#include <vector>

namespace host::script {

/// Notices what happens to one node, or to one attribute of it, by comparing how it is with how
/// it was at the last look. Values that come through connections and from curves count too.
/// Plug-in data count as changed when the plug got others, not when they are edited in place.
class NodeWatch {
public:
    enum class Kind {
        AttributeChange,
        AttributeAdded,
        AttributeDeleted,
        ConnectionChange,
        NodeNameChanged,
        NodeDeleted
    };

    /// `name` is "node.attribute", or a node for the last two kinds. Throws ScriptError when there
    /// is no such node, or no such attribute where it has to be there already.
    NodeWatch(Kind kind, const std::string& name);

    /// Whether it happened since the last call.
    bool happened();
    /// False once the node left the scene.
    bool nodeExists() const;

private:
    struct Look {
        bool attributeExists = false;
        std::string text;          ///< the value, the connections, or the name
        std::vector<MObject> data; ///< of plug-ins
    };
    Look look() const;

    Kind kind_;
    MObjectHandle node_;
    std::string attribute_;
    Look last_;
    bool existed_ = true;
};

} // namespace host::script
