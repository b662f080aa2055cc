#include "tools/raster/BrushStamp.h"

#include <algorithm>
#include <cmath>

namespace vellum {

namespace {

constexpr int kCells = BrushStamp::kSize;

// The stamp at opacity 1 as fractions: all that costs a square root, independent of the opacity.
struct Geometry {
    BrushStamp::Mode mode = BrushStamp::Mode::Hard;
    float radius = -1.0F;
    bool transposed = false;
    int center = 0;
    int extent = 0; // rows and columns in use
    unsigned age = 0;
    std::array<float, kCells * kCells> share{};
    std::array<BrushStamp::Span, kCells> spans{};

    void set(int column, int row, float value) {
        if (column < 0 || column >= kCells || row < 0 || row >= kCells)
            return;
        if (transposed)
            std::swap(column, row);
        share[static_cast<std::size_t>(row) * kCells + column] = value;
    }
};

float interiorShare(BrushStamp::Mode mode, float radius, int dx, int dy) {
    if (mode == BrushStamp::Mode::Hard)
        return 1.0F;
    const float distance = std::sqrt(static_cast<float>(dx * dx + dy * dy));
    return 1.0F - std::clamp(distance / radius, 0.0F, 1.0F);
}

// One pass of Wu's circle over four octants. In the first, `i` counts columns and the rim lies in
// rows; in the second the axes are exchanged. Interior runs always lie in rows.
void drawOctants(Geometry& g, float radius, int steps, bool exchanged) {
    const int c = g.center;
    for (int i = 0; i <= steps; ++i) {
        const float along = static_cast<float>(i * i) / (radius * radius);
        const float h = std::sqrt(std::max(0.0F, 1.0F - along)) * radius;
        const int f = static_cast<int>(std::floor(h));
        const float fraction = h - static_cast<float>(f);
        if (g.mode == BrushStamp::Mode::Hard) {
            for (const int a : {c - i, c + i}) {
                for (const int b : {c - f - 1, c + f + 1}) {
                    if (exchanged)
                        g.set(b, a, fraction);
                    else
                        g.set(a, b, fraction);
                }
            }
        }
        // The rim's inner cells would carry the rest of the coverage, but the runs, which fill the
        // disc up to and including them, overwrite it.
        const int rowOffset = exchanged ? i : f;
        const int halfRun = exchanged ? f : i;
        for (int dx = -halfRun; dx <= halfRun; ++dx) {
            const float share = interiorShare(g.mode, radius, dx, rowOffset);
            g.set(c + dx, c - rowOffset, share);
            g.set(c + dx, c + rowOffset, share);
        }
    }
}

void findSpans(Geometry& g) {
    g.extent = 0;
    for (int row = 0; row < kCells; ++row) {
        const float* shares = g.share.data() + static_cast<std::size_t>(row) * kCells;
        BrushStamp::Span span;
        for (int column = 0; column < kCells; ++column) {
            if (shares[column] <= 0.0F)
                continue;
            if (span.last < 0)
                span.first = static_cast<std::int16_t>(column);
            span.last = static_cast<std::int16_t>(column);
        }
        g.spans[static_cast<std::size_t>(row)] = span;
        if (span.last >= 0)
            g.extent = std::max({g.extent, row + 1, span.last + 1});
    }
}

void makeGeometry(Geometry& g) {
    g.share.fill(0.0F);
    const float radius = g.radius;
    const float exactCenter = g.mode == BrushStamp::Mode::Hard ? radius + 1.0F : radius;
    g.center = static_cast<int>(std::floor(exactCenter + 0.5F));
    if (radius == 1.0F) {
        for (const int row : {1, 2}) {
            for (const int column : {1, 2})
                g.set(column, row, 1.0F);
        }
    } else {
        const float squared = radius * radius;
        const int steps = static_cast<int>(std::floor(squared / std::sqrt(2.0F * squared) + 0.5F));
        drawOctants(g, radius, steps, false);
        drawOctants(g, radius, steps, true);
    }
    findSpans(g);
}

// Few radii are in use at a time: one or two tools, each hard or soft and walked either way.
const Geometry& geometry(BrushStamp::Mode mode, float radius, bool transposed) {
    static std::array<Geometry, 8> cache;
    static unsigned clock = 0;
    ++clock;
    Geometry* oldest = cache.data();
    for (Geometry& g : cache) {
        if (g.mode == mode && g.radius == radius && g.transposed == transposed) {
            g.age = clock;
            return g;
        }
        if (g.age < oldest->age)
            oldest = &g;
    }
    oldest->mode = mode;
    oldest->radius = radius;
    oldest->transposed = transposed;
    oldest->age = clock;
    makeGeometry(*oldest);
    return *oldest;
}

} // namespace

void BrushStamp::build(Mode mode, float radius, float opacity, bool transposed) {
    radius = std::clamp(radius, 0.5F, 50.0F);
    opacity = std::clamp(opacity, 0.0F, 1.0F);
    const bool sameShape = mode == mode_ && radius == radius_ && transposed == transposed_;
    if (sameShape && opacity == opacity_)
        return;
    const Geometry& g = geometry(mode, radius, transposed);
    if (!sameShape) {
        cells_.fill(0);
        spans_ = g.spans;
        center_ = g.center;
    }
    const std::size_t used = static_cast<std::size_t>(g.extent) * kSize;
    for (std::size_t i = 0; i < used; ++i)
        cells_[i] = static_cast<std::uint8_t>(static_cast<int>(g.share[i] * opacity * 255.0F));
    peak_ = static_cast<std::uint8_t>(static_cast<int>(opacity * 255.0F));
    mode_ = mode;
    radius_ = radius;
    opacity_ = opacity;
    transposed_ = transposed;
}

} // namespace vellum
