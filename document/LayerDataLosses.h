// What was lost while layer data were read: told once each, drawings that met others all together,
// and remembered, so that the file they came from is not written over unasked. Main thread only.
#pragma once

#include <QStringList>

#include <memory>

namespace vellum {

class Frame;
class Layer;

namespace layer_data {

/// Shows the text as an error and remembers it.
void loss(const QString& text);
/// A picture that does not load: the frame with this number, from 0, of those in the file.
void lossOfPicture(const Layer& layer, int ordinal);
/// Adds the frame, or drops it when another one has its time, which tellOfDroppedFrames() tells.
void keepFrame(Layer& layer, std::unique_ptr<Frame> frame);
/// One loss for all frames dropped since the last call, if any: a film read in a coarser time unit
/// drops every other one. Names how many there are, their layers and their times.
void tellOfDroppedFrames();

/// Name of the layer for drawings whose own layer cannot be told.
QString recoveredLayerName();

/// The texts since the last call of forgetLosses.
const QStringList& losses();
void forgetLosses();

} // namespace layer_data
} // namespace vellum
