#pragma once
#include "scene/files/FileIO.h"
#include "scene/text/SceneRecords.h"

#include <QIODevice>

#include <maya/MPlug.h>

#include <memory>
#include <string>
#include <vector>

// Builds the scene from the statements of a file. Whatever cannot be done is reported with its
// place in the file, counted, and skipped; nothing here throws.
namespace host {

class SceneBuilder {
public:
    // `importing`: names that are taken are made unique, and the scene's own settings stay.
    SceneBuilder(std::string fileName, bool importing, SceneMemory& memory);
    ~SceneBuilder();
    SceneBuilder(const SceneBuilder&) = delete;
    SceneBuilder& operator=(const SceneBuilder&) = delete;

    // Where in the file the next statement stands.
    void setPlace(std::uint64_t line, bool isLine);

    void requirement(Requirement requirement);
    void units(const Units& units);
    void fileInfo(const std::string& key, const std::string& value);
    void createNode(const NodeRecord& node);
    void selectNode(const std::string& name);
    // A statement was lost that may have made another node the current one: what belongs to a
    // node is skipped until the next one is known.
    void loseNode();
    void addAttr(AddAttrRecord attribute);
    // Sets plain values and, when -type names a plug-in's data type, lets the data read the
    // values as tokens. A plug without leading dot names its node too.
    void setAttr(AttrRecord attribute);
    // The same of a statement that is damaged: plug-in data are still handed over, as they guard
    // themselves; of anything else nothing is believed.
    void salvageAttr(AttrRecord attribute);
    // Of a plug-in that is here, or that the file says it needs.
    bool isPluginData(const std::string& type) const;
    // Plug-in data of the current node in binary form: `length` bytes from the device's position
    // on. What they leave unread is the caller's to skip.
    void setData(const std::string& plug, const std::string& type, QIODevice& device,
                 std::uint64_t length);
    void connect(const std::string& source, const std::string& destination,
                 std::vector<Token> flags);
    void rename(const std::string& newName);
    // `rename -uid` and `lockNode` of the current node, as they stand in the file.
    void uuid(std::string statement);
    void lockNode(std::string statement, bool locked);
    // A statement that means nothing here. It is written again where it stood.
    void keepStatement(std::string text);
    // The same of one that may have made another node the current one: what follows belongs to it.
    void keepUnknown(std::string text);
    void parent(const std::vector<std::string>& names);

    void error(const std::string& message);
    void warning(const std::string& message);
    // A warning that many statements would repeat; shown once for each `key`.
    void warningOnce(const std::string& key, const std::string& message);

    // After the last statement.
    ReadResult finish();

private:
    bool keepOrphan(const std::vector<Token>& statement);
    std::vector<MPlug> dataPlugs(const std::string& wanted, const std::string& type);
    bool makeHome(const std::string& type);
    MObject inDag(const MObject& node);
    void setKnownAttr(AttrRecord record);
    bool setCurveAttr(AttrRecord& record);
    void applySettings();
    void applyAttr(std::vector<MPlug> plugs, AttrRecord record);
    bool readTokens(MPlug plug, AttrRecord& record);

    struct State;
    std::unique_ptr<State> state_;
};

} // namespace host
