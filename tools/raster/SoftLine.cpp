#include "tools/raster/SoftLine.h"

#include "tools/raster/BrushStamp.h"
#include "tools/raster/EvenLine.h"
#include "tools/raster/SoftWalk.h"
#include "tools/raster/Stroke.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace vellum {

namespace {

constexpr int kThinBelow = 20;
constexpr float kThinShare = 0.4F;
constexpr float kThinGrowth = 1.0F;

// Inner loops work on this many pixels at a time, reading and writing past the end of a row's part
// by up to that many: a whole number of vector registers and no remainder to handle.
constexpr unsigned kBlock = 16;

std::uint8_t toByte(float opacity) {
    return static_cast<std::uint8_t>(static_cast<int>(std::clamp(opacity, 0.0F, 1.0F) * 255.0F));
}

// The alpha around a line, turned so that rows run along the line's longer axis, contiguous. Pixels
// are fetched from the image when a dab first needs them and written back once, at the end. Most of
// what a dab covers is at the ceiling already: each row remembers a run of such pixels.
class TurnedAlpha {
public:
    TurnedAlpha(const AlphaPlane& plane, bool steep)
        : image_(plane.row(0)), along_(steep ? plane.row(1) - plane.row(0) : AlphaPlane::kStep),
          across_(steep ? AlphaPlane::kStep : plane.row(1) - plane.row(0)),
          majorEnd_(steep ? plane.height() : plane.width()),
          minorEnd_(steep ? plane.width() : plane.height()) {}
    ~TurnedAlpha() { writeBack(); }
    TurnedAlpha(const TurnedAlpha&) = delete;
    TurnedAlpha& operator=(const TurnedAlpha&) = delete;

    int majorEnd() const { return majorEnd_; }
    int minorEnd() const { return minorEnd_; }

    // The row's alpha, indexed by the major coordinate, first..last fetched; `first` is moved to
    // the first pixel below the ceiling, past `last` when there is none.
    std::uint8_t* row(int minor, int& first, int last, int ceiling) {
        Row& r = rows()[static_cast<std::size_t>(minor)];
        if (first < r.begin || last >= r.end)
            fetch(r, minor, first, last);
        if (r.runCeiling < ceiling || first < r.runBegin || first > r.runEnd) {
            r.runBegin = r.runEnd = first;
            r.runCeiling = ceiling;
        }
        std::uint8_t* alpha = pixels(minor);
        int at = r.runEnd;
        while (at <= last && alpha[at] >= ceiling)
            ++at;
        first = r.runEnd = at;
        return alpha;
    }

private:
    static constexpr int kStride = kCanvasSize + 4 * int(kBlock);
    static constexpr int kFetchAhead = 32;

    struct Row {
        int begin = 0; // fetched pixels: begin..end-1
        int end = 0;
        int runBegin = 0; // pixels runBegin..runEnd-1 are at runCeiling or above
        int runEnd = 0;
        int runCeiling = -1;
    };

    static std::array<Row, kCanvasSize>& rows() {
        static std::array<Row, kCanvasSize> all;
        return all;
    }
    static std::uint8_t* pixels(int minor) {
        static std::array<std::uint8_t, static_cast<std::size_t>(kStride) * kCanvasSize> all;
        return all.data() + static_cast<std::ptrdiff_t>(minor) * kStride + kBlock;
    }

    std::uint8_t* image(int major, int minor) const {
        return image_ + major * along_ + minor * across_;
    }

    void fetch(Row& r, int minor, int first, int last) {
        lowest_ = std::min(lowest_, minor);
        highest_ = std::max(highest_, minor);
        if (r.begin == r.end)
            r.begin = r.end = first;
        copyIn(minor, std::min(first, r.begin), r.begin);
        const int ahead = last < r.end ? r.end : std::min(last + 1 + kFetchAhead, majorEnd_);
        copyIn(minor, r.end, ahead);
        r.begin = std::min(first, r.begin);
        r.end = ahead;
    }

    void copyIn(int minor, int begin, int end) const {
        std::uint8_t* to = pixels(minor);
        const std::uint8_t* from = image(begin, minor);
        for (int at = begin; at < end; ++at, from += along_)
            to[at] = *from;
    }

    void writeBack() {
        for (int minor = lowest_; minor <= highest_; ++minor) {
            Row& r = rows()[static_cast<std::size_t>(minor)];
            const std::uint8_t* from = pixels(minor);
            std::uint8_t* to = image(r.begin, minor);
            for (int at = r.begin; at < r.end; ++at, to += along_)
                *to = from[at];
            r = Row();
        }
    }

    std::uint8_t* image_;
    std::ptrdiff_t along_;
    std::ptrdiff_t across_;
    int majorEnd_;
    int minorEnd_;
    int lowest_ = kCanvasSize;
    int highest_ = -1;
};

// The soft stamp cut to what a dab covers, with zeros around it: the neighbouring dab's row and
// whole blocks can be read wherever a row of the dab begins or ends.
class CoveredStamp {
public:
    static constexpr int kReach = 51; // rows and columns on either side of the point

    void build(int width, float opacity, bool turned) {
        if (width == width_ && opacity == opacity_)
            return;
        const SoftStampSize size = softStampSize(width, opacity);
        stamp_.build(BrushStamp::Mode::Soft, size.radius, size.opacity, turned);
        if (width != width_)
            cells_.fill(0);
        std::array<Part, kRows>& single = parts_[0];
        single.fill({});
        const float radius = static_cast<float>(width) * 0.5F;
        low_ = static_cast<int>(std::floor(-radius));
        high_ = static_cast<int>(std::floor(radius));
        for (int offset = low_; offset <= high_; ++offset) {
            const int row = offset + stamp_.center();
            const BrushStamp::Span span = stamp_.span(row);
            const int first = std::max<int>(span.first - stamp_.center(), low_);
            const int last = std::min<int>(span.last - stamp_.center(), high_);
            if (first > last)
                continue;
            single[static_cast<std::size_t>(offset + kReach)] = {first, last};
            std::memcpy(at(offset) + first, stamp_.row(row) + stamp_.center() + first,
                        static_cast<std::size_t>(last - first + 1));
        }
        std::array<Part, kRows>& pair = parts_[1];
        for (std::size_t i = 0; i < kRows; ++i) {
            const Part above = i > 0 ? single[i - 1] : Part();
            pair[i] = {std::min(single[i].first, above.first),
                       std::max(single[i].last, above.last)};
        }
        width_ = width;
        opacity_ = opacity;
    }

    unsigned peak() const { return stamp_.peak(); }
    int low() const { return low_; } // first and last row or column covered, from the point
    int high() const { return high_; }

    // Cells of a row, indexed by the offset from the point; rows low()-1..high()+1 can be asked
    // for.
    const std::uint8_t* row(int offset) const {
        return cells_.data() + static_cast<std::ptrdiff_t>(offset + kReach) * kStride + kMiddle;
    }

    struct Part {
        int first = kReach;
        int last = -kReach;
    };
    // Columns that the dab holds in a row, or, with `pair`, the dab and the one placed a row below.
    Part part(int offset, bool pair) const {
        return parts_[pair ? 1 : 0][static_cast<std::size_t>(offset + kReach)];
    }

private:
    static constexpr int kStride = 2 * (kReach + int(kBlock)) + int(kBlock);
    static constexpr int kMiddle = kReach + int(kBlock);
    static constexpr std::size_t kRows = 2 * kReach + 2;

    std::uint8_t* at(int offset) {
        return cells_.data() + static_cast<std::ptrdiff_t>(offset + kReach) * kStride + kMiddle;
    }

    BrushStamp stamp_;
    std::array<std::uint8_t, static_cast<std::size_t>(kStride) * kRows> cells_{};
    std::array<Part, kRows> parts_[2];
    int width_ = 0;
    float opacity_ = -1.0F;
    int low_ = 0;
    int high_ = -1;
};

#if defined(_MSC_VER)
#define VELLUM_RESTRICT __restrict
#else
#define VELLUM_RESTRICT __restrict__
#endif

std::uint8_t weighted(std::uint8_t cell, float weight) {
    return static_cast<std::uint8_t>(static_cast<int>(static_cast<float>(cell) * weight));
}

// min(ceiling, alpha + amount), where that is a rise.
std::uint8_t raised(std::uint8_t alpha, std::uint8_t amount, std::uint8_t ceiling) {
    const auto room = static_cast<std::uint8_t>(255 - alpha);
    const auto sum = static_cast<std::uint8_t>(alpha + (amount < room ? amount : room));
    const std::uint8_t capped = sum < ceiling ? sum : ceiling;
    return alpha > capped ? alpha : capped;
}

void addOne(std::uint8_t* VELLUM_RESTRICT alpha, const std::uint8_t* VELLUM_RESTRICT cells,
            float weight, std::uint8_t ceiling, unsigned blocks) {
    const unsigned count = blocks * kBlock;
    for (unsigned i = 0; i < count; ++i)
        alpha[i] = raised(alpha[i], weighted(cells[i], weight), ceiling);
}

void addWhole(std::uint8_t* VELLUM_RESTRICT alpha, const std::uint8_t* VELLUM_RESTRICT cells,
              std::uint8_t ceiling, unsigned blocks) {
    const unsigned count = blocks * kBlock;
    for (unsigned i = 0; i < count; ++i)
        alpha[i] = raised(alpha[i], cells[i], ceiling);
}

// The weights add up to at most 1, so the two amounts fit a byte together.
void addBoth(std::uint8_t* VELLUM_RESTRICT alpha, const std::uint8_t* VELLUM_RESTRICT near,
             const std::uint8_t* VELLUM_RESTRICT far, float nearWeight, float farWeight,
             std::uint8_t ceiling, unsigned blocks) {
    const unsigned count = blocks * kBlock;
    for (unsigned i = 0; i < count; ++i) {
        const auto amount =
            static_cast<std::uint8_t>(weighted(near[i], nearWeight) + weighted(far[i], farWeight));
        alpha[i] = raised(alpha[i], amount, ceiling);
    }
}

// (cell x factor) >> 16, which processors multiply eight at a time.
std::uint8_t scaled(std::uint8_t cell, std::uint16_t factor) {
    return static_cast<std::uint8_t>((std::uint32_t{cell} * factor) >> 16);
}

// The factor that stands for the weight, exactly, for all cells up to the peak; 0: there is none,
// or none that is found without a search.
std::uint16_t factorFor(float weight, unsigned peak, bool search) {
    const float exact = weight * 65536.0F;
    const unsigned nearest = static_cast<unsigned>(exact);
    // A weight of 16 bits, and coordinates from 128 on give no other, has exact products.
    if (static_cast<float>(nearest) == exact && nearest <= 0xffff)
        return static_cast<std::uint16_t>(nearest);
    if (!search)
        return 0;
    for (unsigned candidate = nearest + 1; candidate + 1 > nearest; --candidate) {
        if (candidate == 0 || candidate > 0xffff)
            continue;
        const auto factor = static_cast<std::uint16_t>(candidate);
        unsigned differences = 0;
        for (unsigned cell = 0; cell <= peak; ++cell) {
            const auto value = static_cast<std::uint8_t>(cell);
            differences += scaled(value, factor) != weighted(value, weight) ? 1U : 0U;
        }
        if (differences == 0)
            return factor;
    }
    return 0;
}

void addBothScaled(std::uint8_t* VELLUM_RESTRICT alpha, const std::uint8_t* VELLUM_RESTRICT near,
                   const std::uint8_t* VELLUM_RESTRICT far, std::uint16_t nearFactor,
                   std::uint16_t farFactor, std::uint8_t ceiling, unsigned blocks) {
    const unsigned count = blocks * kBlock;
    for (unsigned i = 0; i < count; ++i) {
        const auto amount =
            static_cast<std::uint8_t>(scaled(near[i], nearFactor) + scaled(far[i], farFactor));
        alpha[i] = raised(alpha[i], amount, ceiling);
    }
}

class SoftPainter {
public:
    SoftPainter(const AlphaPlane& plane, int width, bool steep)
        : alpha_(plane, steep), width_(width), stamp_(stampFor(steep)), steep_(steep) {}

    void paint(const SoftStep& step) {
        const int reach = width_ / 2 + 2;
        if (step.major + reach < 0 || step.major - reach >= alpha_.majorEnd() ||
            step.minor + reach < 0 || step.minor - reach >= alpha_.minorEnd())
            return;
        stamp_.build(width_, step.opacity, steep_);
        ceiling_ = toByte(step.opacity);
        const bool single = !(step.far > 0.0F);
        findFactors(step);
        const int low = std::max(step.minor + stamp_.low(), 0);
        const int high =
            std::min(step.minor + stamp_.high() + (single ? 0 : 1), alpha_.minorEnd() - 1);
        for (int minor = low; minor <= high; ++minor) {
            const CoveredStamp::Part part = stamp_.part(minor - step.minor, !single);
            const int first = std::max(step.major + part.first, 0);
            const int last = std::min(step.major + part.last, alpha_.majorEnd() - 1);
            if (first <= last)
                paintRow(step, minor, first, last, single);
        }
    }

private:
    // Without both factors weights are multiplied as floats.
    void findFactors(const SoftStep& step) {
        constexpr int kWorthSearching = 30;
        factors_[0] = factors_[1] = 0;
        if (!(step.far > 0.0F) || !(step.near > 0.0F))
            return;
        const bool search = width_ >= kWorthSearching;
        const std::uint16_t nearFactor = factorFor(step.near, stamp_.peak(), search);
        const std::uint16_t farFactor =
            nearFactor ? factorFor(step.far, stamp_.peak(), search) : std::uint16_t{0};
        if (farFactor != 0) {
            factors_[0] = nearFactor;
            factors_[1] = farFactor;
        }
    }

    // Both dabs of a step in one row; under one ceiling the order of additions does not matter.
    void paintRow(const SoftStep& step, int minor, int first, int last, bool single) {
        int at = first;
        std::uint8_t* alpha = alpha_.row(minor, at, last, ceiling_);
        if (at > last)
            return;
        const std::uint8_t* near = stamp_.row(minor - step.minor) - step.major;
        const std::uint8_t* far = single ? near : stamp_.row(minor - step.minor - 1) - step.major;
        const unsigned blocks = static_cast<unsigned>(last - at) / kBlock + 1;
        if (factors_[0] != 0)
            addBothScaled(alpha + at, near + at, far + at, factors_[0], factors_[1], ceiling_,
                          blocks);
        else if (!single)
            addBoth(alpha + at, near + at, far + at, step.near, step.far, ceiling_, blocks);
        else if (step.near < 1.0F)
            addOne(alpha + at, near + at, step.near, ceiling_, blocks);
        else
            addWhole(alpha + at, near + at, ceiling_, blocks);
    }

    // One for each way of walking, so that a stroke that turns does not rebuild them.
    static CoveredStamp& stampFor(bool steep) {
        static CoveredStamp stamps[2];
        return stamps[steep ? 1 : 0];
    }

    TurnedAlpha alpha_;
    int width_;
    CoveredStamp& stamp_;
    bool steep_;
    std::uint8_t ceiling_ = 0;
    std::uint16_t factors_[2] = {};
};

// The line's own stamp: a hard one would stand out as a blot, and be cut to a square where it is
// wider than the line.
void drawStartDab(const AlphaPlane& plane, const StrokePoint& point) {
    static BrushStamp stamp;
    const SoftStampSize size = softStampSize(point.width, point.opacity);
    stamp.build(BrushStamp::Mode::Soft, size.radius, size.opacity);
    const std::uint8_t ceiling = toByte(point.opacity);
    const float radius = static_cast<float>(point.width) * 0.5F;
    const int low = static_cast<int>(std::floor(-radius));
    const int high = static_cast<int>(std::floor(radius));
    for (int row = low; row <= high; ++row) {
        for (int column = low; column <= high; ++column) {
            const int x = point.x + column;
            const int y = point.y + row;
            if (!plane.contains(x, y))
                continue;
            const std::uint8_t cell = stamp.at(column + stamp.center(), row + stamp.center());
            std::uint8_t& alpha = plane.at(x, y);
            alpha = raised(alpha, weighted(cell, point.opacity), ceiling);
        }
    }
}

} // namespace

SoftStampSize softStampSize(int width, float opacity) {
    const float radius = static_cast<float>(width) * 0.5F;
    if (width < kThinBelow)
        return {radius + kThinGrowth, kThinShare * opacity};
    return {radius, opacity};
}

void drawSoftLine(const AlphaPlane& plane, const StrokePoint& from, const StrokePoint& to,
                  bool startDab) {
    if (startDab)
        drawStartDab(plane, from);
    const SoftWalk walk(from, to);
    const float distance = walk.distance(static_cast<float>(walk.length()));
    if (to.opacity == from.opacity || distance <= 0.0F) {
        drawEvenLine(plane, walk, from.width, from.opacity);
        return;
    }
    SoftPainter painter(plane, from.width, walk.steep);
    for (int i = 0; i < walk.count(); ++i) {
        SoftStep step = walk.step(i);
        const float d = walk.distance(static_cast<float>(walk.reversed ? walk.length() - i : i));
        step.opacity =
            std::clamp(from.opacity + (to.opacity - from.opacity) * d / distance, 0.0F, 1.0F);
        painter.paint(step);
    }
}

} // namespace vellum
