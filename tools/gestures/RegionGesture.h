// The rectangle of the transform tool and what the hand does with it: selecting → lifted and moved,
// rotated, scaled, flipped → let go. Knows neither the view nor the drawing: the context tells it
// pixels and buttons, and shows and merges what it says.
#pragma once

#include "tools/raster/RegionTransform.h"
#include "tools/raster/ViewToImage.h"

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <Qt>

#include <array>

namespace vellum {

class RegionGesture {
public:
    /// Around the rectangle, its upper left corner first once the selecting hand has let go.
    using Corners = std::array<QPoint, 4>; ///< view pixels, origin at the bottom left
    using ImageCorners = std::array<QPointF, 4>;

    enum class Ended { Nothing, Selecting, Transforming, Invalid };

    /// Nothing selected, nothing lifted.
    void reset() { *this = RegionGesture(); }

    /// A new transform of what is selected, in a view that shows the drawing so. With `paste` it
    /// is the clipboard that will float.
    void begin(const ViewMapping& view, bool paste);

    /// The drawing below is not the one it was begun on: drags are ignored, and the release asks to
    /// take everything back.
    void invalidate() { invalid_ = true; }
    bool isInvalid() const { return invalid_; }

    /// The view shows the drawing otherwise, or it is another view: everything stays on its place
    /// of the drawing.
    void follow(const ViewMapping& view);
    const ViewMapping& view() const { return view_; }

    // --- The hand --------------------------------------------------------------------------------

    /// A button goes down; whatever another one was doing has ended. While selecting, any button
    /// begins a rectangle; afterwards left moves, left with Shift rotates, middle scales.
    void press(Qt::MouseButton button, bool shift, QPoint at);
    /// Whether anything changed. Scaling goes on with every call: the farther the pointer is from
    /// the press, the faster.
    bool drag(QPoint at, bool shift);
    /// What the button did until now.
    Ended release();

    bool isDragging() const { return dragging_ != Dragging::Nothing; }
    bool isSelecting() const { return dragging_ == Dragging::Select; }

    // --- The selection ---------------------------------------------------------------------------

    /// The rectangle with these opposite corners.
    void select(QPoint first, QPoint opposite);
    /// Its size in the view; a click has none and stands for the whole image.
    QSize selectedSize() const;

    /// Fits the rectangle to the pixels that it selects, or to as many as are `pasted`; state() is
    /// then what the transform begins with. False when it is beside the drawing.
    bool chooseRegion(bool copy, bool cut, QSize pasted);

    /// The pixels float from now on.
    void lift();
    bool isTransforming() const { return transforming_; }
    /// Whether something would be lost if everything were taken back now.
    bool hasWork() const;

    void flip(bool horizontally);

    const RegionTransform& state() const { return state_; }

    /// The rectangle as it is shown: where the floating pixels are.
    Corners outline() const;
    ImageCorners outlineOnImage() const;

private:
    enum class Dragging { Nothing, Select, Translate, Rotate, Scale };

    void normalise();
    void fitToRegion();
    void scale(QPoint at, bool shift);
    void changed();

    bool transforming_ = false;
    bool invalid_ = false;
    ViewMapping view_;
    Corners corners_{};
    RegionTransform state_;
    QPoint viewOffset_;
    float scaleX_ = 1.0F; ///< never negative: flips are apart
    float scaleY_ = 1.0F;
    bool flipX_ = false;
    bool flipY_ = false;

    Dragging dragging_ = Dragging::Nothing;
    QPoint translateAnchor_;
    float rotateAnchor_ = 0.0F;
    float scaleAnchorX_ = 0.0F;
    float scaleAnchorY_ = 0.0F;
};

} // namespace vellum
