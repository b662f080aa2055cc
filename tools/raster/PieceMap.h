// Where an image has something to show, so that empty canvas is not even looked at.
#pragma once

#include "tools/raster/PixelKernels.h"

#include <QImage>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vellum {

/// One bit for each piece (PixelKernels.h) of each row: whether any of its pixels has alpha above
/// zero. 2 KB for a canvas.
struct PieceMap {
    static constexpr int kRows = 1024;
    static constexpr int kColumns = 1024 / pixel::kPiece;
    static_assert(kColumns <= 16);

    std::array<std::uint16_t, kRows> rows{}; ///< bit i: the i-th piece from the left

    /// `column`: of the piece's first pixel.
    bool holds(int y, int column) const {
        return (rows[static_cast<std::size_t>(y)] >> (column / pixel::kPiece) & 1) != 0;
    }

    /// `image`: a canvas, Format_RGBA8888.
    static PieceMap of(const QImage& image);
};

} // namespace vellum
