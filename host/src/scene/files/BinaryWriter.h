#pragma once
#include "scene/files/ChunkFile.h"
#include "scene/files/SceneSink.h"

// Scenes in the chunk container of docs/scene-files.md.
namespace host {

namespace chunks {
constexpr ChunkId head = chunkId("HEAD");
constexpr ChunkId required = chunkId("REQU");
constexpr ChunkId units = chunkId("UNIT");
constexpr ChunkId info = chunkId("INFO");
constexpr ChunkId node = chunkId("NODE");
constexpr ChunkId select = chunkId("SELN");
constexpr ChunkId addAttr = chunkId("ADDA");
constexpr ChunkId setAttr = chunkId("ATTR");
constexpr ChunkId data = chunkId("DATA");
constexpr ChunkId connect = chunkId("CONN");
constexpr ChunkId statement = chunkId("STAT");
constexpr ChunkId end = chunkId("ENDS");

// The switches of an ATTR chunk: for each, whether it is given and its value.
enum AttrBits : std::uint32_t {
    keyableGiven = 1u << 0,
    keyableOn = 1u << 1,
    lockedGiven = 1u << 2,
    lockedOn = 1u << 3,
    channelBoxGiven = 1u << 4,
    channelBoxOn = 1u << 5,
    valueGiven = 1u << 6,
};
} // namespace chunks

class BinaryWriter : public SceneSink {
public:
    // The device is open for writing, seekable, and outlives the writer.
    explicit BinaryWriter(QIODevice& device);

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
    ChunkWriter chunks_;
};

} // namespace host
