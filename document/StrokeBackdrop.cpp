#include "document/StrokeBackdrop.h"

#include "tools/raster/Stroke.h"

#include <algorithm>

namespace vellum {

namespace {
constexpr std::size_t kColumns = kCanvasSize / pixel::kPiece;
constexpr std::size_t kPieces = kColumns * kCanvasSize;
static_assert(kCanvasSize % pixel::kPiece == 0);
} // namespace

std::size_t StrokeBackdrop::indexOf(int y, int column) {
    return static_cast<std::size_t>(y) * kColumns + static_cast<std::size_t>(column);
}

void StrokeBackdrop::prepare(std::vector<quint64> recipe) {
    if (!pixels_) {
        pixels_.reset(new std::uint8_t[kPieces * pixel::kPieceBytes]);
    } else if (recipe == recipe_) {
        return;
    }
    states_.assign(kPieces, State::Unknown);
    recipe_ = std::move(recipe);
}

void StrokeBackdrop::release() {
    pixels_.reset();
    states_ = {};
    recipe_ = {};
}

std::size_t StrokeBackdrop::bytes() const {
    return pixels_ ? kPieces * pixel::kPieceBytes : 0;
}

} // namespace vellum
