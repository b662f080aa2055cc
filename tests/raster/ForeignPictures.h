// Pictures as PNG that other programs write and our own writer does not.
#pragma once

#include "raster/Pictures.h"

#include <QBuffer>
#include <QByteArray>
#include <QColorSpace>
#include <QImage>

#include <vector>
#include <zlib.h>

namespace drawing {

inline QByteArray encoded(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

inline QByteArray bigEndian(quint32 value) {
    return QByteArray::fromHex(QByteArray::number(value, 16).rightJustified(8, '0'));
}

inline QByteArray chunk(const QByteArray& type, const QByteArray& data) {
    const QByteArray body = type + data;
    const auto sum =
        crc32(0, reinterpret_cast<const Bytef*>(body.constData()), static_cast<uInt>(body.size()));
    return bigEndian(static_cast<quint32>(data.size())) + body +
           bigEndian(static_cast<quint32>(sum));
}

/// A PNG put together by hand, 8-bit RGBA: sizes and pixel data need not agree.
inline QByteArray forged(quint32 width, quint32 height, const QByteArray& pixels,
                         bool interlaced = false) {
    QByteArray header = bigEndian(width) + bigEndian(height);
    header.append("\x08\x06\x00\x00", 4).append(interlaced ? '\1' : '\0');
    const QByteArray packed = qCompress(pixels).mid(4);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", header) + chunk("IDAT", packed) +
           chunk("IEND", {});
}

/// The seven passes of an interlaced PNG, no row filtered.
inline QByteArray interlaced(const QImage& canvas) {
    constexpr struct {
        int x, y, stepX, stepY;
    } passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                  {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    QByteArray pixels;
    for (const auto& pass : passes) {
        for (int y = pass.y; y < canvas.height(); y += pass.stepY) {
            pixels.append('\0');
            for (int x = pass.x; x < canvas.width(); x += pass.stepX)
                pixels.append(reinterpret_cast<const char*>(canvas.constScanLine(y)) + 4 * x, 4);
        }
    }
    return forged(quint32(canvas.width()), quint32(canvas.height()), pixels, true);
}

struct ForeignPicture {
    const char* kind;
    QByteArray png;
};

/// The same canvas in many kinds; each loads.
inline std::vector<ForeignPicture> foreignPictures(const QImage& canvas) {
    const QByteArray own = encoded(canvas);
    QImage described = canvas;
    described.setText(QStringLiteral("Comment"), QStringLiteral("of another program"));
    QImage profiled = canvas;
    profiled.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
    QByteArray withGamma = own;
    withGamma.insert(33, chunk("gAMA", bigEndian(100000)));
    return {
        {"no alpha", encoded(canvas.convertToFormat(QImage::Format_RGB888))},
        {"palette", encoded(canvas.convertToFormat(QImage::Format_Indexed8))},
        {"one bit", encoded(canvas.convertToFormat(QImage::Format_Mono))},
        {"greyscale", encoded(canvas.convertToFormat(QImage::Format_Grayscale8))},
        {"16 bits", encoded(canvas.convertToFormat(QImage::Format_RGBA64))},
        {"16 bits of grey", encoded(canvas.convertToFormat(QImage::Format_Grayscale16))},
        {"interlaced", interlaced(canvas)},
        {"a text", encoded(described)},
        {"a colour profile", encoded(profiled)},
        {"a gamma", withGamma},
        {"bytes after the end", own + "more"},
    };
}

} // namespace drawing
