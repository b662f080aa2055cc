// How commands, tools and panels find what they work on: the node, the camera, the time slider, and
// the picture that a stroke goes into. Main thread only. Node pointers are Maya's: use them at
// once, never keep them across events.
#pragma once

#include "document/Changes.h"
#include "document/edits/TargetAdditions.h"
#include "node/NodeSearch.h"

#include <QString>
#include <QStringList>
#include <maya/MDagPath.h>
#include <optional>
#include <utility>
#include <vector>

class QWidget;

namespace vellum {

class BaseNode;
class Frame;

/// The node that the selection designates: exactly one item selected, which is a node or has one
/// among its children. Null otherwise.
BaseNode* selectedNode();

/// The node of a document that undo goes back to, with this camera still in the scene. Null, after
/// reporting, when the node or the camera has gone meanwhile.
BaseNode* nodeForUndo(const LayerManager* document, const QString& camera);

/// Camera of the active 3D view; empty when there is no such view.
QString currentCamera();

/// True when `name` is the transform name of a camera in the scene.
bool cameraExists(const QString& name);

/// Transform names of all cameras, in the order Maya iterates them.
QStringList cameraNames();

/// Maya's time slider. Looked up until found, then kept for as long as the widget lives. Null, with
/// the report "Failed to get time control name", when Maya does not name one.
QWidget* timeControlWidget();

/// Highlighted range of the time slider as [start, end); with nothing highlighted the current frame
/// and the next. Empty without a time slider.
std::optional<std::pair<double, double>> timeRange();
bool isTimeRangeVisible();

/// Current time in whole frames of the current unit (document/IntTime.h).
int currentFrame();

/// After a change of the scene's time: hands it to the overlay, to the document of every node and
/// to the transform tool. One look over the scene.
void propagateCurrentTime();

/// After drawings may have come or gone, which may have been away while time went on: hands the
/// time to all, in the same look, then tells what has happened (Drawings, Stepped).
void drawingsChanged(Change happened);

/// What the check before a stroke found or made.
struct DrawingTarget {
    Frame* frame = nullptr; ///< frame to draw into, owned by the document; null: refused
    TargetAdditions added;  ///< the first layer and the frame, as far as they were missing

    explicit operator bool() const { return frame != nullptr; }
};

/// Run before a stroke: finds the picture of the camera's active layer at the current time, making
/// the first layer or a frame where the preferences allow. A refusal has been reported and changed
/// nothing, except that a layer made on the way stays.
DrawingTarget drawingTarget(BaseNode& node, const QString& camera);

} // namespace vellum
