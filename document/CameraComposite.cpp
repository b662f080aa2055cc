#include "document/CameraComposite.h"

#include "tools/raster/ColorFringe.h"
#include "tools/raster/PixelRows.h"
#include "tools/raster/Stroke.h"
#include "tools/raster/StrokeImage.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vellum {

namespace {

constexpr std::size_t kHistory = 32;
using pixel::kPiece;
using Piece = std::array<std::uint8_t, pixel::kPieceBytes>;

quint64 nextVersion() {
    static quint64 last = 0;
    return ++last;
}

/// Brings a piece towards the first cache.
void fetchAhead([[maybe_unused]] const std::uint8_t* piece) {
#if defined(__GNUC__) || defined(__clang__)
    constexpr int kCacheLine = 64;
    for (int i = 0; i < pixel::kPieceBytes; i += kCacheLine)
        __builtin_prefetch(piece + i);
#endif
}

/// A canvas, with what QImage would be asked for again for every piece.
struct Pixels {
    const std::uint8_t* first = nullptr;
    std::ptrdiff_t line = 0;

    Pixels() = default;
    explicit Pixels(const QImage& image) : first(image.constBits()), line(image.bytesPerLine()) {}

    const std::uint8_t* at(int y, int column) const { return first + y * line + 4 * column; }
};

/// The ghosts or a layer.
struct Source {
    Pixels image;
    Pixels overlay;
    const PieceMap* pieces;

    /// A piece of the source, null where nothing is known to be. May have to be made in `merged`.
    const std::uint8_t* piece(int y, int column, Piece& merged) const {
        if (overlay.first) {
            // The two become one picture first, as once merged: committing changes nothing.
            std::memcpy(merged.data(), image.at(y, column), merged.size());
            rows::over(merged.data(), overlay.at(y, column), kPiece);
            return merged.data();
        }
        const bool empty = pieces && !pieces->holds(y, column);
        return empty ? nullptr : image.at(y, column);
    }
};

} // namespace

/// What a picture is painted from, bottom first.
class CameraComposite::Painter {
public:
    Painter(const GhostCanvas& ghosts, const std::vector<CompositeLayer>& layers,
            StrokeBackdrop& backdrop)
        : backdrop_(backdrop) {
        std::vector<quint64> recipe{ghosts.isEmpty() ? 0 : ghosts.version()};
        if (!ghosts.isEmpty())
            sources_.push_back({Pixels(ghosts.image()), Pixels(), nullptr});
        bool drawing = false;
        for (const CompositeLayer& layer : layers) {
            if (layer.drawnOn) {
                drawing = true;
                beneath_ = sources_.size();
            }
            if (!drawing)
                recipe.push_back(layer.revision);
            sources_.push_back({Pixels(layer.image), Pixels(layer.overlay), layer.pieces.get()});
        }
        if (beneath_ > 1) { // one picture is as good as its copy
            backdrop_.prepare(std::move(recipe));
        } else {
            beneath_ = 0;
            backdrop_.release();
        }
    }

    /// Pixels [first, last) of a row, `row` at column 0.
    void paint(std::uint8_t* row, int y, int first, int last) const {
        for (int column = first / kPiece * kPiece; column < last; column += kPiece) {
            rows::Stack stack;
            Piece merged;
            if (const std::uint8_t* flat = beneath_ > 0 ? flattened(y, column) : nullptr)
                stack.over(flat);
            lay(stack, y, column, beneath_, sources_.size(), merged);
            if (first <= column && column + kPiece <= last) {
                stack.store(row + 4 * column);
                continue;
            }
            Piece whole;
            stack.store(whole.data());
            const int from = std::max(first, column);
            std::memcpy(row + 4 * from, whole.data() + 4 * (from - column),
                        static_cast<std::size_t>(4 * (std::min(last, column + kPiece) - from)));
        }
    }

private:
    void lay(rows::Stack& stack, int y, int column, std::size_t from, std::size_t to,
             Piece& merged) const {
        for (std::size_t i = from; i < to; ++i) {
            if (const std::uint8_t* piece = sources_[i].piece(y, column, merged)) {
                // The row below is 4 KB further on, where the processor does not look by itself.
                fetchAhead(sources_[i].image.at(std::min(y + 1, kCanvasSize - 1), column));
                stack.over(piece);
            }
        }
    }

    const std::uint8_t* flattened(int y, int column) const {
        return backdrop_.piece(y, column / kPiece, [&](std::uint8_t* out) {
            rows::Stack stack;
            Piece unused;
            lay(stack, y, column, 0, beneath_, unused);
            if (!stack.isEmpty())
                stack.store(out);
            return !stack.isEmpty();
        });
    }

    StrokeBackdrop& backdrop_;
    std::vector<Source> sources_;
    std::size_t beneath_ = 0; ///< so many sources are taken from the backdrop
};

void CameraComposite::paint(const QRect& rectangle, const std::vector<CompositeLayer>& layers) {
    if (image_.isNull())
        image_ = blankCanvas();
    const QRect part = rectangle & image_.rect();
    if (part.isEmpty())
        return;
    const Painter painter(ghosts_, layers, backdrop_);
    for (int y = part.top(); y <= part.bottom(); ++y)
        painter.paint(image_.scanLine(y), y, part.left(), part.right() + 1);

    const QRect changed = colorFringe(image_, part);

    version_ = nextVersion();
    history_.push_back({version_, changed});
    if (history_.size() > kHistory)
        history_.pop_front();
}

QRect CameraComposite::changedSince(quint64 version) const {
    if (version == version_)
        return {};
    // Versions are unique in the process: one that is not ours belongs to another picture.
    const bool known = std::any_of(history_.begin(), history_.end(),
                                   [version](const Change& one) { return one.version == version; });
    if (!known)
        return {0, 0, kCanvasSize, kCanvasSize};
    QRect changed;
    for (const Change& change : history_) {
        if (change.version > version)
            changed |= change.rectangle;
    }
    return changed;
}

} // namespace vellum
