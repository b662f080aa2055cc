// Whether bytes from a file are a picture of the document, found out without decoding them where
// possible.
#pragma once

#include <QByteArray>

namespace vellum {

/// True exactly when QImage loads the bytes as a PNG of 1024 x 1024 pixels. The header is looked at
/// first, so a picture of any other size costs nothing. The usual kind (8-bit RGBA, not interlaced,
/// only the chunks every encoder writes) is proven by checksums and by inflating it through a small
/// window; whatever cannot be proven that way is decoded once to find out.
bool pngLoads(const QByteArray& png);

/// The fast proof alone: true means that the bytes certainly load, false that decoding must tell.
bool pngProvenGood(const QByteArray& png);

} // namespace vellum
