// Differences between Qt 5.15 and Qt 6, gathered here.
#pragma once

#include <QEvent>
#include <QMouseEvent>
#include <QSettings>
#include <QTabletEvent>
#include <QtGlobal>

namespace vellum::qt {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using EnterEvent = QEnterEvent; ///< what QWidget::enterEvent takes

inline QPointF position(const QMouseEvent* event) {
    return event->position();
}
inline QPointF position(const QTabletEvent* event) {
    return event->position();
}

/// Makes text in an INI file UTF-8, which Qt 6 writes and takes for granted. What Qt 5 writes is
/// escaped, so either reads what the other wrote.
inline void readAsUtf8(QSettings&) {
}

/// True while the pen's eraser end is in use.
inline bool isEraser(const QTabletEvent* event) {
    return event->pointerType() == QPointingDevice::PointerType::Eraser;
}
#else
using EnterEvent = QEvent;

inline QPointF position(const QMouseEvent* event) {
    return event->localPos();
}
inline QPointF position(const QTabletEvent* event) {
    return event->posF();
}

inline void readAsUtf8(QSettings& iniFile) {
    iniFile.setIniCodec("UTF-8");
}

inline bool isEraser(const QTabletEvent* event) {
    return event->pointerType() == QTabletEvent::Eraser;
}
#endif

} // namespace vellum::qt
