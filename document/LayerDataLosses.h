// What was lost while layer data were read: told once each, and remembered, so that the file they
// came from is not written over unasked. Main thread only.
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
/// Adds the frame, or tells that another one has its time.
void keepFrame(Layer& layer, std::unique_ptr<Frame> frame);

/// Name of the layer for drawings whose own layer cannot be told.
QString recoveredLayerName();

/// The texts since the last call of forgetLosses.
const QStringList& losses();
void forgetLosses();

} // namespace layer_data
} // namespace vellum
