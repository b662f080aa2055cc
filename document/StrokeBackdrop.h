// What lies beneath the layer that is drawn on, flattened: while a stroke is in progress it need
// not be laid together again for every new point. Made piece by piece as pieces are asked for.
#pragma once

#include "tools/raster/PixelKernels.h"

#include <QtGlobal>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace vellum {

class StrokeBackdrop {
public:
    /// To be called before pieces are asked for. `recipe` names the pictures it is made of, a
    /// number that no other picture has for each; another recipe than before forgets what was made.
    void prepare(std::vector<quint64> recipe);

    /// Gives the memory back.
    void release();

    /// A canvas between prepare() and release(), else 0.
    std::size_t bytes() const;

    /// Piece `column` of row `y`, null where there is nothing. `make(out)` is called when it is not
    /// there yet and fills it, or returns false when it is empty.
    template <typename Make> const std::uint8_t* piece(int y, int column, Make make) {
        const std::size_t index = indexOf(y, column);
        std::uint8_t* pixels = pixels_.get() + index * pixel::kPieceBytes;
        if (states_[index] == State::Unknown)
            states_[index] = make(pixels) ? State::Made : State::Empty;
        return states_[index] == State::Made ? pixels : nullptr;
    }

private:
    enum class State : std::uint8_t { Unknown, Empty, Made };

    static std::size_t indexOf(int y, int column);

    std::vector<quint64> recipe_;
    std::unique_ptr<std::uint8_t[]>
        pixels_; ///< not filled, so that pages never drawn on cost nothing
    std::vector<State> states_;
};

} // namespace vellum
