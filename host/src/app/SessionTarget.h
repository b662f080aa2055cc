#pragma once

#include "app/SessionWords.h"

#include <QPointF>
#include <QString>

#include <optional>
#include <vector>

namespace host {

/// A place in a window of the program, named by what a user sees there.
struct SessionTarget {
    enum class Kind {
        Thing,      ///< a widget, an entry of a list, a tab
        MenuEntry,  ///< of the menu bar or an open menu
        TimeSlider, ///< the middle of a frame
    };
    struct Spot {
        QPointF position;     ///< from the thing's top left corner
        bool percent = false; ///< of its size, else logical pixels
    };

    Kind kind = Kind::Thing;
    QString name;    ///< text, tool tip, object or class name
    int ordinal = 0; ///< which of several, in reading order, from 1; 0: there must be one only
    QString window;  ///< its window's title, object or class name, or the menu; empty: any
    std::optional<Spot> spot; ///< else the middle
    double frame = 0;

    /// Reads `on "NAME" [N] [in "WINDOW"] [at X Y]` or `on frame N`, to the end of the words.
    /// Throws std::runtime_error with the reason.
    static SessionTarget read(const std::vector<SessionWord>& words, std::size_t first);

    /// One target for each entry of `"MENU > ENTRY > ENTRY"`.
    static std::vector<SessionTarget> readMenuPath(const QString& path);
};

} // namespace host
