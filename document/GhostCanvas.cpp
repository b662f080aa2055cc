#include "document/GhostCanvas.h"

#include "document/Layer.h"
#include "plugin/base/Settings.h"
#include "tools/raster/PixelRows.h"
#include "tools/raster/Stroke.h"

#include <algorithm>
#include <array>

namespace vellum {

namespace {

constexpr double kNearestOpacity = 0.4;
using pixel::kPiece;
using Piece = std::array<std::uint8_t, pixel::kPieceBytes>;

/// One side of the current frame: pictures from the farthest to the nearest, and their opacities in
/// 255ths as Qt's raster engine rounds them.
struct Side {
    struct Picture {
        QImage image;
        std::shared_ptr<const PieceMap> pieces;
        int opacity;
    };
    std::vector<Picture> pictures;
    bool tint = false;
    QColor color;

    /// False when there is nothing to see; `out` is left alone then.
    bool paint(int y, int column, Piece& out) const {
        rows::Stack stack;
        for (const Picture& picture : pictures) {
            if (picture.pieces->holds(y, column))
                stack.overFaded(picture.image.constScanLine(y) + 4 * column, picture.opacity);
        }
        if (stack.isEmpty())
            return false;
        stack.store(out.data());
        if (tint) {
            rows::tint(out.data(), kPiece, static_cast<std::uint8_t>(color.red()),
                       static_cast<std::uint8_t>(color.green()),
                       static_cast<std::uint8_t>(color.blue()));
        }
        return true;
    }
};

int rasterOpacity(double opacity) {
    return qRound(opacity * 256) * 255 >> 8;
}

/// Frame `offset` places from the shown one, null when hidden or missing.
const Frame* neighbour(const Layer& layer, int offset) {
    return layer.isVisible() ? layer.frameAt(layer.currentIndex() + offset) : nullptr;
}

std::vector<quint64> revisions(const Layer& layer, int count, int direction) {
    std::vector<quint64> result;
    for (int k = count; k >= 1; --k) {
        const Frame* frame = neighbour(layer, direction * k);
        result.push_back(frame ? frame->revision() : 0);
    }
    return result;
}

Side side(const Layer& layer, int count, int direction, bool tint, const QColor& color) {
    Side result;
    result.tint = tint;
    result.color = color;
    for (int k = count; k >= 1; --k) {
        if (const Frame* frame = neighbour(layer, direction * k)) {
            const QImage image = frame->image();
            const double opacity = kNearestOpacity - (k - 1) * (kNearestOpacity / count);
            result.pictures.push_back({image, frame->pieces(), rasterOpacity(opacity)});
        }
    }
    return result;
}

bool none(const std::vector<quint64>& pictures) {
    return std::all_of(pictures.begin(), pictures.end(), [](quint64 one) { return one == 0; });
}

} // namespace

bool GhostOptions::operator==(const GhostOptions& other) const {
    return previous == other.previous && next == other.next && tint == other.tint &&
           (!tint || (previousColor == other.previousColor && nextColor == other.nextColor));
}

GhostOptions GhostOptions::fromSettings(bool playing) {
    const Settings& chosen = settings();
    GhostOptions options;
    if (playing && chosen.disableGhostingDuringPlayback) {
        options.hiddenByPlayback = true;
        return options;
    }
    options.previous = chosen.ghostPrev ? std::max(chosen.ghostPrevCount, 0) : 0;
    options.next = chosen.ghostNext ? std::max(chosen.ghostNextCount, 0) : 0;
    options.tint = chosen.ghostColorOverride;
    options.previousColor = chosen.ghostColorOverridePrev;
    options.nextColor = chosen.ghostColorOverrideNext;
    return options;
}

bool GhostCanvas::Recipe::operator==(const Recipe& other) const {
    return options == other.options && previous == other.previous && next == other.next;
}

bool GhostCanvas::update(const Layer* layer, const GhostOptions& options) {
    Recipe recipe;
    if (layer) {
        recipe.options = options;
        recipe.previous = revisions(*layer, options.previous, -1);
        recipe.next = revisions(*layer, options.next, +1);
        if (none(recipe.previous) && none(recipe.next))
            recipe = Recipe();
    }
    if (recipe == recipe_)
        return false;
    if (recipe == Recipe()) {
        image_ = QImage();
    } else {
        paint(*layer, recipe);
    }
    recipe_ = std::move(recipe);
    ++version_;
    return true;
}

void GhostCanvas::paint(const Layer& layer, const Recipe& recipe) {
    const GhostOptions& options = recipe.options;
    const Side previous = side(layer, options.previous, -1, options.tint, options.previousColor);
    const Side next = side(layer, options.next, +1, options.tint, options.nextColor);
    if (image_.isNull())
        image_ = QImage(kCanvasSize, kCanvasSize, QImage::Format_RGBA8888);
    for (int y = 0; y < kCanvasSize; ++y) {
        std::uint8_t* row = image_.scanLine(y);
        for (int column = 0; column < kCanvasSize; column += kPiece) {
            rows::Stack both;
            Piece lower;
            if (previous.paint(y, column, lower))
                both.over(lower.data());
            Piece upper;
            if (next.paint(y, column, upper))
                both.over(upper.data());
            both.store(row + 4 * column);
        }
    }
}

} // namespace vellum
