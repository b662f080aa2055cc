#pragma once
#include "scene/files/DeviceStream.h"
#include "scene/files/SceneSink.h"

// Scenes in Maya's own ASCII form.
namespace host {

class AsciiWriter : public SceneSink {
public:
    // The device is open for writing and outlives the writer.
    explicit AsciiWriter(QIODevice& device);

    void begin(const std::string& fileName) override;
    void requirement(const Requirement& requirement) override;
    void units(const Units& units) override;
    void fileInfo(const std::string& key, const std::string& value) override;
    void createNode(const NodeRecord& node) override;
    void selectNode(const std::string& name) override;
    void addAttr(const AddAttrRecord& attribute) override;
    void setAttr(const AttrRecord& attribute) override;
    bool setData(const std::string& plug, const std::string& type, MPxData& data) override;
    bool setRawData(const std::string& plug, const std::string& type,
                    const std::string& bytes) override;
    void connect(const std::string& source, const std::string& destination,
                 const std::vector<Token>& flags) override;
    void statement(const std::string& text) override;
    void end(const std::string& fileName) override;

private:
    void check();
    void writeRelease();
    void writeTokens(const std::vector<Token>& tokens);

    QIODevice& device_;
    DeviceWriteBuffer buffer_;
    std::ostream out_;
    bool releaseWritten_ = false;
};

} // namespace host
