#include "document/CameraComposite.h"

#include "document/PixelRows.h"
#include "tools/raster/Stroke.h"
#include "tools/raster/StrokeImage.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vellum {

namespace {

constexpr std::size_t kHistory = 32;
using Row = std::array<std::uint8_t, 4 * kCanvasSize>;

quint64 nextVersion() {
    static quint64 last = 0;
    return ++last;
}

/// Columns [first, last) of a row.
struct Columns {
    int first;
    int last;

    bool isEmpty() const { return first >= last; }
    int count() const { return last - first; }
    std::size_t bytes() const { return static_cast<std::size_t>(4 * count()); }
};

Columns clipped(const Columns& columns, const RowSpans* spans, int y) {
    if (!spans) {
        return columns;
    }
    const auto span = spans->rows[static_cast<std::size_t>(y)];
    return {std::max<int>(columns.first, span.first), std::min<int>(columns.last, span.last)};
}

/// `row`: the picture's own, at column 0.
void paintLayerRow(std::uint8_t* row, const CompositeLayer& layer, int y, const Columns& columns) {
    if (layer.overlay.isNull()) {
        const Columns part = clipped(columns, layer.spans.get(), y);
        if (!part.isEmpty()) {
            rows::over(row + 4 * part.first, layer.image.constScanLine(y) + 4 * part.first,
                       part.count());
        }
        return;
    }
    // The two become one picture first, as they will be once merged: committing changes nothing.
    const int from = 4 * columns.first;
    Row merged;
    std::memcpy(merged.data() + from, layer.image.constScanLine(y) + from, columns.bytes());
    rows::over(merged.data() + from, layer.overlay.constScanLine(y) + from, columns.count());
    rows::over(row + from, merged.data() + from, columns.count());
}

} // namespace

void CameraComposite::paint(const QRect& rectangle, const std::vector<CompositeLayer>& layers) {
    if (image_.isNull()) {
        image_ = blankCanvas();
    }
    const QRect part = rectangle & image_.rect();
    if (part.isEmpty()) {
        return;
    }
    const Columns columns{part.left(), part.right() + 1};
    const int from = 4 * columns.first;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        std::uint8_t* row = image_.scanLine(y);
        if (ghosts_.isEmpty()) {
            std::memset(row + from, 0, columns.bytes());
        } else {
            std::memcpy(row + from, ghosts_.image().constScanLine(y) + from, columns.bytes());
        }
        for (const CompositeLayer& layer : layers) {
            paintLayerRow(row, layer, y, columns);
        }
    }

    version_ = nextVersion();
    history_.push_back({version_, part});
    if (history_.size() > kHistory) {
        history_.pop_front();
    }
}

QRect CameraComposite::changedSince(quint64 version) const {
    if (version == version_) {
        return {};
    }
    // Versions are unique in the process: one that is not ours belongs to another picture.
    const bool known = std::any_of(history_.begin(), history_.end(),
                                   [version](const Change& one) { return one.version == version; });
    if (!known) {
        return {0, 0, kCanvasSize, kCanvasSize};
    }
    QRect changed;
    for (const Change& change : history_) {
        if (change.version > version) {
            changed |= change.rectangle;
        }
    }
    return changed;
}

} // namespace vellum
