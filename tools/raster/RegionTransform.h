// A region of a frame that floats over it: moved, rotated, scaled and flipped until it is merged.
#pragma once

#include <QImage>
#include <QPoint>
#include <QPolygonF>
#include <QRect>
#include <QTransform>

class QPainter;

namespace vellum {

/// Image pixels throughout. A plain value.
struct RegionTransform {
    /// The selected pixels, both corners inclusive. Empty (a right or bottom edge before the left
    /// or top one): nothing of the layer is shown.
    QRect region;
    QPoint offset;
    float rotation = 0.0F; ///< degrees, clockwise as seen
    float scaleX = 1.0F;   ///< negative: flipped
    float scaleY = 1.0F;
    bool plain = false; ///< not touched yet: at its region plus offset, whatever the rest says

    bool setUp = false; ///< from the beginning until it is merged or discarded
    bool cut = false;   ///< the region leaves the frame and nothing floats
    bool copy = false;  ///< the region's pixels go to the clipboard, and stay unless they are cut
    bool paste = false; ///< the clipboard floats, the frame stays

    /// Where the corners of the region go: around its centre rotated, scaled, then moved.
    QTransform matrix() const;

    /// Every pixel that the floating selection can touch.
    QRect bounds() const;

    /// Whole pixels stay whole pixels: only moved and flipped.
    bool isExact() const;
};

/// The canvas from which the region is lifted: the frame image with a hole, or whole when its
/// pixels stay.
QImage withoutRegion(const QImage& frameImage, const RegionTransform& state);

/// What floats: the region's pixels of the frame image (transparent outside the canvas), the
/// clipboard image for a paste, null for a cut.
QImage floatingSelection(const QImage& frameImage, const RegionTransform& state,
                         const QImage& clipboard);

/// The floating selection as pixels of a rectangle of the canvas, Format_RGBA8888. Exactly the
/// selection's bytes where it was only moved and flipped.
QImage transformedSelection(const RegionTransform& state, const QImage& selection,
                            const QRect& rectangle);

/// Paints the floating selection; nothing for a null one. The painter's matrix maps image pixels.
void drawTransformedSelection(QPainter& painter, const RegionTransform& state,
                              const QImage& selection);

} // namespace vellum
