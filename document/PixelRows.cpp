#include "document/PixelRows.h"

#include <algorithm>
#include <cstring>

namespace vellum::rows {

namespace {

// Rows are worked through in pieces whose tables stay in the first-level cache. Most pieces of a
// drawing are empty or plain, and cost a look at their alpha. Inner loops run over contiguous
// values of one kind without a branch, so that they vectorise.
constexpr int kPiece = 64;

enum class Coverage { None, Full, Mixed };

std::uint32_t pixelAt(const std::uint8_t* row, int index) {
    std::uint32_t pixel;
    std::memcpy(&pixel, row + 4 * index, 4);
    return pixel;
}

void setPixel(std::uint8_t* row, int index, std::uint32_t pixel) {
    std::memcpy(row + 4 * index, &pixel, 4);
}

Coverage coverage(const std::uint8_t* row, int pixels) {
    std::uint32_t any = 0;
    std::uint32_t all = ~0U;
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = pixelAt(row, i);
        any |= pixel;
        all &= pixel;
    }
    return any >> 24 == 0 ? Coverage::None : all >> 24 == 255 ? Coverage::Full : Coverage::Mixed;
}

/// Result of a pixel whose destination is transparent.
void copyVisible(std::uint8_t* destination, const std::uint8_t* source, int pixels) {
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = pixelAt(source, i);
        setPixel(destination, i, pixel >> 24 == 0 ? 0 : pixel);
    }
}

/// Paints `upper` over `lower` into `result`, which may be either of them. `fade`: 0..1.
void blend(std::uint8_t* result, const std::uint8_t* upper, const std::uint8_t* lower, int pixels,
           float fade) {
    float weight[4 * kPiece];
    std::uint32_t alpha[kPiece];
    for (int i = 0; i < pixels; ++i) {
        const float up = static_cast<float>(pixelAt(upper, i) >> 24) * fade;
        const auto low = static_cast<float>(pixelAt(lower, i) >> 24);
        const float sum = up + low * (255.0F - up) * (1.0F / 255.0F);
        const float share = up / std::max(sum, 1e-9F);
        weight[4 * i] = share;
        weight[4 * i + 1] = share;
        weight[4 * i + 2] = share;
        weight[4 * i + 3] = share;
        alpha[i] = static_cast<std::uint32_t>(static_cast<int>(sum + 0.5F));
    }
    std::uint8_t color[4 * kPiece];
    for (int i = 0; i < 4 * pixels; ++i) {
        const auto low = static_cast<float>(lower[i]);
        const float mixed = low + (static_cast<float>(upper[i]) - low) * weight[i] + 0.5F;
        color[i] = static_cast<std::uint8_t>(static_cast<int>(mixed));
    }
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = (pixelAt(color, i) & 0x00FFFFFFU) | alpha[i] << 24;
        setPixel(result, i, alpha[i] == 0 ? 0 : pixel);
    }
}

/// Calls work(first byte, pixels) piece by piece.
template <typename Work> void inPieces(int pixels, Work work) {
    for (int first = 0; first < pixels; first += kPiece) {
        work(4 * first, std::min(kPiece, pixels - first));
    }
}

} // namespace

void over(std::uint8_t* destination, const std::uint8_t* source, int pixels) {
    inPieces(pixels, [&](int first, int count) {
        std::uint8_t* to = destination + first;
        const std::uint8_t* from = source + first;
        switch (coverage(from, count)) {
        case Coverage::None:
            break;
        case Coverage::Full:
            std::memcpy(to, from, static_cast<std::size_t>(4 * count));
            break;
        case Coverage::Mixed:
            if (coverage(to, count) == Coverage::None) {
                copyVisible(to, from, count);
            } else {
                blend(to, from, to, count, 1.0F);
            }
        }
    });
}

void overFaded(std::uint8_t* destination, const std::uint8_t* source, int pixels, int opacity) {
    const float fade = static_cast<float>(opacity) / 255.0F;
    inPieces(pixels, [&](int first, int count) {
        std::uint8_t* to = destination + first;
        if (coverage(source + first, count) != Coverage::None) {
            blend(to, source + first, to, count, fade);
        }
    });
}

void under(std::uint8_t* destination, const std::uint8_t* source, int pixels) {
    inPieces(pixels, [&](int first, int count) {
        std::uint8_t* to = destination + first;
        switch (coverage(to, count)) {
        case Coverage::None:
            std::memcpy(to, source + first, static_cast<std::size_t>(4 * count));
            break;
        case Coverage::Full:
            break;
        case Coverage::Mixed:
            if (coverage(source + first, count) != Coverage::None) {
                blend(to, to, source + first, count, 1.0F);
            }
        }
    });
}

void tint(std::uint8_t* row, int pixels, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const std::uint32_t color =
        std::uint32_t{red} | std::uint32_t{green} << 8 | std::uint32_t{blue} << 16;
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = pixelAt(row, i);
        setPixel(row, i, pixel >> 24 == 0 ? pixel : (pixel & 0xFF000000U) | color);
    }
}

} // namespace vellum::rows
