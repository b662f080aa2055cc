// One thing that somebody at work does, as a value: a walk is a list of them, made from its seed
// alone, so that parts of it can be done again without the rest.
#pragma once

#include <QPoint>
#include <QString>

#include <random>
#include <string>
#include <vector>

namespace vellum::test {

struct Action {
    enum class Kind {
        Command,    ///< one statement
        Unrecorded, ///< the same with undo switched off, then undo as far as it goes
        Stroke,     ///< with the tool that is in use
        Broken,     ///< a stroke with a statement in its middle
        Transform,  ///< a region is moved
        Rest,       ///< until what is queued has happened and the view is drawn
        Time,       ///< `number` is the frame
        Range,      ///< `number` frames from `number2` on are highlighted; none for 0
        Look,       ///< through another camera
        Undo,       ///< `number` steps
        Redo,
        Back,   ///< `number` steps of undo, and the same of redo
        Reopen, ///< saves and opens the file; binary when `number` is 1
        NewScene,
    };

    Kind kind = Kind::Command;
    QString line = {};
    int number = 0;
    int number2 = 0;
    QPoint from = {}; ///< pixels of the view
    QPoint way = {};

    /// As it is printed: scripts as they can be pasted, the rest in words.
    std::string text() const;
};

std::vector<Action> plan(unsigned seed, int steps);

} // namespace vellum::test
