#include "document/RowSpans.h"

namespace vellum {

namespace {
constexpr std::uint8_t alphaOf(const uchar* row, int column) {
    return row[4 * column + 3];
}
} // namespace

RowSpans RowSpans::of(const QImage& image) {
    RowSpans result;
    const int width = image.width();
    const int height = qMin(image.height(), kRowSpanRows);
    for (int y = 0; y < height; ++y) {
        const uchar* row = image.constScanLine(y);
        int first = 0;
        while (first < width && alphaOf(row, first) == 0) {
            ++first;
        }
        int last = width;
        while (last > first && alphaOf(row, last - 1) == 0) {
            --last;
        }
        if (first < last) {
            result.rows[static_cast<std::size_t>(y)] = {static_cast<std::int16_t>(first),
                                                        static_cast<std::int16_t>(last)};
        }
    }
    return result;
}

} // namespace vellum
