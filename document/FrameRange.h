// A stretch of whole frames, as the time slider's highlight gives it.
#pragma once

#include <QtGlobal>

#include <optional>

namespace vellum {

/// Both ends included, so that the largest frame number can be covered.
struct FrameRange {
    int first;
    int last; ///< >= first

    bool contains(qint64 frame) const { return frame >= first && frame <= last; }
    qint64 length() const { return static_cast<qint64>(last) - first + 1; }

    /// False, after reporting, for a range that holds more frames than anyone would insert.
    bool canBeFilled() const;
};

/// [start, end) of the time slider, each truncated toward zero; at least the frame that `start`
/// lies in. Empty after a report when that is no stretch of time or leaves the 32-bit numbers.
std::optional<FrameRange> frameRange(double start, double end);

} // namespace vellum
