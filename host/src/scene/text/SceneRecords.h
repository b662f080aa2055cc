#pragma once
#include <optional>
#include <string>
#include <vector>

// One statement of a scene, between the traversal of the scene and the file forms on the one
// side, and between the readers and the scene they build on the other. Both file forms carry
// exactly these.
namespace host {

// A word is written bare (numbers, switches), a text between quotes.
struct Token {
    std::string text;
    bool quoted = false;
};

inline Token word(std::string text) {
    return {std::move(text), false};
}
inline Token quoted(std::string text) {
    return {std::move(text), true};
}

// `requires`: a plug-in the scene needs, and for which types.
struct Requirement {
    std::string plugin;
    std::string version;
    std::vector<std::string> nodeTypes;
    std::vector<std::string> dataTypes;
};

struct Units {
    std::string linear = "centimeter";
    std::string angle = "degree";
    std::string time = "film";
};

struct NodeRecord {
    std::string type;
    std::string name;
    std::string parent; // a path as far as needed to be unique; empty at the top and for DG nodes
    bool shared = false;
};

// `setAttr` of the current node. Without a value it only sets the switches.
struct AttrRecord {
    std::string plug; // short names with a leading dot: ".t", ".ktv[0:3]"
    std::optional<bool> keyable;
    std::optional<bool> locked;
    std::optional<bool> channelBox;
    std::vector<Token> hints; // other flags, with their arguments: "-s" 3, "-av", …
    std::string type;         // of -type; empty for plain numbers
    std::vector<Token> values;
    bool hasValue = false;
};

// `addAttr` of the current node, its flags as written.
struct AddAttrRecord {
    std::vector<Token> arguments;
};

} // namespace host
