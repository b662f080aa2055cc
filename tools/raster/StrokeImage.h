// The life of a stroke image: prepared at the press, brought up to date while the stroke grows.
// Images are canvases (Stroke.h).
#pragma once

#include "tools/raster/Stroke.h"

#include <QImage>
#include <QRect>

namespace vellum {

/// A new canvas, transparent.
QImage blankCanvas();

/// Press: the eraser works on a copy of the frame image, a region transform on a transparent
/// canvas, every other tool on the stroke's colour at alpha 0. Makes or reuses `strokeImage`.
void prepareStrokeImage(QImage& strokeImage, Stroke& stroke, const QImage& frameImage);

/// Paints what changed since the last call (freehand: the new segments; shapes and text: all of it,
/// text with its frame) and clears the stroke's dirty flag. Returns a rectangle that holds every
/// pixel that changed and, for shapes, every pixel of the shape now; for a shape the caller adds
/// the rectangle of the previous call.
QRect updateStrokeImage(QImage& strokeImage, Stroke& stroke);

/// True when the stroke image stands for the whole frame while drawing (eraser, region transform),
/// false when it is painted over the frame.
bool strokeReplacesFrame(const Stroke& stroke);

} // namespace vellum
