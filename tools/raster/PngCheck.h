// Whether bytes from a file are a picture of the document, found out without decoding them where
// possible.
#pragma once

#include <QByteArray>

namespace vellum {

/// The picture in the form that imageToPng() writes; empty unless QImage loads the bytes as a PNG
/// of 1024 x 1024 pixels. The header is looked at first, so a picture of any other size costs
/// nothing. Our own form is given back as it is: it is proven by checksums and by inflating it
/// through a small window. Any other (16 bits, a palette, interlaced, with texts or a colour
/// profile) is decoded and encoded anew, without what belongs to no drawing.
QByteArray canvasPng(const QByteArray& png);

/// The fast proof alone, for our own form (8-bit RGBA, not interlaced, no chunk that we do not
/// write, nothing behind the end): true means that the bytes certainly load, false that decoding
/// must tell.
bool pngProvenGood(const QByteArray& png);

} // namespace vellum
