#include "tools/raster/ColorFringe.h"

#include "tools/raster/Simd.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace vellum {

namespace {

// A pixel as a number: its colour, and above it how near a visible pixel is, from kSeen for one
// that is visible itself down to 1. The greatest of several is the nearest. 0 is nothing at all; a
// number with a colour and no nearness, or below 0, is nothing either and never the greatest again.
using Number = std::int32_t;
constexpr int kNearness = 24; // its lowest bit
constexpr Number kStep = Number{1} << kNearness;
constexpr Number kSeen = (kFringe + 1) * kStep;
constexpr Number kColor = kStep - 1;

// A tile with all that is kept of it stays in the first cache.
constexpr int kWidth = 112;
constexpr int kHeight = 32;

// Distances of 1, 2, 4 and 1 add up to every distance up to kFringe.
constexpr int kLeaps[] = {1, 2, 4, 1};
constexpr int kLongestLeap = 4;
static_assert(kLeaps[0] + kLeaps[1] + kLeaps[2] + kLeaps[3] == kFringe);
static_assert(std::size(kLeaps) % 2 == 0, "a row ends where it began");

// A row of a tile. What lies before and after it is nothing.
struct Numbers {
    std::array<Number, kWidth + 2 * kFringe + 2 * kLongestLeap> padded;

    Number* data() { return padded.data() + kLongestLeap; }
    const Number* data() const { return padded.data() + kLongestLeap; }
};

// A square of the picture with what lies around it.
class Tile {
public:
    Tile(QImage& image, const QRect& inside)
        : first_(image.bits()), line_(image.bytesPerLine()), inside_(inside),
          around_(inside.adjusted(-kFringe, -kFringe, kFringe, kFringe) & image.rect()),
          width_(static_cast<std::size_t>(around_.width())) {}

    VELLUM_INLINE void color() {
        if (!hasTransparent())
            return;
        if (!read()) {
            const auto bytes = static_cast<std::size_t>(4 * inside_.width());
            for (int y = inside_.top(); y <= inside_.bottom(); ++y)
                std::memset(at(inside_.left(), y), 0, bytes);
            return;
        }
        spreadUpAndDown();
        clearedEnds(spare_);
        for (int y = inside_.top(); y <= inside_.bottom(); ++y) {
            spreadAcross(row(y));
            write(y);
        }
    }

private:
    VELLUM_INLINE std::uint8_t* at(int x, int y) const {
        return first_ + static_cast<std::ptrdiff_t>(y) * line_ + 4 * x;
    }
    VELLUM_INLINE Numbers& row(int y) { return rows_[static_cast<std::size_t>(y - around_.top())]; }

    VELLUM_INLINE bool hasTransparent() const {
        for (int y = inside_.top(); y <= inside_.bottom(); ++y) {
            const std::uint8_t* alpha = at(inside_.left(), y) + 3;
            std::uint8_t least = 255;
            for (int i = 0; i < inside_.width(); ++i)
                least = std::min(least, alpha[4 * i]);
            if (least == 0)
                return true;
        }
        return false;
    }

    VELLUM_INLINE Number* clearedEnds(Numbers& numbers) const {
        std::fill_n(numbers.padded.begin(), kLongestLeap, 0);
        std::fill_n(numbers.data() + width_, kLongestLeap, 0);
        return numbers.data();
    }

    // False when nothing is visible.
    VELLUM_INLINE bool read() {
        Number any = 0;
        for (int y = around_.top(); y <= around_.bottom(); ++y) {
            Number* numbers = clearedEnds(row(y));
            const std::uint8_t* pixels = at(around_.left(), y);
            for (std::size_t i = 0; i < width_; ++i) {
                std::uint32_t pixel = 0;
                std::memcpy(&pixel, pixels + 4 * i, sizeof pixel);
                const Number seen = static_cast<Number>(pixel & kColor) | kSeen;
                numbers[i] = pixel >> 24 == 0 ? 0 : seen;
                any |= numbers[i];
            }
        }
        return any != 0;
    }

    VELLUM_INLINE void keepGreater(Numbers& to, const Numbers& from) const {
        Number* kept = to.data();
        const Number* beside = from.data();
        for (std::size_t i = 0; i < width_; ++i)
            kept[i] = std::max(kept[i], beside[i] - kStep);
    }

    VELLUM_INLINE void spreadUpAndDown() {
        for (int y = around_.top() + 1; y <= around_.bottom(); ++y)
            keepGreater(row(y), row(y - 1));
        for (int y = around_.bottom() - 1; y >= around_.top(); --y)
            keepGreater(row(y), row(y + 1));
    }

    VELLUM_INLINE void spreadAcross(Numbers& numbers) {
        const Number* from = numbers.data();
        Number* to = spare_.data();
        for (const int leap : kLeaps) {
            for (std::size_t i = 0; i < width_; ++i)
                to[i] =
                    std::max(from[i], std::max((from - leap)[i], (from + leap)[i]) - leap * kStep);
            from = to;
            to = to == spare_.data() ? numbers.data() : spare_.data();
        }
    }

    VELLUM_INLINE void write(int y) {
        const Number* numbers = row(y).data() + (inside_.left() - around_.left());
        // Not as bytes, which could be anything's: the loop would not vectorise.
        auto* pixels = reinterpret_cast<std::uint32_t*>(at(inside_.left(), y));
        const int width = inside_.width();
        for (int i = 0; i < width; ++i) {
            const Number color = numbers[i] < kStep ? 0 : numbers[i] & kColor;
            const std::uint32_t pixel = pixels[i];
            pixels[i] = pixel >> 24 == 0 ? static_cast<std::uint32_t>(color) : pixel;
        }
    }

    std::uint8_t* first_;
    std::ptrdiff_t line_;
    QRect inside_;
    QRect around_;
    std::size_t width_; // of around_
    std::array<Numbers, kHeight + 2 * kFringe> rows_;
    Numbers spare_;
};

VELLUM_INLINE void colorBody(Tile& tile) {
    tile.color();
}

} // namespace

QRect colorFringe(QImage& image, const QRect& changed) {
    const QRect part = changed & image.rect();
    if (part.isEmpty())
        return {};
    const QRect area = part.adjusted(-kFringe, -kFringe, kFringe, kFringe) & image.rect();
    const auto color = simd::build<colorBody>(simd::inUse());
    for (int y = area.top(); y <= area.bottom(); y += kHeight) {
        for (int x = area.left(); x <= area.right(); x += kWidth) {
            Tile tile(image, QRect(x, y, kWidth, kHeight) & area);
            color(tile);
        }
    }
    return area;
}

} // namespace vellum
