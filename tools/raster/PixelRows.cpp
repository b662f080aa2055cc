#include "tools/raster/PixelRows.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vellum::rows {

namespace {

using pixel::Coverage;
using pixel::kPiece;
using pixel::kPieceBytes;
using Piece = std::array<std::uint8_t, kPieceBytes>;

std::uint32_t pixelAt(const std::uint8_t* row, int index) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, row + 4 * index, 4);
    return pixel;
}

void setPixel(std::uint8_t* row, int index, std::uint32_t pixel) {
    std::memcpy(row + 4 * index, &pixel, 4);
}

void overPiece(std::uint8_t* destination, const std::uint8_t* source) {
    Stack stack;
    stack.over(destination);
    stack.over(source);
    stack.store(destination);
}

} // namespace

void over(std::uint8_t* destination, const std::uint8_t* source, int pixels) {
    int first = 0;
    for (; first + kPiece <= pixels; first += kPiece)
        overPiece(destination + 4 * first, source + 4 * first);
    if (first < pixels) {
        const auto bytes = static_cast<std::size_t>(4 * (pixels - first));
        Piece to{};
        Piece from{};
        std::memcpy(to.data(), destination + 4 * first, bytes);
        std::memcpy(from.data(), source + 4 * first, bytes);
        overPiece(to.data(), from.data());
        std::memcpy(destination + 4 * first, to.data(), bytes);
    }
}

void tint(std::uint8_t* row, int pixels, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const std::uint32_t color =
        std::uint32_t{red} | std::uint32_t{green} << 8 | std::uint32_t{blue} << 16;
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = pixelAt(row, i);
        setPixel(row, i, pixel >> 24 == 0 ? pixel : (pixel & 0xFF000000U) | color);
    }
}

void blacken(std::uint8_t* row, int pixels) {
    for (int i = 0; i < pixels; ++i) {
        const std::uint32_t pixel = pixelAt(row, i);
        setPixel(row, i, pixel >> 24 == 0 ? 0 : pixel);
    }
}

bool Stack::over(const std::uint8_t* piece) {
    const Coverage coverage = pixel::kernels().look(piece);
    if (coverage == Coverage::None)
        return false;
    if (coverage == Coverage::Full || isEmpty()) {
        plain_ = piece;
        state_ = State::Plain;
    } else {
        blend(piece, 1.0F);
    }
    return true;
}

bool Stack::overFaded(const std::uint8_t* piece, int opacity) {
    if (pixel::kernels().look(piece) == Coverage::None)
        return false;
    blend(piece, static_cast<float>(opacity) / 255.0F);
    return true;
}

void Stack::blend(const std::uint8_t* piece, float fade) {
    static constexpr Piece kNothing{};
    if (state_ != State::Mixed) {
        pixel::kernels().load(sums_, isEmpty() ? kNothing.data() : plain_);
        state_ = State::Mixed;
    }
    pixel::kernels().over(sums_, piece, fade);
}

void Stack::store(std::uint8_t* piece) const {
    switch (state_) {
    case State::Empty:
        std::memset(piece, 0, kPieceBytes);
        break;
    case State::Plain:
        for (int i = 0; i < kPiece; ++i) {
            const std::uint32_t pixel = pixelAt(plain_, i);
            setPixel(piece, i, pixel >> 24 == 0 ? 0 : pixel);
        }
        break;
    case State::Mixed:
        pixel::kernels().store(piece, sums_);
    }
}

} // namespace vellum::rows
