#include "scene/files/ChunkFile.h"

#include "scene/files/SceneSink.h"

#include <algorithm>

namespace host {

namespace {

// The control characters show a file that went through a text conversion.
constexpr std::array<char, 8> kFileMark = {'\x89', 'V', 'L', 'B', '\r', '\n', '\x1a', '\n'};
constexpr qint64 kFileHeaderSize = 12;

void appendNumber(std::string& bytes, std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += char((value >> (8 * i)) & 0xff);
}

std::uint64_t numberAt(const char* bytes, int count) {
    std::uint64_t value = 0;
    for (int i = 0; i < count; ++i)
        value |= std::uint64_t(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return value;
}

std::string headerBytes(ChunkId id, std::uint64_t length, std::uint32_t crc) {
    std::string bytes(id.begin(), id.end());
    appendNumber(bytes, length, 8);
    appendNumber(bytes, crc, 4);
    appendNumber(bytes, crc32(0, bytes.data(), bytes.size()), 4);
    return bytes;
}

bool parseHeader(const char* bytes, Chunk& chunk) {
    if (crc32(0, bytes, kChunkHeaderSize - 4) != numberAt(bytes + kChunkHeaderSize - 4, 4))
        return false;
    std::copy_n(bytes, 4, chunk.id.begin());
    chunk.length = numberAt(bytes + 4, 8);
    chunk.crc = std::uint32_t(numberAt(bytes + 12, 4));
    return true;
}

} // namespace

ChunkFields& ChunkFields::number(std::uint32_t value) {
    appendNumber(bytes_, value, 4);
    return *this;
}

ChunkFields& ChunkFields::text(const std::string& value) {
    number(std::uint32_t(value.size()));
    bytes_ += value;
    return *this;
}

bool ChunkParser::need(std::size_t count) {
    if (failed_ || count > bytes_.size() - at_)
        failed_ = true;
    return !failed_;
}

std::uint32_t ChunkParser::number() {
    if (!need(4))
        return 0;
    at_ += 4;
    return std::uint32_t(numberAt(bytes_.data() + at_ - 4, 4));
}

std::string ChunkParser::text() {
    const std::size_t size = number();
    if (!need(size))
        return {};
    at_ += size;
    return bytes_.substr(at_ - size, size);
}

std::uint32_t ChunkParser::count(std::size_t smallest) {
    const std::uint32_t value = number();
    return need(std::size_t(value) * smallest) ? value : 0;
}

ChunkWriter::ChunkWriter(QIODevice& device) : device_(device), buffer_(device), stream_(&buffer_) {
}

void ChunkWriter::check(bool ok) {
    if (!ok || buffer_.failed())
        throw FileError(device_.errorString().toStdString());
}

void ChunkWriter::put(const std::string& bytes) {
    check(buffer_.sputn(bytes.data(), std::streamsize(bytes.size())) ==
          std::streamsize(bytes.size()));
}

void ChunkWriter::begin() {
    std::string bytes(kFileMark.begin(), kFileMark.end());
    appendNumber(bytes, kChunkFileVersion, 4);
    put(bytes);
}

void ChunkWriter::write(ChunkId id, const std::string& payload) {
    put(headerBytes(id, payload.size(), crc32(0, payload.data(), payload.size())));
    put(payload);
}

std::ostream& ChunkWriter::open(ChunkId id) {
    flush();
    openId_ = id;
    openAt_ = device_.pos();
    put(headerBytes(id, 0, 0)); // filled in by close()
    buffer_.restart();
    stream_.clear();
    return stream_;
}

bool ChunkWriter::close() {
    flush();
    const qint64 end = device_.pos();
    const std::string header = headerBytes(openId_, buffer_.count(), buffer_.crc());
    check(device_.seek(openAt_));
    check(device_.write(header.data(), qint64(header.size())) == qint64(header.size()));
    check(device_.seek(end));
    return bool(stream_);
}

void ChunkWriter::flush() {
    check(buffer_.pubsync() == 0);
}

ChunkReader::ChunkReader(QIODevice& device) : device_(device) {
}

bool isChunkFile(QIODevice& device) {
    const QByteArray mark = device.peek(qint64(kFileMark.size()));
    return std::size_t(mark.size()) == kFileMark.size() &&
           std::equal(mark.begin(), mark.end(), kFileMark.begin());
}

bool ChunkReader::begin() {
    if (!isChunkFile(device_)) {
        problem_ = "not a binary scene file";
        return false;
    }
    const QByteArray header = device_.read(kFileHeaderSize);
    if (header.size() < kFileHeaderSize) {
        problem_ = "the file is truncated";
        return false;
    }
    const auto version = numberAt(header.constData() + kFileMark.size(), 4);
    if (version != kChunkFileVersion) {
        problem_ = "unknown version " + std::to_string(version) + " of the file form";
        return false;
    }
    next_ = kFileHeaderSize;
    return true;
}

ChunkReader::Result ChunkReader::next(Chunk& chunk) {
    if (!problem_.empty() && !findHeader())
        return Result::End;
    problem_.clear();
    const qint64 left = device_.size() - next_;
    if (left <= 0)
        return Result::End;
    std::array<char, kChunkHeaderSize> header;
    if (!device_.seek(next_) ||
        device_.read(header.data(), qint64(header.size())) != qint64(header.size())) {
        problem_ = "the file is truncated";
        return Result::Damaged;
    }
    chunk = Chunk();
    if (!parseHeader(header.data(), chunk)) {
        problem_ = "damaged chunk header";
        return Result::Damaged;
    }
    chunk.start = next_ + qint64(kChunkHeaderSize);
    const auto room = std::uint64_t(left) - kChunkHeaderSize;
    if (chunk.length > room) {
        chunk.length = room;
        chunk.cutShort = true;
    }
    next_ = chunk.start + qint64(chunk.length);
    return Result::Chunk;
}

// Moves to the next place whose 20 bytes are a header with a right checksum.
bool ChunkReader::findHeader() {
    constexpr qint64 blockSize = 64 * 1024;
    Chunk chunk;
    qint64 from = next_ + 1;
    while (device_.seek(from)) {
        const QByteArray block = device_.read(blockSize);
        const auto last = block.size() - qsizetype(kChunkHeaderSize);
        if (last < 0)
            return false;
        for (qsizetype i = 0; i <= last; ++i) {
            // All kinds are four capital letters; that spares most of the checksums.
            const char* const bytes = block.constData() + i;
            const bool letters =
                std::all_of(bytes, bytes + 4, [](char c) { return c >= 'A' && c <= 'Z'; });
            if (letters && parseHeader(bytes, chunk)) {
                next_ = from + i;
                return true;
            }
        }
        from += last + 1;
    }
    return false;
}

bool ChunkReader::intact(const Chunk& chunk) {
    if (chunk.cutShort || !device_.seek(chunk.start))
        return false;
    std::vector<char> block(64 * 1024);
    std::uint32_t crc = 0;
    for (std::uint64_t left = chunk.length; left > 0;) {
        const auto wanted = std::min<std::uint64_t>(left, block.size());
        const qint64 got = device_.read(block.data(), qint64(wanted));
        if (got <= 0)
            return false;
        crc = crc32(crc, block.data(), std::size_t(got));
        left -= std::uint64_t(got);
    }
    return crc == chunk.crc;
}

std::string ChunkReader::payload(const Chunk& chunk) {
    if (!device_.seek(chunk.start))
        return {};
    std::string bytes(std::size_t(chunk.length), '\0');
    const qint64 got = device_.read(bytes.data(), qint64(bytes.size()));
    bytes.resize(std::size_t(std::max<qint64>(got, 0)));
    return bytes;
}

} // namespace host
