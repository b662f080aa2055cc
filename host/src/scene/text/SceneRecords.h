#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

class MPxData;

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

// Something about a scene file that stops reading or writing it; what() is for the user.
struct FileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Where statements of a scene are written to. Every call throws FileError when bytes cannot be
// written.
class SceneSink {
public:
    virtual ~SceneSink() = default;
    virtual void begin(const std::string& fileName) = 0;
    virtual void requirement(const Requirement& requirement) = 0;
    virtual void units(const Units& units) = 0;
    virtual void fileInfo(const std::string& key, const std::string& value) = 0;
    virtual void createNode(const NodeRecord& node) = 0;
    // Makes a node that every scene has the current one.
    virtual void selectNode(const std::string& name) = 0;
    virtual void addAttr(const AddAttrRecord& attribute) = 0;
    virtual void setAttr(const AttrRecord& attribute) = 0;
    // Lets the data write themselves. False when they fail; the file is then not usable.
    virtual bool setData(const std::string& plug, const std::string& type, MPxData& data) = 0;
    // Binary data of a missing plug-in, kept from reading. Only a binary sink can take them.
    virtual bool setRawData(const std::string& plug, const std::string& type,
                            const std::string& bytes) = 0;
    virtual void connect(const std::string& source, const std::string& destination,
                         const std::vector<Token>& flags) = 0;
    // A statement that this scene has no meaning for, as it stood in the file it came from.
    virtual void statement(const std::string& text) = 0;
    virtual void end(const std::string& fileName) = 0;
};

// A position in a file, for messages.
struct FilePlace {
    std::string file;
    std::uint64_t line = 0; // of ASCII files; a byte offset otherwise
    bool isLine = true;
};

std::string describe(const FilePlace& place);

} // namespace host
