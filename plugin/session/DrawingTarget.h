// The check before a stroke: the picture that it goes into. Main thread only.
#pragma once

#include "document/edits/TargetAdditions.h"

#include <QString>

namespace vellum {

class BaseNode;
class Frame;
class LayerManager;

/// What the check found or made.
struct DrawingTarget {
    const Frame* frame = nullptr; ///< frame to draw into, owned by the document; null: refused
    TargetAdditions added;        ///< the first layer and the frame, as far as they were missing

    explicit operator bool() const { return frame != nullptr; }
};

/// Finds the picture of the camera's active layer at the current time, making the first layer or a
/// frame where the preferences allow. A refusal has been reported and changed nothing, except that
/// a layer made on the way stays.
DrawingTarget drawingTarget(BaseNode& node, const QString& camera);

/// Whether the camera has an active layer. If not, says so as the check does.
bool requireActiveLayer(const LayerManager& document, const QString& camera);

/// Whether the camera's active layer shows a drawing now, its own or a held one, that may be worked
/// on. If not, says why as the check does.
bool requireDrawing(const LayerManager& document, const QString& camera);

/// Says why the document cannot take the stroke in progress of this camera, in the words of the
/// check: what it went into may have gone, or been locked, since the press.
void reportUnfinished(LayerManager& document, const QString& camera);

} // namespace vellum
