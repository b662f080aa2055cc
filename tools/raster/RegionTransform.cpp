#include "tools/raster/RegionTransform.h"

#include <QPainter>

#include <cmath>

namespace vellum {

namespace {

bool isFullTurn(float degrees) {
    return std::fmod(degrees, 360.0F) == 0.0F;
}

QImage flipped(const RegionTransform& state, const QImage& selection) {
    const bool horizontally = !state.plain && state.scaleX < 0.0F;
    const bool vertically = !state.plain && state.scaleY < 0.0F;
    return horizontally || vertically ? selection.mirrored(horizontally, vertically) : selection;
}

} // namespace

QTransform RegionTransform::matrix() const {
    QTransform result;
    if (plain) {
        result.translate(offset.x(), offset.y());
        return result;
    }
    const QPointF centre = QRectF(region).center();
    result.translate(centre.x() + offset.x(), centre.y() + offset.y());
    result.rotate(static_cast<double>(rotation));
    result.scale(static_cast<double>(scaleX), static_cast<double>(scaleY));
    result.translate(-centre.x(), -centre.y());
    return result;
}

QRect RegionTransform::bounds() const {
    if (region.isEmpty())
        return {};
    if (isExact())
        return region.translated(offset);
    // Smoothing spreads over half a pixel.
    return matrix().mapRect(QRectF(region)).toAlignedRect().adjusted(-1, -1, 1, 1);
}

bool RegionTransform::isExact() const {
    return plain ||
           (isFullTurn(rotation) && std::fabs(scaleX) == 1.0F && std::fabs(scaleY) == 1.0F);
}

QImage withoutRegion(const QImage& frameImage, const RegionTransform& state) {
    if (state.paste || (state.copy && !state.cut))
        return frameImage;
    QImage result = frameImage;
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(state.region, Qt::transparent);
    return result;
}

QImage floatingSelection(const QImage& frameImage, const RegionTransform& state,
                         const QImage& clipboard) {
    if (state.paste)
        return clipboard;
    return state.cut ? QImage() : frameImage.copy(state.region);
}

QImage transformedSelection(const RegionTransform& state, const QImage& selection,
                            const QRect& rectangle) {
    if (state.isExact()) {
        // A painter would go through premultiplied colours and round the faint ones.
        return flipped(state, selection)
            .copy(rectangle.translated(-state.region.topLeft() - state.offset));
    }
    QImage result(rectangle.size(), QImage::Format_RGBA8888);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.translate(-rectangle.topLeft());
    drawTransformedSelection(painter, state, selection);
    return result;
}

void drawTransformedSelection(QPainter& painter, const RegionTransform& state,
                              const QImage& selection) {
    if (selection.isNull() || state.region.isEmpty())
        return;
    if (state.isExact()) {
        painter.drawImage(state.region.topLeft() + state.offset, flipped(state, selection));
        return;
    }
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setTransform(state.matrix(), true);
    painter.drawImage(state.region.topLeft(), selection);
    painter.restore();
}

} // namespace vellum
