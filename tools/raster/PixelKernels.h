// The arithmetic of composition, a piece of a row at a time, built for several kinds of processor
// that all give the same bytes. Rows are worked through in pieces because most pieces of a drawing
// are empty or plain, which costs a look, and because a piece's sums stay in the first-level cache.
#pragma once

#include <cstdint>

namespace vellum::pixel {

inline constexpr int kPiece = 64; ///< pixels; a power of two that divides the canvas
inline constexpr int kPieceBytes = 4 * kPiece;

/// Channels of a piece, each a whole number 0..255 to which 2^23 is added: a float of that size
/// has no fraction, so that adding to it rounds, and its lowest byte is the number.
struct alignas(32) Sums {
    float red[kPiece];
    float green[kPiece];
    float blue[kPiece];
    float alpha[kPiece];
};

enum class Coverage { None, Full, Mixed };

/// Pieces of bytes are red, green, blue, alpha, straight; they need not be aligned.
struct Kernels {
    Coverage (*look)(const std::uint8_t* piece);
    void (*load)(Sums& sums, const std::uint8_t* piece);

    /// sums = piece, its alpha multiplied by `fade` (0..1), over sums.
    void (*over)(Sums& sums, const std::uint8_t* piece, float fade);

    /// Pixels that are fully transparent get no colour.
    void (*store)(std::uint8_t* piece, const Sums& sums);
};

/// As compiled for the processor in use (Simd.h).
const Kernels& kernels();

} // namespace vellum::pixel
