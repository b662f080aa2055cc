// Canvas images as PNG bytes, the packed form of frames and of undo steps.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace vellum {

/// Encodes into `bytes`, which is emptied first and stays empty when encoding fails (or the image
/// is null).
void imageToPng(const QImage& image, QByteArray& bytes);

/// Decodes to Format_RGBA8888. The header is looked at first: only a canvas (kCanvasSize squared)
/// is decoded. Anything else, damaged bytes included, makes `image` null and returns false.
bool pngToImage(const QByteArray& bytes, QImage& image);

/// Size that the header of a PNG claims; empty when the bytes do not begin as a PNG does.
QSize pngHeaderSize(const QByteArray& bytes);

} // namespace vellum
