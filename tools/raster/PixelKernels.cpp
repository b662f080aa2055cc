#include "tools/raster/PixelKernels.h"

#include "tools/raster/Simd.h"

#include <cstring>

// Loops have a fixed length and neither branches nor calls, so that they vectorise. No target has
// fused multiply-add, which would round otherwise.
namespace vellum::pixel {

namespace {

using Byte = std::uint8_t;
using Word = std::uint32_t;

constexpr float kBias = 8388608.0F; // 2^23
constexpr Word kBiasBits = 0x4B000000;

VELLUM_INLINE float biased(Word value) {
    const Word bits = value | kBiasBits;
    float result = 0.0F;
    std::memcpy(&result, &bits, 4);
    return result;
}

VELLUM_INLINE Word byteOf(float sum) {
    Word bits = 0;
    std::memcpy(&bits, &sum, 4);
    return bits & 255;
}

VELLUM_INLINE Word pixelAt(const Byte* piece, int index) {
    Word pixel = 0;
    std::memcpy(&pixel, piece + 4 * index, 4);
    return pixel;
}

VELLUM_INLINE Coverage lookBody(const Byte* piece) {
    Word any = 0;
    Word all = ~Word{0};
    for (int i = 0; i < kPiece; ++i) {
        const Word pixel = pixelAt(piece, i);
        any |= pixel;
        all &= pixel;
    }
    return any >> 24 == 0 ? Coverage::None : all >> 24 == 255 ? Coverage::Full : Coverage::Mixed;
}

VELLUM_INLINE void loadBody(Sums& sums, const Byte* piece) {
    for (int i = 0; i < kPiece; ++i) {
        const Word pixel = pixelAt(piece, i);
        sums.red[i] = biased(pixel & 255);
        sums.green[i] = biased(pixel >> 8 & 255);
        sums.blue[i] = biased(pixel >> 16 & 255);
        sums.alpha[i] = biased(pixel >> 24);
    }
}

// Alphas in 255ths. Colour beneath a transparent sum may be anything: it is replaced entirely by
// the first that shows (share 1) and not stored.
VELLUM_INLINE void overBody(Sums& sums, const Byte* piece, float fade) {
    for (int i = 0; i < kPiece; ++i) {
        const Word pixel = pixelAt(piece, i);
        const float upper = (biased(pixel >> 24) - kBias) * fade;
        const float lower = sums.alpha[i] - kBias;
        const float alpha = upper + lower * (255.0F - upper) * (1.0F / 255.0F);
        const float share = upper / (alpha + 1e-30F); // 0 where both are transparent
        sums.red[i] += (biased(pixel & 255) - sums.red[i]) * share;
        sums.green[i] += (biased(pixel >> 8 & 255) - sums.green[i]) * share;
        sums.blue[i] += (biased(pixel >> 16 & 255) - sums.blue[i]) * share;
        sums.alpha[i] = alpha + kBias;
    }
}

VELLUM_INLINE void storeBody(Byte* piece, const Sums& sums) {
    for (int i = 0; i < kPiece; ++i) {
        const Word alpha = byteOf(sums.alpha[i]);
        const Word color =
            byteOf(sums.red[i]) | byteOf(sums.green[i]) << 8 | byteOf(sums.blue[i]) << 16;
        const Word shown = Word{0} - static_cast<Word>(alpha != 0);
        const Word pixel = (color & shown) | alpha << 24;
        std::memcpy(piece + 4 * i, &pixel, 4);
    }
}

constexpr Kernels kernelsFor(simd::Target target) {
    return {simd::build<lookBody>(target), simd::build<loadBody>(target),
            simd::build<overBody>(target), simd::build<storeBody>(target)};
}

} // namespace

const Kernels& kernels() {
    static constexpr Kernels all[] = {kernelsFor(simd::Target::Plain),
                                      kernelsFor(simd::Target::Avx2)};
    return all[static_cast<int>(simd::inUse())];
}

} // namespace vellum::pixel
