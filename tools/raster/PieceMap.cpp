#include "tools/raster/PieceMap.h"

namespace vellum {

PieceMap PieceMap::of(const QImage& image) {
    PieceMap result;
    const auto look = pixel::kernels().look;
    for (int y = 0; y < kRows; ++y) {
        const uchar* row = image.constScanLine(y);
        unsigned bits = 0;
        for (int i = 0; i < kColumns; ++i) {
            const bool seen = look(row + i * pixel::kPieceBytes) != pixel::Coverage::None;
            bits |= static_cast<unsigned>(seen) << i;
        }
        result.rows[static_cast<std::size_t>(y)] = static_cast<std::uint16_t>(bits);
    }
    return result;
}

} // namespace vellum
