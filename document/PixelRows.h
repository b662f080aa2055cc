// Arithmetic on rows of pixels, 4 bytes each: red, green, blue, alpha, straight (not
// premultiplied). A pixel that is fully transparent has no colour: its bytes are 0 in every
// destination.
//
// Composition is Porter and Duff's ("Compositing digital images", 1984). With alphas from 0 to 1,
//   alpha = s + d (1 - s),   colour = d.colour + (s.colour - d.colour) s / alpha,
// each rounded to a byte once, halves upward: what Qt's raster engine gives for straight alpha, to
// within one in a rare tie. A pixel's result does not depend on its neighbours, so a row painted in
// parts equals one painted whole.
#pragma once

#include <cstdint>

namespace vellum::rows {

/// destination = source over destination.
void over(std::uint8_t* destination, const std::uint8_t* source, int pixels);

/// The same with the source faded by `opacity`, 0..255.
void overFaded(std::uint8_t* destination, const std::uint8_t* source, int pixels, int opacity);

/// destination = destination over source. The source has no colour where it is transparent.
void under(std::uint8_t* destination, const std::uint8_t* source, int pixels);

/// Gives every pixel whose alpha is not zero this colour at the alpha it has.
void tint(std::uint8_t* row, int pixels, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

} // namespace vellum::rows
