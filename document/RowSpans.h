// Where an image has something to show, row by row, so that empty canvas costs nothing.
#pragma once

#include <QImage>
#include <array>
#include <cstdint>

namespace vellum {

inline constexpr int kRowSpanRows = 1024;

/// Columns [first, last) of each row that hold every pixel with alpha above zero; first = last when
/// the row is empty.
struct RowSpans {
    struct Span {
        std::int16_t first = 0;
        std::int16_t last = 0;
    };
    std::array<Span, kRowSpanRows> rows{};

    /// Whether columns [first, last) of row `y` may hold anything.
    bool meets(int y, int first, int last) const {
        const Span span = rows[static_cast<std::size_t>(y)];
        return span.first < last && first < span.last;
    }

    /// `image`: a canvas, Format_RGBA8888.
    static RowSpans of(const QImage& image);
};

} // namespace vellum
