#pragma once
#include "scene/text/SceneRecords.h"

#include <cstdint>
#include <stdexcept>
#include <string>

class MPxData;

// Where the statements of a scene go to, and what can be wrong with a file.
namespace host {

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
