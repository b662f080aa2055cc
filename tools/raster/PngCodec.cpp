#include "tools/raster/PngCodec.h"

#include "tools/raster/Stroke.h"

#include <QBuffer>
#include <QtEndian>

#include <cstring>

namespace vellum {

namespace {

// Signature, then the header chunk: length, "IHDR", width, height.
constexpr char kBeginning[] = "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR";
constexpr int kWidthAt = 16;
constexpr int kHeightAt = 20;
constexpr int kHeaderEnd = 24;

} // namespace

void imageToPng(const QImage& image, QByteArray& bytes) {
    bytes.clear();
    if (image.isNull())
        return;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly))
        return;
    if (!image.save(&buffer, "PNG")) {
        buffer.close();
        bytes.clear();
    }
}

QSize pngHeaderSize(const QByteArray& bytes) {
    if (bytes.size() < kHeaderEnd || std::memcmp(bytes.constData(), kBeginning, kWidthAt) != 0)
        return {};
    const auto width = qFromBigEndian<quint32>(bytes.constData() + kWidthAt);
    const auto height = qFromBigEndian<quint32>(bytes.constData() + kHeightAt);
    constexpr quint32 kLargest = 0x7fffffff;
    if (width > kLargest || height > kLargest)
        return {};
    return {static_cast<int>(width), static_cast<int>(height)};
}

bool pngToImage(const QByteArray& bytes, QImage& image) {
    image = QImage();
    if (pngHeaderSize(bytes) != QSize(kCanvasSize, kCanvasSize))
        return false;
    QImage decoded;
    if (!decoded.loadFromData(bytes, "PNG"))
        return false;
    image = decoded.convertToFormat(QImage::Format_RGBA8888);
    return !image.isNull();
}

} // namespace vellum
