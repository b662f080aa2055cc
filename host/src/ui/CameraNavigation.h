#pragma once

#include <QPointF>
#include <QSize>

#include <maya/MDagPath.h>
#include <maya/MPoint.h>

namespace host {

/// Moving a view's camera with the mouse: tumbling about its centre of interest, tracking across
/// the picture, dollying towards the centre. Or its picture, the camera staying where it is:
/// panning and zooming. Locked or driven attributes stay as they are, and
/// nothing of it can be undone.
class CameraNavigation {
public:
    enum class Mode { Tumble, Track, Dolly, Pan, Zoom };

    /// `camera` is the path of the camera shape.
    CameraNavigation(MDagPath camera, Mode mode);

    /// The pointer moved by `delta` view pixels (y up) in a port of this size.
    void drag(QPointF delta, QSize port);

    /// One step of the wheel; positive goes closer.
    static void dollyStep(MDagPath camera, double steps);

    /// Between the panned and zoomed picture and the whole one.
    static void switchPanZoom(MDagPath camera);

private:
    void tumble(QPointF delta);
    void track(QPointF delta, QSize port);
    void pan(QPointF delta, QSize port);
    void zoom(double factor);

    MDagPath camera_;
    Mode mode_;
};

} // namespace host
