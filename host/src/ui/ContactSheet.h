#pragma once

#include <QString>

#include <string>

namespace host {

/// A picture of the active view at several frames, in rows, each labelled with its frame. The
/// current time is the same afterwards.
struct ContactSheet {
    int first = 1, last = 1; ///< whole frames, both included
    int step = 1;
    int columns = 4;
    int cellWidth = 320; ///< pixels; the height follows the view's shape

    /// Writes a PNG. False with the reason when there is no view, the numbers make no sense or the
    /// file cannot be written.
    bool write(const QString& path, std::string& error) const;
};

} // namespace host
