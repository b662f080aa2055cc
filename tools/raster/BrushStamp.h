// The dab of the freehand tools: a small table of alpha values.
//
// Hard (pencil, eraser): opacity x 255 inside the disc, fractional
// coverage on the rim. Soft (brush): falls linearly from opacity x 255 at the centre to 0 at the
// radius, no rim. The circle is Xiaolin Wu's antialiased one ("An efficient antialiasing
// technique", 1991). A radius of exactly 1 is a block of 2 x 2 cells at (1, 1) in both. Floats
// become bytes by truncation.
#pragma once

#include <array>
#include <cstdint>

namespace vellum {

class BrushStamp {
public:
    static constexpr int kSize = 102; ///< cells a side; the largest radius, 50, fits

    enum class Mode { Hard, Soft };

    /// Makes the stamp; cheap when radius and mode were used lately, free when nothing changed.
    /// `radius` 0.5..50 in image pixels, `opacity` 0..1; values outside are pulled in.
    /// `transposed` exchanges rows and columns, for lines walked along the other axis.
    void build(Mode mode, float radius, float opacity, bool transposed = false);

    std::uint8_t at(int column, int row) const { return row_(row)[column]; }
    const std::uint8_t* row(int index) const { return row_(index); }

    /// Cell that lies on the point the dab is placed at: radius + 1 (hard) or radius (soft), to the
    /// nearest cell, halves upward. The table spans cells 0..2 x centre.
    int center() const { return center_; }

    /// First and last column of a row that can hold a value; first > last when the row is empty.
    struct Span {
        std::int16_t first = kSize;
        std::int16_t last = -1;
    };
    Span span(int row) const { return spans_[static_cast<std::size_t>(row)]; }

    /// Largest value in the table.
    std::uint8_t peak() const { return peak_; }

private:
    const std::uint8_t* row_(int index) const {
        return cells_.data() + static_cast<std::size_t>(index) * kSize;
    }

    std::array<std::uint8_t, kSize * kSize> cells_{};
    std::array<Span, kSize> spans_{};
    int center_ = 0;
    std::uint8_t peak_ = 0;

    Mode mode_ = Mode::Hard;
    float radius_ = -1.0F;
    float opacity_ = -1.0F;
    bool transposed_ = false;
};

} // namespace vellum
