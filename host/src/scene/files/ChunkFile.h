#pragma once
#include "scene/files/DeviceStream.h"

#include <QIODevice>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The container of binary scene files; docs/scene-files.md describes it byte by byte.
//
// A file is an 8-byte mark, a version and a row of chunks. A chunk header says its kind, its
// length and the CRC-32 of what follows, and carries a CRC-32 of itself, so that a damaged
// header is known as such before its length is believed, and the next good one can be found.
namespace host {

using ChunkId = std::array<char, 4>;

constexpr ChunkId chunkId(const char (&name)[5]) {
    return {name[0], name[1], name[2], name[3]};
}

constexpr std::uint32_t kChunkFileVersion = 1;
constexpr std::size_t kChunkHeaderSize = 20;

// Fields of a chunk, little-endian; texts are a 32-bit count of bytes and those bytes.
class ChunkFields {
public:
    ChunkFields& number(std::uint32_t value);
    ChunkFields& text(const std::string& value);
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// Takes the fields back. A count beyond what is left makes the parser fail for good; failed
// parsers give zeros and empty texts.
class ChunkParser {
public:
    explicit ChunkParser(const std::string& bytes) : bytes_(bytes) {}
    std::uint32_t number();
    std::string text();
    // A count of things that each take at least `smallest` bytes.
    std::uint32_t count(std::size_t smallest);
    bool failed() const { return failed_; }
    bool atEnd() const { return failed_ || at_ >= bytes_.size(); }
    std::size_t position() const { return at_; }

private:
    bool need(std::size_t count);

    const std::string& bytes_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

// Throws FileError when bytes cannot be written.
class ChunkWriter {
public:
    explicit ChunkWriter(QIODevice& device);
    void begin();
    void write(ChunkId id, const std::string& payload);
    // A chunk whose length is not known beforehand: fill the stream, then close it. close() is
    // false when the stream was left failed although the device took everything.
    std::ostream& open(ChunkId id);
    bool close();
    // Hands everything to the device; to be called after the last chunk.
    void flush();

private:
    void check(bool ok);
    void put(const std::string& bytes);

    QIODevice& device_;
    DeviceWriteBuffer buffer_;
    std::ostream stream_;
    ChunkId openId_{};
    qint64 openAt_ = 0;
};

struct Chunk {
    ChunkId id{};
    std::uint64_t length = 0; // never more than is left in the file
    std::uint32_t crc = 0;
    qint64 start = 0;      // of the payload
    bool cutShort = false; // the header promised more than the file has
};

class ChunkReader {
public:
    explicit ChunkReader(QIODevice& device);
    // False, with problem() set, when the file is not such a container or of a newer version.
    bool begin();

    enum class Result { Chunk, End, Damaged };
    // After damaged, the next call looks for the next good header.
    Result next(Chunk& chunk);
    bool intact(const Chunk& chunk);
    std::string payload(const Chunk& chunk);
    const std::string& problem() const { return problem_; }
    qint64 position() const { return next_; }

private:
    bool findHeader();

    QIODevice& device_;
    qint64 next_ = 0;
    std::string problem_;
};

bool isChunkFile(QIODevice& device);

} // namespace host
