#include "tools/gestures/RegionGesture.h"

#include "tools/raster/Stroke.h"

#include <QTransform>

#include <algorithm>
#include <utility>

namespace vellum {

namespace {

constexpr float kScalePerPixel = 0.0001F; // and drag event: the farther the pointer, the faster
constexpr float kSmallestScale = 0.1F;
// Last column and row of "the whole image".
constexpr int kWholeImageBound = 1022;

} // namespace

void RegionGesture::begin(const ViewMapping& view, bool paste) {
    invalid_ = flipX_ = flipY_ = false;
    viewOffset_ = {};
    scaleX_ = scaleY_ = 1.0F;
    state_ = {};
    state_.paste = paste;
    view_ = view;
}

void RegionGesture::follow(const ViewMapping& view) {
    if (view == view_)
        return;
    const ViewMapping before = std::exchange(view_, view);
    const auto moved = [&](const QPoint& point) {
        return imageToView(viewToImagePoint(point, before), view).toPoint();
    };
    if (transforming_) {
        fitToRegion();
        viewOffset_ =
            (QPointF(state_.offset.x(), -state_.offset.y()) * viewPixelsPerImagePixel(view_))
                .toPoint();
        translateAnchor_ = moved(translateAnchor_);
    } else {
        select(moved(corners_[0]), moved(corners_[2]));
    }
}

// --- The hand ------------------------------------------------------------------------------------

void RegionGesture::press(Qt::MouseButton button, bool shift, QPoint at) {
    dragging_ = Dragging::Nothing;
    if (!transforming_) {
        dragging_ = Dragging::Select;
        select(at, at);
    } else if (button == Qt::LeftButton && shift) {
        dragging_ = Dragging::Rotate;
        rotateAnchor_ = static_cast<float>(at.x()) - state_.rotation;
    } else if (button == Qt::LeftButton) {
        dragging_ = Dragging::Translate;
        translateAnchor_ = at - viewOffset_;
    } else if (button == Qt::MiddleButton) {
        dragging_ = Dragging::Scale;
        scaleAnchorX_ = static_cast<float>(at.x()) - scaleX_;
        scaleAnchorY_ = static_cast<float>(at.y()) - scaleY_;
    }
}

bool RegionGesture::drag(QPoint at, bool shift) {
    if (invalid_)
        return false;
    switch (dragging_) {
    case Dragging::Nothing:
        return false;
    case Dragging::Select:
        select(corners_[0], at);
        return true;
    case Dragging::Translate:
        viewOffset_ = at - translateAnchor_;
        state_.offset = viewToImage(at, view_) - viewToImage(translateAnchor_, view_);
        break;
    case Dragging::Rotate:
        state_.rotation = static_cast<float>(at.x()) - rotateAnchor_;
        break;
    case Dragging::Scale:
        scale(at, shift);
        break;
    }
    changed();
    return true;
}

void RegionGesture::scale(QPoint at, bool shift) {
    const auto grown = [](float scale, int place, float anchor) {
        return std::max(scale + (static_cast<float>(place) - anchor) * kScalePerPixel,
                        kSmallestScale);
    };
    scaleX_ = grown(scaleX_, at.x(), scaleAnchorX_);
    scaleY_ = shift ? scaleX_ : grown(scaleY_, at.y(), scaleAnchorY_);
}

RegionGesture::Ended RegionGesture::release() {
    const Dragging dragged = std::exchange(dragging_, Dragging::Nothing);
    if (invalid_)
        return Ended::Invalid;
    if (dragged == Dragging::Nothing)
        return Ended::Nothing;
    if (dragged != Dragging::Select)
        return Ended::Transforming;
    normalise();
    return Ended::Selecting;
}

bool RegionGesture::hasWork() const {
    const bool moved = !state_.offset.isNull() || state_.rotation != 0.0F ||
                       state_.scaleX != 1.0F || state_.scaleY != 1.0F;
    return transforming_ && (state_.paste || moved);
}

void RegionGesture::flip(bool horizontally) {
    bool& flipped = horizontally ? flipX_ : flipY_;
    flipped = !flipped;
    changed();
}

void RegionGesture::changed() {
    state_.plain = false;
    state_.scaleX = flipX_ ? -scaleX_ : scaleX_;
    state_.scaleY = flipY_ ? -scaleY_ : scaleY_;
}

// --- The selection -------------------------------------------------------------------------------

void RegionGesture::select(QPoint first, QPoint opposite) {
    corners_ = {first, QPoint(opposite.x(), first.y()), opposite, QPoint(first.x(), opposite.y())};
}

// The first corner becomes the upper left one.
void RegionGesture::normalise() {
    const QPoint a = corners_[0];
    const QPoint b = corners_[2];
    select({std::min(a.x(), b.x()), std::max(a.y(), b.y())},
           {std::max(a.x(), b.x()), std::min(a.y(), b.y())});
}

QSize RegionGesture::selectedSize() const {
    const QPoint extent = corners_[2] - corners_[0];
    return {std::abs(extent.x()), std::abs(extent.y())};
}

bool RegionGesture::chooseRegion(bool copy, bool cut, QSize pasted) {
    normalise();
    const QPoint first = viewToImage(corners_[0], view_);
    if (state_.paste) {
        state_.region = QRect(first, pasted);
    } else if (corners_[0] != corners_[2]) {
        const QRect canvas(0, 0, kCanvasSize, kCanvasSize);
        state_.region = QRect(first, viewToImage(corners_[2], view_)) & canvas;
    } else {
        state_.region = QRect(QPoint(0, 0), QPoint(kWholeImageBound, kWholeImageBound));
    }
    if (state_.region.isEmpty())
        return false;
    fitToRegion();
    state_.copy = copy;
    state_.cut = cut;
    state_.setUp = true;
    state_.plain = state_.paste;
    return true;
}

void RegionGesture::fitToRegion() {
    const QRect& region = state_.region;
    select(imageToView(region.topLeft(), view_).toPoint(),
           imageToView(region.bottomRight() + QPoint(1, 1), view_).toPoint());
}

void RegionGesture::lift() {
    dragging_ = Dragging::Nothing;
    transforming_ = true;
}

RegionGesture::Corners RegionGesture::outline() const {
    if (!transforming_)
        return corners_;
    const QPoint centre((corners_[0].x() + corners_[2].x()) / 2,
                        (corners_[0].y() + corners_[2].y()) / 2);
    QTransform matrix;
    matrix.translate(centre.x(), centre.y());
    matrix.rotate(-static_cast<double>(state_.rotation)); // y goes up
    matrix.scale(static_cast<double>(scaleX_), static_cast<double>(scaleY_));
    matrix.translate(-centre.x(), -centre.y());
    Corners result;
    std::transform(corners_.begin(), corners_.end(), result.begin(),
                   [&](const QPoint& corner) { return matrix.map(corner) + viewOffset_; });
    return result;
}

RegionGesture::ImageCorners RegionGesture::outlineOnImage() const {
    const Corners corners = outline();
    ImageCorners result;
    std::transform(corners.begin(), corners.end(), result.begin(),
                   [this](const QPoint& corner) { return viewToImagePoint(corner, view_); });
    return result;
}

} // namespace vellum
