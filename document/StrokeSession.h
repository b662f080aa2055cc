// A stroke in progress with its pixels, and the frame it was begun on. Main thread only.
#pragma once

#include "document/Frame.h"
#include "tools/raster/Stroke.h"

#include <QImage>
#include <QRect>

namespace vellum {

class StrokeSession {
public:
    /// Prepares the stroke image for the tool. `canvas` is an image to reuse, or null. Holds the
    /// frame decoded for as long as the session lives.
    StrokeSession(const Frame& frame, Tool tool, const QColor& color, QImage canvas);

    Stroke& stroke() { return stroke_; }
    const Stroke& stroke() const { return stroke_; }
    bool isDirty() const { return stroke_.dirty; }

    /// Region transform: lifts stroke().region out of the frame the session is on. `clipboard` is
    /// what a paste lets float.
    void lift(const QImage& frameImage, const QImage& clipboard);

    /// Paints what the stroke gained. Returns the rectangle whose picture changed.
    QRect update();

    /// Every pixel the stroke has changed or shows now.
    const QRect& touched() const { return touched_; }

    const QImage& image() const { return image_; }

    /// The stroke image is the whole frame (eraser) rather than something painted over it.
    bool replacesFrame() const;

    /// The frame it was begun on, whatever its picture is now.
    bool isFrom(const Frame& frame) const { return hold_ == frame.hold(); }

    /// True while the frame still has the picture the stroke works on.
    bool isOn(const Frame& frame) const { return frame.revision() == baseRevision_; }

    /// Does the whole stroke again on this frame's picture. Freehand and region transform only.
    void moveTo(const Frame& frame);

    /// The frame's picture with the finished stroke in it. The session is over then.
    QImage merged(const QImage& frameImage);

    /// The canvas, for the next session.
    QImage takeCanvas();

private:
    QRect updateTransform();

    Stroke stroke_;
    QImage image_;
    QRect touched_;
    QRect lastShape_; ///< shapes are painted anew: what the previous update left
    QImage base_;     ///< region transform: the frame without what was lifted out of it
    QImage floating_; ///< region transform: what floats, null for nothing
    quint64 baseRevision_;
    Frame::Hold hold_;
};

} // namespace vellum
