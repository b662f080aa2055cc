#include "tools/raster/EvenLine.h"

#include "tools/raster/BrushStamp.h"
#include "tools/raster/SoftLine.h"
#include "tools/raster/Stroke.h"

#include <array>
#include <cassert>
#include <cstring>

#if (defined(__SSE2__) || defined(_M_X64)) && !defined(VELLUM_NO_SSE2)
#define VELLUM_SSE2
#include <emmintrin.h>
#endif

namespace vellum {

namespace {

constexpr int kBlock = 16; // pixels taken at a time: one vector register of bytes

// A pixel of the image read as one number: where its alpha byte is.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
constexpr unsigned kAlphaShift = 24;
#else
constexpr unsigned kAlphaShift = 0;
#endif

// The soft stamp cut to what a dab covers, in a field of zeros so wide that any block near a dab
// can be read from it.
class StampField {
public:
    static constexpr int kMargin = 92; // cells on either side of the point
    static constexpr int kStride = 2 * kMargin + kBlock;
    static constexpr int kCells = kStride * (2 * kMargin + 1);

    void build(int width, float opacity) {
        if (width == width_ && opacity == opacity_)
            return;
        const SoftStampSize size = softStampSize(width, opacity);
        stamp_.build(BrushStamp::Mode::Soft, size.radius, size.opacity);
        if (width != width_)
            cells_.fill(0);
        const float radius = static_cast<float>(width) * 0.5F;
        const int low = static_cast<int>(std::floor(-radius));
        const int high = static_cast<int>(std::floor(radius));
        for (int row = low; row <= high; ++row) {
            const BrushStamp::Span span = stamp_.span(row + stamp_.center());
            const int first = std::max<int>(span.first - stamp_.center(), low);
            const int last = std::min<int>(span.last - stamp_.center(), high);
            if (first <= last)
                std::memcpy(cells_.data() + offset(first, row),
                            stamp_.row(row + stamp_.center()) + stamp_.center() + first,
                            static_cast<std::size_t>(last - first + 1));
        }
        if (width != width_)
            measure(size.radius);
        width_ = width;
        opacity_ = opacity;
    }

    // Distance from the ideal line from which on nothing changes.
    double reach() const { return reach_; }
    // Half the length along the line over which dabs reach a pixel so far beside it.
    double halfChord(double beside) const {
        return halfChords_[static_cast<std::size_t>(beside * kFineness)];
    }
    const std::uint8_t* cells() const { return cells_.data(); }

    static int offset(int column, int row) { return (row + kMargin) * kStride + column + kMargin; }

private:
    static constexpr int kFineness = 4;

    // A dab whose weight is w lies up to 1 - w beside the ideal line and changes what its stamp
    // gives at least 1 / w: up to radius x (1 - 1 / 255w) from its point. Together that is farthest
    // for w = sqrt(radius / 255). The line itself is known to a hundredth of a pixel.
    void measure(double radius) {
        reach_ = radius + 1.0 - 2.0 * std::sqrt(radius / 255.0) + 0.02;
        for (std::size_t i = 0; i < halfChords_.size(); ++i) {
            const double beside = static_cast<double>(i) / kFineness;
            halfChords_[i] = std::sqrt(std::max(reach_ * reach_ - beside * beside, 0.0));
        }
    }

    BrushStamp stamp_;
    std::array<std::uint8_t, static_cast<std::size_t>(kCells)> cells_{};
    std::array<double, 52 * kFineness> halfChords_{};
    int width_ = 0;
    float opacity_ = -1.0F;
    double reach_ = 0.0;
};

// A pair of dabs, ready to be added.
struct Dabs {
    enum class Kind : std::uint8_t {
        Whole,  // the first dab alone with weight 1
        Scaled, // weights that are multiples of 1 / 65536: exact as integers
        Float
    };
    int origin; // offset in the field of the image's pixel (0, 0)
    Kind kind;
    std::uint16_t nearFactor, farFactor;
    float near, far;
};

using Block = std::uint8_t[kBlock];

std::uint8_t weighted(std::uint8_t cell, float weight) {
    return static_cast<std::uint8_t>(static_cast<int>(static_cast<float>(cell) * weight));
}

// What the pixels of a block can still rise before they are at the ceiling. The weights of a pair
// of dabs add up to at most 1, so its two amounts fit a byte together.
#ifdef VELLUM_SSE2

class Room {
public:
    explicit Room(const Block& room) : room_(load(room)) {}
    void read(Block& room) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(room), room_); }
    bool isFull() const {
        return _mm_movemask_epi8(_mm_cmpeq_epi8(room_, _mm_setzero_si128())) == 0xffff;
    }
    void take(const std::uint8_t* amount) { room_ = _mm_subs_epu8(room_, load(amount)); }
    void takeScaled(const Dabs& dabs, const std::uint8_t* near, const std::uint8_t* far) {
        const __m128i zero = _mm_setzero_si128();
        const __m128i a = load(near);
        const __m128i b = load(far);
        const __m128i nearFactor = _mm_set1_epi16(static_cast<short>(dabs.nearFactor));
        const __m128i farFactor = _mm_set1_epi16(static_cast<short>(dabs.farFactor));
        const __m128i low = _mm_add_epi16(_mm_mulhi_epu16(_mm_unpacklo_epi8(a, zero), nearFactor),
                                          _mm_mulhi_epu16(_mm_unpacklo_epi8(b, zero), farFactor));
        const __m128i high = _mm_add_epi16(_mm_mulhi_epu16(_mm_unpackhi_epi8(a, zero), nearFactor),
                                           _mm_mulhi_epu16(_mm_unpackhi_epi8(b, zero), farFactor));
        room_ = _mm_subs_epu8(room_, _mm_packus_epi16(low, high));
    }

private:
    static __m128i load(const std::uint8_t* bytes) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    }
    __m128i room_;
};

#else

std::uint8_t scaled(std::uint8_t cell, std::uint16_t factor) {
    return static_cast<std::uint8_t>((std::uint32_t{cell} * factor) >> 16);
}

class Room {
public:
    explicit Room(const Block& room) { std::memcpy(room_, room, sizeof room_); }
    void read(Block& room) const { std::memcpy(room, room_, sizeof room_); }
    bool isFull() const {
        return std::all_of(room_, room_ + kBlock, [](std::uint8_t room) { return room == 0; });
    }
    void take(const std::uint8_t* amount) {
        for (int i = 0; i < kBlock; ++i)
            room_[i] = static_cast<std::uint8_t>(room_[i] - std::min(room_[i], amount[i]));
    }
    void takeScaled(const Dabs& dabs, const std::uint8_t* near, const std::uint8_t* far) {
        Block amount;
        for (int i = 0; i < kBlock; ++i)
            amount[i] = static_cast<std::uint8_t>(scaled(near[i], dabs.nearFactor) +
                                                  scaled(far[i], dabs.farFactor));
        take(amount);
    }

private:
    Block room_;
};

#endif

// Apart from the others, so that the compiler vectorises the loop.
void weigh(Block& amount, float nearWeight, float farWeight, const std::uint8_t* near,
           const std::uint8_t* far, int count) {
    for (int i = 0; i < count; ++i)
        amount[i] =
            static_cast<std::uint8_t>(weighted(near[i], nearWeight) + weighted(far[i], farWeight));
}

void add(Room& room, const Dabs& dabs, const std::uint8_t* near, int toFar) {
    if (dabs.kind == Dabs::Kind::Scaled) {
        room.takeScaled(dabs, near, near - toFar);
    } else if (dabs.kind == Dabs::Kind::Whole) {
        room.take(near);
    } else {
        Block amount;
        weigh(amount, dabs.near, dabs.far, near, near - toFar, kBlock);
        room.take(amount);
    }
}

// The steps of a line that can reach the image, and where each pixel lies along and beside it.
class EvenLine {
public:
    EvenLine(const AlphaPlane& plane, const StampField& field, float opacity)
        : plane_(plane), field_(field), ceiling_(static_cast<std::uint8_t>(static_cast<int>(
                                            std::clamp(opacity, 0.0F, 1.0F) * 255.0F))) {}

    void draw(const SoftWalk& walk) {
        const int reach = static_cast<int>(field_.reach()) + 2;
        const int majorEnd = walk.steep ? plane_.height() : plane_.width();
        const int first = std::max(0, -reach - walk.major0);
        const int last = std::min(walk.count() - 1, majorEnd + reach - walk.major0);
        toFar_ = walk.steep ? 1 : StampField::kStride;
        for (int i = first; i <= last; ++i)
            push(walk.step(i), walk.steep);
        if (count_ == 0)
            return;
        const double across = walk.minor0 + static_cast<double>(walk.gradient) * first;
        const double along = walk.major0 + first;
        stepX_ = walk.steep ? static_cast<double>(walk.gradient) : 1.0;
        stepY_ = walk.steep ? 1.0 : static_cast<double>(walk.gradient);
        startX_ = walk.steep ? across : along;
        startY_ = walk.steep ? along : across;
        sweep();
    }

private:
    static constexpr int kMostSteps = kCanvasSize + 2 * 54;

    void push(const SoftStep& step, bool steep) {
        Dabs& dabs = steps()[static_cast<std::size_t>(count_++)];
        const int x = steep ? step.minor : step.major;
        const int y = steep ? step.major : step.minor;
        dabs.origin = StampField::offset(-x, -y);
        dabs.near = step.near;
        dabs.far = step.far;
        // Coordinates from 128 on leave 16 bits for the fraction at most, whose products with a
        // cell are exact in a float as well.
        const float nearExact = step.near * 65536.0F;
        const float farExact = step.far * 65536.0F;
        const auto nearFactor = static_cast<unsigned>(nearExact);
        const auto farFactor = static_cast<unsigned>(farExact);
        dabs.nearFactor = static_cast<std::uint16_t>(nearFactor);
        dabs.farFactor = static_cast<std::uint16_t>(farFactor);
        if (nearFactor == 65536U)
            dabs.kind = Dabs::Kind::Whole;
        else if (static_cast<float>(nearFactor) == nearExact &&
                 static_cast<float>(farFactor) == farExact)
            dabs.kind = Dabs::Kind::Scaled;
        else
            dabs.kind = Dabs::Kind::Float;
    }

    void sweep() {
        const double squared = stepX_ * stepX_ + stepY_ * stepY_;
        const double norm = std::sqrt(squared);
        perStep_ = 1.0 / norm;
        alongX_ = stepX_ / squared;
        besideX_ = stepY_ / norm;
        const double reach = field_.reach();
        const double endX = startX_ + stepX_ * (count_ - 1);
        const double endY = startY_ + stepY_ * (count_ - 1);
        const double least = std::min(startX_, endX) - reach;
        const double most = std::max(startX_, endX) + reach;
        const bool flat = std::abs(stepY_) < 0.01;
        const double half = flat ? 0.0 : reach * norm / std::abs(stepY_);
        const int bottom = end(std::max(startY_, endY) + reach, plane_.height());
        for (int y = begin(std::min(startY_, endY) - reach, plane_.height()); y < bottom; ++y) {
            const double dy = y - startY_;
            const double middle = flat ? 0.0 : startX_ + dy * stepX_ / stepY_;
            const int left = begin(flat ? least : std::max(least, middle - half), plane_.width());
            const int right = end(flat ? most : std::min(most, middle + half), plane_.width());
            const double dx = left - startX_;
            Place place{left, y, dx * alongX_ + dy * stepY_ / squared,
                        dx * besideX_ - dy * stepX_ / norm};
            while (place.x < right) {
                paintBlock(place, std::min(kBlock, right - place.x));
                place.x += kBlock;
                place.along += kBlock * alongX_;
                place.beside += kBlock * besideX_;
            }
        }
    }

    // A block's first pixel, and where it lies: in steps along the line, in pixels beside it.
    struct Place {
        int x, y;
        double along, beside;
    };

    // The whole pixels between two places.
    static int begin(double place, int last) {
        return static_cast<int>(std::ceil(std::clamp(place, 0.0, static_cast<double>(last))));
    }
    static int end(double place, int last) {
        return static_cast<int>(std::clamp(place + 1.0, 0.0, static_cast<double>(last)));
    }

    void paintBlock(const Place& place, int count) {
        std::uint8_t* pixels = plane_.row(place.y) - 3 + place.x * AlphaPlane::kStep;
        std::uint32_t words[kBlock];
        if (count == kBlock) {
            std::memcpy(words, pixels, sizeof words);
        } else { // what is not there is full
            std::memset(words, 0xff, sizeof words);
            std::memcpy(words, pixels, static_cast<std::size_t>(count) * sizeof words[0]);
        }
        Block room;
        for (int i = 0; i < kBlock; ++i) {
            const auto alpha = static_cast<std::uint8_t>(words[i] >> kAlphaShift);
            room[i] = static_cast<std::uint8_t>(ceiling_ - (alpha < ceiling_ ? alpha : ceiling_));
        }
        Room left(room);
        if (left.isFull())
            return;
        fill(place, left);
        Block after;
        left.read(after);
        for (int i = 0; i < kBlock; ++i)
            words[i] += static_cast<std::uint32_t>(room[i] - after[i]) << kAlphaShift;
        if (count == kBlock)
            std::memcpy(pixels, words, sizeof words);
        else
            std::memcpy(pixels, words, static_cast<std::size_t>(count) * sizeof words[0]);
    }

    // From the step nearest to the block outwards, both ways.
    void fill(const Place& place, Room& room) const {
        const double alongEnd = place.along + (kBlock - 1) * alongX_;
        const double besideEnd = place.beside + (kBlock - 1) * besideX_;
        double least = 0.0; // distance from the line
        if ((place.beside > 0.0) == (besideEnd > 0.0))
            least = std::min(std::abs(place.beside), std::abs(besideEnd));
        if (least > field_.reach())
            return;
        const double half = field_.halfChord(least) * perStep_ + 1.0;
        const int lowest = static_cast<int>(std::max(std::min(place.along, alongEnd) - half, 0.0));
        const int highest =
            static_cast<int>(std::min(std::max(place.along, alongEnd) + half + 1.0, count_ - 1.0));
        const auto middle = static_cast<int>((place.along + alongEnd) * 0.5);
        int after = std::clamp(middle, lowest, std::max(highest, lowest));
        int before = after - 1;
        const int offset = place.y * StampField::kStride + place.x;
        while (after <= highest || before >= lowest) {
            const bool forward =
                after - middle <= middle - before ? after <= highest : before < lowest;
            const Dabs& dabs = steps()[static_cast<std::size_t>(forward ? after++ : before--)];
            const int at = dabs.origin + offset;
            assert(at >= toFar_ && at + kBlock <= StampField::kCells);
            add(room, dabs, field_.cells() + at, toFar_);
            if (room.isFull())
                return;
        }
    }

    static std::array<Dabs, kMostSteps>& steps() {
        static std::array<Dabs, kMostSteps> all;
        return all;
    }

    const AlphaPlane& plane_;
    const StampField& field_;
    std::uint8_t ceiling_;
    int count_ = 0;
    int toFar_ = 0; // from a dab's cell to that of the dab beside it
    double startX_ = 0.0, startY_ = 0.0;
    double stepX_ = 0.0, stepY_ = 0.0;
    double alongX_ = 0.0, besideX_ = 0.0; // what a pixel to the right changes in a place
    double perStep_ = 1.0;                // steps in a pixel along the line
};

const StampField& fieldFor(int width, float opacity) {
    static StampField field;
    field.build(width, opacity);
    return field;
}

} // namespace

void drawEvenLine(const AlphaPlane& plane, const SoftWalk& walk, int width, float opacity) {
    EvenLine(plane, fieldFor(width, opacity), opacity).draw(walk);
}

} // namespace vellum
