// Composition of rows of pixels, 4 bytes each: red, green, blue, alpha, straight (not
// premultiplied).
//
// A pixel that is fully transparent has no colour: where frames are painted or erased and where
// pictures are laid together its bytes are 0 afterwards, whatever they were and whatever its
// neighbours are. The colour a freehand tool keeps beneath alpha 0 stays in the stroke's image,
// that of ColorFringe.h in what is shown.
//
// Composition is Porter and Duff's ("Compositing digital images", 1984). With alphas from 0 to 1,
//   alpha = s + d (1 - s),   colour = d.colour + (s.colour - d.colour) s / alpha,
// each rounded to a byte after every layer: what Qt's raster engine gives for straight alpha, to
// within one in a rare tie. A pixel's result depends neither on its neighbours nor on the
// processor, so a row painted in parts equals one painted whole, and layers flattened first equal
// layers painted one by one.
#pragma once

#include "tools/raster/PixelKernels.h"

#include <cstdint>

namespace vellum::rows {

/// destination = source over destination.
void over(std::uint8_t* destination, const std::uint8_t* source, int pixels);

/// Gives every pixel whose alpha is not zero this colour at the alpha it has.
void tint(std::uint8_t* row, int pixels, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

/// Takes the colour of every pixel that is fully transparent.
void blacken(std::uint8_t* row, int pixels);

/// Pieces (PixelKernels.h) laid on top of each other, bottom first. Does no arithmetic while there
/// is at most one to be seen. Pieces given have to stay as they are until store().
class Stack {
public:
    bool isEmpty() const { return state_ == State::Empty; }

    /// False when there was nothing to see in the piece.
    bool over(const std::uint8_t* piece);
    bool overFaded(const std::uint8_t* piece, int opacity); ///< 0..255

    void store(std::uint8_t* piece) const;

private:
    enum class State { Empty, Plain, Mixed };

    void blend(const std::uint8_t* piece, float fade);

    State state_ = State::Empty;
    const std::uint8_t* plain_ = nullptr; ///< with State::Plain
    pixel::Sums sums_;                    ///< with State::Mixed
};

} // namespace vellum::rows
