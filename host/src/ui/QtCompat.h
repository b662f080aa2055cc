#pragma once

#include <QMouseEvent>
#include <QPointF>
#include <QTabletEvent>
#include <QWidget>

/// The differences between Qt 5.15 and 6 that the host meets.
namespace host::qt {

/// Logical pixels in the top-level window, with the fraction that scaled displays give. (The
/// widget's own position is rounded to whole logical pixels by Qt 5.)
inline QPointF windowPosition(const QMouseEvent& event) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.scenePosition();
#else
    return event.windowPos();
#endif
}

inline QPointF globalPosition(const QMouseEvent& event) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.globalPosition();
#else
    return event.screenPos();
#endif
}

inline QPointF localPosition(const QMouseEvent& event) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.position();
#else
    return event.localPos();
#endif
}

} // namespace host::qt
