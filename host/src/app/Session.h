#pragma once

#include "app/SessionTarget.h"

#include <QPointF>
#include <QSizeF>
#include <Qt>

#include <string>
#include <vector>

namespace host {

/// One step of a recorded session. Times are seconds from its beginning.
struct SessionStep {
    enum class Kind {
        Move,
        Press,
        Release,
        TabletPress,
        TabletMove,
        TabletRelease,
        KeyDown,
        KeyUp,
        Wheel,
        Command,
        MoveOnto, ///< what `target` names
        Picture,
        Place ///< a window, at `position` in the main window, logical pixels
    };

    double time = 0;
    Kind kind = Kind::Move;
    QPointF position; ///< in the units of the session's space
    Qt::MouseButton button = Qt::LeftButton;
    double pressure = 0; ///< 0 to 1
    bool eraser = false;
    Qt::Key key = Qt::Key_unknown;
    Qt::Key shiftOf = Qt::Key_unknown; ///< the step is for keys only that need Shift for this one
    int notches = 0;
    std::string script;   ///< of Command
    SessionTarget target; ///< of MoveOnto; of Picture and Place only the window
    QString file;         ///< of Picture
    int line = 0;         ///< in the file, from 1
};

/// A recorded pointer and tablet session, as docs/replay.md describes it, or a plain tablet
/// recording (columns of time, x, y and pressure).
struct Session {
    enum class Space { View, Window };

    std::string file;
    std::vector<SessionStep> steps; ///< in order of time
    Space space = Space::View;
    /// The recorded surface; it is fitted into the view, centred, keeping its shape. Empty: the
    /// positions are device pixels from the top left corner.
    QSizeF surface;
    double speed = 1;

    /// Throws std::runtime_error with file, line and reason.
    static Session read(const std::string& path);
};

} // namespace host
