#include "tools/raster/PixelKernels.h"

#include "tools/raster/VectorTargets.h"

#include <cstring>

// One body of each function, compiled once for the compiler's own target and once for AVX2 where
// the compiler can. Loops have a fixed length and neither branches nor calls, so that they
// vectorise. Neither target has fused multiply-add, which would round otherwise.
namespace vellum::pixel {

namespace {

using Byte = std::uint8_t;
using Word = std::uint32_t;

constexpr float kBias = 8388608.0F; // 2^23
constexpr Word kBiasBits = 0x4B000000;

VELLUM_INLINE float biased(Word value) {
    const Word bits = value | kBiasBits;
    float result;
    std::memcpy(&result, &bits, 4);
    return result;
}

VELLUM_INLINE Word byteOf(float sum) {
    Word bits;
    std::memcpy(&bits, &sum, 4);
    return bits & 255;
}

VELLUM_INLINE Word pixelAt(const Byte* piece, int index) {
    Word pixel;
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

Coverage lookPlain(const Byte* piece) {
    return lookBody(piece);
}
void loadPlain(Sums& sums, const Byte* piece) {
    loadBody(sums, piece);
}
void overPlain(Sums& sums, const Byte* piece, float fade) {
    overBody(sums, piece, fade);
}
void storePlain(Byte* piece, const Sums& sums) {
    storeBody(piece, sums);
}

#ifdef VELLUM_AVX2
VELLUM_AVX2 Coverage lookAvx2(const Byte* piece) {
    return lookBody(piece);
}
VELLUM_AVX2 void loadAvx2(Sums& sums, const Byte* piece) {
    loadBody(sums, piece);
}
VELLUM_AVX2 void overAvx2(Sums& sums, const Byte* piece, float fade) {
    overBody(sums, piece, fade);
}
VELLUM_AVX2 void storeAvx2(Byte* piece, const Sums& sums) {
    storeBody(piece, sums);
}
#endif

std::vector<Kernels> findUsable() {
    std::vector<Kernels> usable{{"plain", lookPlain, loadPlain, overPlain, storePlain}};
#ifdef VELLUM_AVX2
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        usable.push_back({"AVX2", lookAvx2, loadAvx2, overAvx2, storeAvx2});
    }
#endif
    return usable;
}

const Kernels*& inUse() {
    static const Kernels* chosen = &usableKernels().back();
    return chosen;
}

} // namespace

const std::vector<Kernels>& usableKernels() {
    static const std::vector<Kernels> usable = findUsable();
    return usable;
}

const Kernels& kernels() {
    return *inUse();
}

void useKernels(const Kernels& chosen) {
    inUse() = &chosen;
}

} // namespace vellum::pixel
