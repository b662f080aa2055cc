#include "tools/raster/PngCheck.h"

#include "tools/raster/PngCodec.h"
#include "tools/raster/Stroke.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <zlib.h>

namespace vellum {

namespace {

// ISO/IEC 15948 (PNG), second edition: 5 (datastream structure), 11.2.2 (IHDR), 9
// (filtering), 10 (compression).
constexpr int kSignatureSize = 8;
constexpr int kChunkFrame = 12; ///< length, type and checksum around a chunk's data
constexpr int kHeaderData = 13;
constexpr int kRowBytes = 1 + 4 * kCanvasSize;
constexpr std::int64_t kPixelBytes = std::int64_t{kRowBytes} * kCanvasSize;
constexpr std::uint8_t kLastFilter = 4;

std::uint32_t bigEndian(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

struct Chunk {
    const std::uint8_t* type = nullptr;
    const std::uint8_t* data = nullptr;
    std::uint32_t size = 0;

    bool is(const char* name) const { return std::memcmp(type, name, 4) == 0; }
};

/// Reads the chunk at `position` and moves on behind it; false when it is broken.
bool nextChunk(const QByteArray& png, std::int64_t& position, Chunk& chunk) {
    const std::int64_t left = png.size() - position;
    if (left < kChunkFrame)
        return false;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(png.constData()) + position;
    chunk.size = bigEndian(bytes);
    if (chunk.size > left - kChunkFrame)
        return false;
    chunk.type = bytes + 4;
    chunk.data = bytes + 8;
    const auto sum = crc32(crc32(0, nullptr, 0), chunk.type, chunk.size + 4);
    position += std::int64_t{chunk.size} + kChunkFrame;
    return sum == bigEndian(chunk.data + chunk.size);
}

/// Inflates the pixel data bit by bit, keeping nothing but what it says about itself.
class PixelStream {
public:
    PixelStream() { ready_ = inflateInit(&stream_) == Z_OK; }
    ~PixelStream() {
        if (ready_)
            inflateEnd(&stream_);
    }
    PixelStream(const PixelStream&) = delete;
    PixelStream& operator=(const PixelStream&) = delete;

    bool feed(const Chunk& chunk) {
        if (!ready_ || ended_)
            return false;
        stream_.next_in = const_cast<Bytef*>(chunk.data);
        stream_.avail_in = chunk.size;
        while (stream_.avail_in > 0 && !ended_) {
            if (!inflateSome())
                return false;
        }
        return stream_.avail_in == 0;
    }

    bool isComplete() const { return ended_ && inflated_ == kPixelBytes; }

private:
    bool inflateSome() {
        stream_.next_out = window_.data();
        stream_.avail_out = static_cast<uInt>(window_.size());
        const int status = inflate(&stream_, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END)
            return false;
        ended_ = status == Z_STREAM_END;
        const auto count = static_cast<std::int64_t>(window_.size() - stream_.avail_out);
        if (inflated_ + count > kPixelBytes)
            return false;
        // Every row begins with the number of its filter.
        for (std::int64_t row = (inflated_ + kRowBytes - 1) / kRowBytes * kRowBytes;
             row < inflated_ + count; row += kRowBytes) {
            if (window_[static_cast<std::size_t>(row - inflated_)] > kLastFilter)
                return false;
        }
        inflated_ += count;
        return true;
    }

    z_stream stream_{};
    bool ready_ = false;
    bool ended_ = false;
    std::int64_t inflated_ = 0;
    std::array<std::uint8_t, 1U << 16> window_;
};

bool isCanvasHeader(const Chunk& chunk) {
    constexpr std::uint8_t usualKind[] = {8, 6, 0, 0, 0}; // 8 bits, RGBA, no interlacing
    return chunk.is("IHDR") && chunk.size == kHeaderData && bigEndian(chunk.data) == kCanvasSize &&
           bigEndian(chunk.data + 4) == kCanvasSize &&
           std::equal(std::begin(usualKind), std::end(usualKind), chunk.data + 8);
}

/// The canvas without what else its file said (texts, colour profile, resolution): QImage keeps
/// that and would write it again.
QImage pixelsOf(const QImage& canvas) {
    QImage pixels(canvas.size(), QImage::Format_RGBA8888);
    for (int y = 0; y < kCanvasSize; ++y)
        std::memcpy(pixels.scanLine(y), canvas.constScanLine(y), kRowBytes - 1);
    return pixels;
}

} // namespace

bool pngProvenGood(const QByteArray& png) {
    static constexpr std::uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (png.size() < kSignatureSize || std::memcmp(png.constData(), signature, 8) != 0)
        return false;
    std::int64_t position = kSignatureSize;
    Chunk chunk;
    if (!nextChunk(png, position, chunk) || !isCanvasHeader(chunk))
        return false;
    PixelStream pixels;
    enum { BeforePixels, InPixels } stage = BeforePixels;
    while (nextChunk(png, position, chunk)) {
        if (chunk.is("IDAT")) {
            stage = InPixels;
            if (!pixels.feed(chunk))
                return false;
        } else if (chunk.is("IEND")) {
            return chunk.size == 0 && pixels.isComplete() && position == png.size();
        } else if (!(chunk.is("pHYs") && chunk.size == 9 && stage == BeforePixels)) {
            return false;
        }
    }
    return false;
}

QByteArray canvasPng(const QByteArray& png) {
    if (pngHeaderSize(png) != QSize(kCanvasSize, kCanvasSize))
        return {};
    if (pngProvenGood(png))
        return png;
    QImage image;
    if (!pngToImage(png, image))
        return {};
    QByteArray own;
    imageToPng(pixelsOf(image), own);
    return own;
}

} // namespace vellum
