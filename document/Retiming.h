// The arithmetic of retiming: how gaps between frames change, and what that does to the frames
// behind them. Whole frames; 64 bits, so that a shift beyond the frame numbers shows as such.
#pragma once

#include "document/FrameRange.h"

#include <QList>

#include <vector>

namespace vellum {

/// [start, end) in time.
struct RetimeSpan {
    qint64 start;
    qint64 end;
};

struct RetimeGap {
    int frames;
    bool relative; ///< the gap grows by that many frames instead of becoming that many
};

/// The range from the frame shown at its start to the frame behind its end, if there are any.
RetimeSpan retimeSpan(const QList<int>& times, const FrameRange& range);

/// The new times of frames at `times` (ascending): the gap behind each frame of the span but the
/// last of all changes, what follows is shifted along. Strictly ascending.
std::vector<qint64> retimed(const QList<int>& times, const RetimeSpan& span, const RetimeGap& gap);

/// Index of the frame to show afterwards: the one at the start of the span or the one after it.
/// `times` is not empty.
int frameToShow(const QList<int>& times, const RetimeSpan& span, bool next);

} // namespace vellum
